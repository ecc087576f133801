#pragma once

#include <QObject>
#include <QVariant>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <memory>

class AppearanceRepositoryImpl;
class FileChooser;
class GesturesManager;
class GridPresenter;
class HotCornersManager;
class HotKeyManager;
class LaunchpadViewModel;

// What the settings window shows and changes. Every value is read through
// value(name) and written through setValue(name, value), which takes effect
// at once; `revision` moves on every change, made here or elsewhere, so the
// window's bindings read again.
class SettingsPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the settings window")
    Q_PROPERTY(int revision READ revision NOTIFY changed)
    Q_PROPERTY(QString shortcutText READ shortcutText NOTIFY changed)
    // The toggle shortcut is switched on but another program holds it.
    Q_PROPERTY(bool shortcutTaken READ shortcutTaken NOTIFY changed)
    Q_PROPERTY(QString pinchStatus READ pinchStatus NOTIFY changed)
    Q_PROPERTY(GridPresenter *grid READ grid CONSTANT)
    Q_PROPERTY(QString wallpaperError READ wallpaperError NOTIFY changed)
    // The apps the user renamed or gave an icon of their own.
    Q_PROPERTY(QVariantList customizedApps READ customizedApps NOTIFY changed)
    Q_PROPERTY(QStringList extraAppFolders READ extraAppFolders NOTIFY changed)
    Q_PROPERTY(QVariantList folderTints READ folderTints NOTIFY changed)
public:
    struct Services {
        HotKeyManager *hotKeys = nullptr;
        HotCornersManager *corners = nullptr;
        GesturesManager *gestures = nullptr;
        AppearanceRepositoryImpl *appearance = nullptr;
        LaunchpadViewModel *layout = nullptr;
        GridPresenter *grid = nullptr;
        std::function<bool()> startsAtLogin;
        std::function<bool(bool)> setStartsAtLogin;
        std::function<bool()> showsInTaskbar;
        std::function<void(bool)> setShowsInTaskbar;
        std::function<QStringList()> extraAppFolders;
        std::function<void(const QStringList &)> setExtraAppFolders;
        std::shared_ptr<FileChooser> chooser;
    };
    explicit SettingsPresenter(Services services, QObject *parent = nullptr);

    int revision() const { return m_revision; }
    QString shortcutText() const;
    bool shortcutTaken() const;
    QString pinchStatus() const;
    GridPresenter *grid() const { return m_services.grid; }
    QString wallpaperError() const { return m_wallpaperError; }

    Q_INVOKABLE QVariant value(const QString &name) const;
    // False (and nothing written) for a value out of range or of a wrong kind.
    Q_INVOKABLE bool setValue(const QString &name, const QVariant &value);
    // {min, max} of a number, or {values} of a choice.
    Q_INVOKABLE QVariantMap range(const QString &name) const;
    Q_INVOKABLE QStringList choices(const QString &name) const
    {
        return range(name).value(QStringLiteral("values")).toStringList();
    }
    // A key press while the shortcut field records; true when it was taken.
    Q_INVOKABLE bool recordShortcut(int key, int modifiers);
    // Extra folders of applications (besides the desktop's own).
    QStringList extraAppFolders() const;
    QVariantList customizedApps() const;
    QVariantList folderTints() const;
    Q_INVOKABLE void setFolderTint(const QString &folderId, const QString &tint);
    Q_INVOKABLE void addExtraAppFolder();
    Q_INVOKABLE void removeExtraAppFolder(const QString &folder);
    // Asks for a picture and puts it behind the grid; a refusal's reason is
    // in wallpaperError.
    Q_INVOKABLE void chooseWallpaper();

    // Another process or a Space switch changed settings.
    Q_INVOKABLE void reload();

Q_SIGNALS:
    void changed();

private:
    void bump();

    Services m_services;
    int m_revision = 0;
    QString m_wallpaperError;
};
