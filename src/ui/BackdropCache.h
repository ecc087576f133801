#pragma once

#include <QHash>
#include <QImage>
#include <QMutex>
#include <QSize>
#include <QString>
#include <QStringList>

// What one backdrop is made from.
struct BackdropSource {
    QString imagePath;
    QSize screenSize; // device pixels
    bool blur = true;
};

// Backdrops decoded at the screen's size and blurred once, kept in memory and
// on disk. The key names the file's path, modification time and size, the
// screen size and the blur, so a changed file is made again and the same one
// never is. Safe to use from worker threads.
class BackdropCache {
public:
    // folder: where made backdrops are kept across runs; empty keeps them in
    // memory only.
    explicit BackdropCache(QString folder);
    static QString defaultFolder(); // $XDG_CACHE_HOME/tillmora/backdrops

    // Empty when the file cannot be found.
    static QString keyFor(const BackdropSource &source);
    // From memory, else from disk, else made (and kept). Null when the file
    // is not a readable image.
    QImage image(const BackdropSource &source);
    QString fileFor(const QString &key) const;

    // Decodes at (about) the screen's size, never at the file's full size,
    // fills the screen, and blurs when asked.
    static QImage render(const BackdropSource &source);
    // Scaling down and back up: cheap, and soft enough for frosted glass.
    static QImage blurred(const QImage &image, int factor = 24);

private:
    static constexpr int kKeptInMemory = 3; // switching Spaces back and forth stays instant

    QString m_folder;
    QMutex m_mutex;
    QHash<QString, QImage> m_memory;
    QStringList m_recent; // most recent last
};
