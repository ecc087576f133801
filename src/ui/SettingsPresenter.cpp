#include "ui/SettingsPresenter.h"

#include "input/GesturesManager.h"
#include "input/HotCornersManager.h"
#include "input/HotKeyManager.h"
#include "input/MultitouchPinchMonitor.h"
#include "input/ShortcutNames.h"
#include "layout/FolderAppsGrid.h"
#include "layout/LaunchpadViewModel.h"
#include "platform/FileChooser.h"
#include "ui/FallbackFileChooser.h"
#include "storage/AppearanceRepository.h"
#include "ui/BackdropPresenter.h"
#include "ui/BackgroundPresenter.h"
#include "ui/GridPresenter.h"
#include "ui/ShortcutCapture.h"

#include <QPointer>
#include <QUrl>

namespace {
const QStringList kThemes{QStringLiteral("auto"), QStringLiteral("light"), QStringLiteral("dark")};
const QStringList kMaterials{QStringLiteral("clear"), QStringLiteral("tinted")};
const QStringList kCorners{QStringLiteral("none"), QStringLiteral("top-left"), QStringLiteral("top-right"),
                           QStringLiteral("bottom-left"), QStringLiteral("bottom-right")};
constexpr int kMinFingers = 3, kMaxFingers = 5;

bool inRange(const QVariant &value, double min, double max)
{
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok && number >= min && number <= max;
}
}

SettingsPresenter::SettingsPresenter(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
{
    if (m_services.hotKeys) {
        connect(m_services.hotKeys, &HotKeyManager::shortcutChanged, this, &SettingsPresenter::bump);
        connect(m_services.hotKeys, &HotKeyManager::isEnabledChanged, this, &SettingsPresenter::bump);
    }
    if (m_services.corners) {
        connect(m_services.corners, &HotCornersManager::isEnabledChanged, this, &SettingsPresenter::bump);
        connect(m_services.corners, &HotCornersManager::selectedCornerChanged, this, &SettingsPresenter::bump);
    }
    if (m_services.gestures) {
        connect(m_services.gestures, &GesturesManager::isEnabledChanged, this, &SettingsPresenter::bump);
        connect(m_services.gestures, &GesturesManager::fingerCountChanged, this, &SettingsPresenter::bump);
    }
    if (m_services.grid)
        connect(m_services.grid->pages(), &PagesPresenter::appearanceChanged, this, &SettingsPresenter::bump);
}

void SettingsPresenter::bump()
{
    ++m_revision;
    Q_EMIT changed();
}

void SettingsPresenter::reload()
{
    bump();
}

QString SettingsPresenter::shortcutText() const
{
    // The names printed on PC keyboards; the capture's own text stays as it is.
    return m_services.hotKeys ? ShortcutNames::format(m_services.hotKeys->currentKeyCode(), m_services.hotKeys->currentModifiers())
                              : QString();
}

bool SettingsPresenter::shortcutTaken() const
{
    return m_services.hotKeys && m_services.hotKeys->isEnabled() && !m_services.hotKeys->isToggleRegistered();
}

QString SettingsPresenter::pinchStatus() const
{
    const GesturesManager *gestures = m_services.gestures;
    if (!gestures || !gestures->isEnabled())
        return {};
    const MultitouchPinchMonitor *monitor = gestures->pinchMonitor();
    const auto status = monitor ? monitor->lastStartStatus() : std::nullopt;
    if (!status || *status == ContactFrameSource::Status::Started)
        return {};
    if (*status == ContactFrameSource::Status::NoDevices)
        return tr("No touchpad that reports several fingers was found.");
    return tr("The touchpad cannot be read: your account needs access to /dev/input. "
              "Add it to the \"input\" group (sudo usermod -aG input $USER), then log out and in again.");
}

QVariant SettingsPresenter::value(const QString &name) const
{
    const auto &s = m_services;
    if (s.grid && s.appearance) {
        const DisplayProfile &display = s.grid->pages()->display();
        if (name == u"iconSize")
            return s.appearance->iconSize(display);
        if (name == u"columns")
            return s.appearance->columns(display);
        if (name == u"rows")
            return s.appearance->rows(display);
        if (name == u"showLabels")
            return s.appearance->showLabels(display);
    }
    if (s.appearance) {
        if (name == u"glassIntensity")
            return s.appearance->glassIntensity();
        if (name == u"theme")
            return s.appearance->theme();
        if (name == u"titleColorOverride")
            return s.appearance->titleColorOverride();
        if (name == u"liquidGlassEnabled")
            return s.appearance->liquidGlassEnabled();
        if (name == u"liquidGlassMaterialStyle")
            return s.appearance->liquidGlassMaterialStyle();
        if (name == u"liquidGlassTintStandard")
            return s.appearance->liquidGlassTintStandard();
        if (name == u"liquidGlassTintIntensity")
            return s.appearance->liquidGlassTintIntensity();
        if (name == u"liquidGlassTintHue")
            return s.appearance->liquidGlassTintHue();
        if (name == u"blurEnabled")
            return s.appearance->blurEnabled();
        if (name == u"sunBackgroundEnabled")
            return s.appearance->sunBackgroundEnabled();
        if (name == u"sunBackgroundAutoEnabled")
            return s.appearance->sunBackgroundAutoEnabled();
        if (name == u"sunBackgroundManualTime")
            return s.appearance->sunBackgroundManualTime();
        if (name == u"cellBackgroundEnabled")
            return s.appearance->cellBackgroundEnabled();
        if (name == u"filledBackgroundEnabled")
            return s.appearance->filledBackgroundEnabled();
    }
    if (name == u"folderAppsGrid" && s.layout)
        return s.layout->folderAppsGridRawValue();
    if (name == u"startAtLogin")
        return s.startsAtLogin ? s.startsAtLogin() : false;
    if (name == u"showInTaskbar")
        return s.showsInTaskbar ? s.showsInTaskbar() : true;
    if (name == u"hotKeyEnabled" && s.hotKeys)
        return s.hotKeys->isEnabled();
    if (name == u"hotCorner" && s.corners)
        return kCorners.value(s.corners->isEnabled() ? int(s.corners->selectedCorner()) : 0);
    if (name == u"pinchEnabled" && s.gestures)
        return s.gestures->isEnabled();
    if (name == u"pinchFingers" && s.gestures)
        return s.gestures->fingerCount();
    return {};
}

QVariantMap SettingsPresenter::range(const QString &name) const
{
    const auto numbers = [](double min, double max) {
        return QVariantMap{{QStringLiteral("min"), min}, {QStringLiteral("max"), max}};
    };
    const auto choices = [](const QStringList &values) { return QVariantMap{{QStringLiteral("values"), values}}; };
    if (name == u"iconSize" && m_services.grid) {
        const DisplayProfile &display = m_services.grid->pages()->display();
        return numbers(display.minIconSize, display.maxIconSize);
    }
    if (name == u"columns")
        return numbers(AppearanceRepositoryImpl::kMinColumns, AppearanceRepositoryImpl::kMaxColumns);
    if (name == u"rows")
        return numbers(AppearanceRepositoryImpl::kMinRows, AppearanceRepositoryImpl::kMaxRows);
    if (name == u"glassIntensity" || name == u"liquidGlassTintHue")
        return numbers(0, 1);
    if (name == u"liquidGlassTintIntensity")
        return numbers(0, 0.8);
    if (name == u"sunBackgroundManualTime")
        return numbers(0, 24);
    if (name == u"pinchFingers")
        return numbers(kMinFingers, kMaxFingers);
    if (name == u"theme")
        return choices(kThemes);
    if (name == u"titleColorOverride")
        return choices(AppearanceRepositoryImpl::kTitleColorValues);
    if (name == u"liquidGlassMaterialStyle")
        return choices(kMaterials);
    if (name == u"hotCorner")
        return choices(kCorners);
    if (name == u"folderAppsGrid") {
        QStringList values;
        for (FolderAppsGrid grid : FolderAppsGrids::all())
            values.append(FolderAppsGrids::rawValue(grid));
        return choices(values);
    }
    return {};
}

bool SettingsPresenter::setValue(const QString &name, const QVariant &value)
{
    auto &s = m_services;
    const QVariantMap allowed = range(name);
    if (allowed.contains(QStringLiteral("min"))
        && !inRange(value, allowed.value(QStringLiteral("min")).toDouble(), allowed.value(QStringLiteral("max")).toDouble()))
        return false;
    if (allowed.contains(QStringLiteral("values"))
        && !allowed.value(QStringLiteral("values")).toStringList().contains(value.toString()))
        return false;

    bool done = true;
    bool geometry = false;
    if (s.appearance && s.grid && (name == u"iconSize" || name == u"columns" || name == u"rows" || name == u"showLabels")) {
        const DisplayProfile &display = s.grid->pages()->display();
        if (name == u"iconSize")
            s.appearance->setIconSize(display, value.toDouble());
        else if (name == u"columns")
            s.appearance->setColumns(display, value.toInt());
        else if (name == u"rows")
            s.appearance->setRows(display, value.toInt());
        else
            s.appearance->setShowLabels(display, value.toBool());
        geometry = true;
    } else if (s.appearance && name == u"glassIntensity") {
        s.appearance->setGlassIntensity(value.toDouble());
    } else if (s.appearance && name == u"theme") {
        s.appearance->setTheme(value.toString());
    } else if (s.appearance && name == u"titleColorOverride") {
        s.appearance->setTitleColorOverride(value.toString());
    } else if (s.appearance && name == u"liquidGlassEnabled") {
        s.appearance->setLiquidGlassEnabled(value.toBool());
    } else if (s.appearance && name == u"liquidGlassMaterialStyle") {
        s.appearance->setLiquidGlassMaterialStyle(value.toString());
    } else if (s.appearance && name == u"liquidGlassTintStandard") {
        s.appearance->setLiquidGlassTintStandard(value.toBool());
    } else if (s.appearance && name == u"liquidGlassTintIntensity") {
        s.appearance->setLiquidGlassTintIntensity(value.toDouble());
    } else if (s.appearance && name == u"liquidGlassTintHue") {
        s.appearance->setLiquidGlassTintHue(value.toDouble());
    } else if (s.appearance && name == u"sunBackgroundEnabled") {
        s.appearance->setSunBackgroundEnabled(value.toBool());
    } else if (s.appearance && name == u"sunBackgroundAutoEnabled") {
        s.appearance->setSunBackgroundAutoEnabled(value.toBool());
    } else if (s.appearance && name == u"sunBackgroundManualTime") {
        s.appearance->setSunBackgroundManualTime(value.toDouble());
    } else if (s.appearance && name == u"blurEnabled") {
        s.appearance->setBlurEnabled(value.toBool());
    } else if (s.appearance && name == u"cellBackgroundEnabled") {
        s.appearance->setCellBackgroundEnabled(value.toBool());
    } else if (s.appearance && name == u"filledBackgroundEnabled") {
        s.appearance->setFilledBackgroundEnabled(value.toBool());
    } else if (s.layout && name == u"folderAppsGrid") {
        s.layout->setFolderAppsGridRawValue(value.toString());
    } else if (name == u"startAtLogin" && s.setStartsAtLogin) {
        done = s.setStartsAtLogin(value.toBool());
    } else if (name == u"showInTaskbar" && s.setShowsInTaskbar) {
        s.setShowsInTaskbar(value.toBool());
    } else if (name == u"hotKeyEnabled" && s.hotKeys) {
        s.hotKeys->setEnabled(value.toBool());
    } else if (name == u"hotCorner" && s.corners) {
        const auto corner = HotCorner(kCorners.indexOf(value.toString()));
        // One control: a corner switches the feature on, "none" off.
        if (corner != HotCorner::none)
            s.corners->setSelectedCorner(corner);
        s.corners->setEnabled(corner != HotCorner::none);
    } else if (name == u"pinchEnabled" && s.gestures) {
        s.gestures->setEnabled(value.toBool());
    } else if (name == u"pinchFingers" && s.gestures) {
        s.gestures->setFingerCount(value.toInt());
    } else {
        done = false;
    }
    if (geometry)
        s.grid->pages()->reloadAppearance();
    // The glass over the wallpaper follows the look settings, which the
    // window names by their keys.
    if (done && s.grid && BackdropPresenter::kSettingsKeys.contains(name))
        s.grid->backdrop()->refresh();
    bump();
    return done;
}

bool SettingsPresenter::recordShortcut(int key, int modifiers)
{
    if (!m_services.hotKeys)
        return false;
    const auto shortcut = ShortcutCapture::fromKeyPress(key, Qt::KeyboardModifiers(modifiers));
    if (!shortcut)
        return false;
    m_services.hotKeys->updateHotKey(shortcut->modifierFlags, shortcut->keyCode);
    bump();
    return true;
}

QStringList SettingsPresenter::extraAppFolders() const
{
    return m_services.extraAppFolders ? m_services.extraAppFolders() : QStringList();
}

void SettingsPresenter::addExtraAppFolder()
{
    if (!m_services.setExtraAppFolders)
        return;
    QPointer<SettingsPresenter> self(this);
    FallbackFileChooser::chooseWith(m_services.chooser.get(), FileChooser::Kind::Folder, tr("Choose a folder of applications"),
                               [self](const QString &folder) {
                                   if (!self || folder.isEmpty())
                                       return;
                                   QStringList folders = self->extraAppFolders();
                                   if (!folders.contains(folder)) {
                                       folders.append(folder);
                                       self->m_services.setExtraAppFolders(folders);
                                   }
                                   self->bump();
                               });
}

void SettingsPresenter::removeExtraAppFolder(const QString &folder)
{
    if (!m_services.setExtraAppFolders)
        return;
    QStringList folders = extraAppFolders();
    if (folders.removeAll(folder) > 0)
        m_services.setExtraAppFolders(folders);
    bump();
}

void SettingsPresenter::chooseWallpaper()
{
    if (!m_services.grid)
        return;
    QPointer<SettingsPresenter> self(this);
    FallbackFileChooser::chooseWith(m_services.chooser.get(), FileChooser::Kind::Image, tr("Choose a picture for the background"),
                                    [self](const QString &file) {
                                        if (!self || file.isEmpty())
                                            return;
                                        self->m_wallpaperError =
                                            self->m_services.grid->background()->chooseImage(QUrl::fromLocalFile(file));
                                        self->bump();
                                    });
}

QVariantList SettingsPresenter::customizedApps() const
{
    return m_services.grid ? m_services.grid->customizedApps() : QVariantList();
}

QVariantList SettingsPresenter::folderTints() const
{
    return m_services.grid ? m_services.grid->folderTints() : QVariantList();
}

void SettingsPresenter::setFolderTint(const QString &folderId, const QString &tint)
{
    if (m_services.grid)
        m_services.grid->setFolderTint(folderId, tint);
    bump();
}
