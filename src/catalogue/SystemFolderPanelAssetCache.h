#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <memory>

// How the desktop names and draws a folder: its display name and the name of
// its themed icon (the XDG user folders have their own: folder-documents, ...).
class FolderAssetSource {
public:
    struct Assets {
        QString displayName;
        QString iconName;
    };
    virtual ~FolderAssetSource() = default;
    // Nothing when the path cannot be read (it no longer exists).
    virtual std::optional<Assets> assetsOf(const QString &path) const = 0;
};

// The names and icons the folder panel shows for system folders. Both fill
// on first request and stay for the run: the desktop's answers do not change
// under a running session, and asking again for every repaint would hit the
// disk. A folder that cannot be read gets its file name and the plain folder icon.
class SystemFolderPanelAssetCache {
public:
    // source may be null (headless): then every folder gets the fallback.
    explicit SystemFolderPanelAssetCache(std::shared_ptr<FolderAssetSource> source);

    QString displayName(const QString &path);
    QString iconName(const QString &path);

    static constexpr const char *kFallbackIcon = "folder";

private:
    void fill(const QString &path);

    QHash<QString, QString> m_displayNameCache;
    QHash<QString, QString> m_iconCache;
    std::shared_ptr<FolderAssetSource> m_source;
};
