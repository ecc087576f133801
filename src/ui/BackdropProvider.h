#pragma once

#include <QImage>
#include <QMutex>
#include <QQuickImageProvider>

class QScreen;

// "image://backdrop/<n>": what was on the screen just before the overlay
// opened, softly blurred, so the overlay reads as frosted glass even without
// a compositor. Blurring is done by scaling down and back up, which is cheap.
class BackdropProvider : public QQuickImageProvider {
public:
    BackdropProvider();

    // Grabs the screen; returns false when the platform cannot (then the QML
    // falls back to a tinted backdrop).
    bool capture(QScreen *screen);
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    static QImage blurred(const QImage &image, int factor = 24);

private:
    QMutex m_mutex;
    QImage m_image;
};
