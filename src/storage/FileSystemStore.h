#pragma once

#include <QString>

// The application-support folder ($XDG_DATA_HOME/tillmora on Linux) and the
// three file operations the repositories need. Failures are reported to the
// caller with the platform's error text; none of them throws.
class FileSystemStore {
public:
    explicit FileSystemStore(const QString &appSupportDirectory = defaultDirectory());

    static QString defaultDirectory();
    QString appSupportDirectory() const { return m_appSupportDirectory; }
    QString pathFor(const QString &relative) const;

    // Creates the folder with its parents; an existing folder is success.
    bool ensureDirectory(const QString &path, QString *error = nullptr) const;
    // Copies source to destination, replacing what stood at destination.
    bool copyItem(const QString &source, const QString &destination, QString *error = nullptr) const;
    // Removes a file or folder; a missing item is success.
    bool removeItemIfExists(const QString &path, QString *error = nullptr) const;

private:
    QString m_appSupportDirectory;
};
