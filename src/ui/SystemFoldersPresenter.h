#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <memory>

class FileChooser;
class FolderPresenter;
class LaunchpadViewModel;
class SystemFolderPanelAssetCache;
class SystemFoldersService;

// The file-system folders inside the open folder: what the panel shows of
// them, opening one in the file manager, adding one with the desktop's
// chooser and taking one out. A folder gone from the disk stays listed,
// dimmed, until the user takes it out.
class SystemFoldersPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    // {path, title, iconName, missing} per folder, in the stored order.
    Q_PROPERTY(QVariantList entries READ entries NOTIFY entriesChanged)
    Q_PROPERTY(bool available READ available CONSTANT)
public:
    SystemFoldersPresenter(LaunchpadViewModel &layout, FolderPresenter &folder, QObject *parent = nullptr);
    ~SystemFoldersPresenter() override;

    void attach(std::shared_ptr<SystemFoldersService> service, std::shared_ptr<SystemFolderPanelAssetCache> assets,
                std::shared_ptr<FileChooser> chooser);
    bool available() const { return m_service != nullptr; }
    QVariantList entries() const { return m_entries; }

    // True when it opened; a missing folder is explained instead.
    Q_INVOKABLE bool open(const QString &path);
    Q_INVOKABLE bool add(const QString &path);
    Q_INVOKABLE bool remove(const QString &path);
    Q_INVOKABLE void chooseAndAdd();

Q_SIGNALS:
    void entriesChanged();
    void notice(const QString &text);
    // A folder was opened: the overlay may go.
    void opened();

private:
    void rebuild();

    LaunchpadViewModel &m_layout;
    FolderPresenter &m_folder;
    std::shared_ptr<SystemFoldersService> m_service;
    std::shared_ptr<SystemFolderPanelAssetCache> m_assets;
    std::shared_ptr<FileChooser> m_chooser;
    QVariantList m_entries;
};
