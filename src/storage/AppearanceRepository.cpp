#include "storage/AppearanceRepository.h"

#include "storage/PropertyListValue.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>

const QStringList AppearanceRepositoryImpl::kTitleColorValues{QStringLiteral("auto"), QStringLiteral("light"),
                                                              QStringLiteral("dark")};

AppearanceRepositoryImpl::AppearanceRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store,
                                                   std::shared_ptr<UserDefaultsStoreType> machineStore)
    : m_defaults(std::move(store))
    , m_machine(machineStore ? std::move(machineStore) : m_defaults)
{
}

QString AppearanceRepositoryImpl::displayKey(const QString &base, const DisplayProfile &display)
{
    return base + SettingsKeys::kDisplaySeparator + display.key;
}

void AppearanceRepositoryImpl::write(const QString &key, const QVariant &value)
{
    // A NaN would pass every clamp and poison the look on the next read.
    if (value.typeId() == QMetaType::Double && !std::isfinite(value.toDouble()))
        return;
    if (m_defaults->persistedObject(key) == PropertyListValue::normalized(value))
        return;
    m_defaults->set(value, key);
}

double AppearanceRepositoryImpl::iconSize(const DisplayProfile &display) const
{
    const double size = m_defaults->number(displayKey(QLatin1String(SettingsKeys::kIconSize), display)).value_or(kDefaultIconSize);
    return std::clamp(size, display.minIconSize, std::max(display.minIconSize, display.maxIconSize));
}

void AppearanceRepositoryImpl::setIconSize(const DisplayProfile &display, double size)
{
    write(displayKey(QLatin1String(SettingsKeys::kIconSize), display),
          std::clamp(size, display.minIconSize, std::max(display.minIconSize, display.maxIconSize)));
}

bool AppearanceRepositoryImpl::showLabels(const DisplayProfile &display) const
{
    const QString key = displayKey(QLatin1String(SettingsKeys::kShowLabels), display);
    return m_defaults->object(key).isValid() ? m_defaults->boolValue(key) : true;
}

void AppearanceRepositoryImpl::setShowLabels(const DisplayProfile &display, bool show)
{
    write(displayKey(QLatin1String(SettingsKeys::kShowLabels), display), show);
}

int AppearanceRepositoryImpl::columns(const DisplayProfile &display) const
{
    const auto n = m_defaults->integer(displayKey(QLatin1String(SettingsKeys::kColumns), display));
    return std::clamp(int(n.value_or(kDefaultColumns)), kMinColumns, kMaxColumns);
}

void AppearanceRepositoryImpl::setColumns(const DisplayProfile &display, int columns)
{
    write(displayKey(QLatin1String(SettingsKeys::kColumns), display), std::clamp(columns, kMinColumns, kMaxColumns));
}

QString AppearanceRepositoryImpl::lastDisplay() const
{
    const QString key = m_machine->string(QLatin1String(SettingsKeys::kLastOverlayDisplay)).value_or(QString());
    return key.isEmpty() ? QStringLiteral("default") : key;
}

void AppearanceRepositoryImpl::setLastDisplay(const QString &key)
{
    if (m_machine->persistedObject(QLatin1String(SettingsKeys::kLastOverlayDisplay)) != QVariant(key))
        m_machine->set(key, QLatin1String(SettingsKeys::kLastOverlayDisplay));
}

DisplayProfile AppearanceRepositoryImpl::lastDisplayProfile() const
{
    DisplayProfile display{lastDisplay()};
    const auto min = m_machine->number(QLatin1String(SettingsKeys::kLastOverlayDisplayMinIconSize));
    const auto max = m_machine->number(QLatin1String(SettingsKeys::kLastOverlayDisplayMaxIconSize));
    // A range that does not hold together is no range; the general one serves.
    if (min && max && std::isfinite(*min) && std::isfinite(*max) && *min > 0 && *min <= *max) {
        display.minIconSize = *min;
        display.maxIconSize = *max;
    }
    return display;
}

void AppearanceRepositoryImpl::setLastDisplayProfile(const DisplayProfile &display)
{
    setLastDisplay(display.key);
    for (const auto &[key, value] : {std::pair{SettingsKeys::kLastOverlayDisplayMinIconSize, display.minIconSize},
                                     std::pair{SettingsKeys::kLastOverlayDisplayMaxIconSize, display.maxIconSize}})
        if (m_machine->persistedObject(QLatin1String(key)) != QVariant(value))
            m_machine->set(value, QLatin1String(key));
}

int AppearanceRepositoryImpl::rows(const DisplayProfile &display) const
{
    const auto n = m_defaults->integer(displayKey(QLatin1String(SettingsKeys::kRows), display));
    return std::clamp(int(n.value_or(kDefaultRows)), kMinRows, kMaxRows);
}

void AppearanceRepositoryImpl::setRows(const DisplayProfile &display, int rows)
{
    write(displayKey(QLatin1String(SettingsKeys::kRows), display), std::clamp(rows, kMinRows, kMaxRows));
}

double AppearanceRepositoryImpl::glassIntensity() const
{
    return m_defaults->number(QLatin1String(SettingsKeys::kGlassIntensity)).value_or(0.85);
}

void AppearanceRepositoryImpl::setGlassIntensity(double value)
{
    write(QLatin1String(SettingsKeys::kGlassIntensity), value);
}

QString AppearanceRepositoryImpl::theme() const
{
    return m_defaults->string(QLatin1String(SettingsKeys::kTheme)).value_or(QStringLiteral("auto"));
}

void AppearanceRepositoryImpl::setTheme(const QString &theme)
{
    write(QLatin1String(SettingsKeys::kTheme), theme);
    m_defaults->synchronize();
}

QString AppearanceRepositoryImpl::titleColorOverride() const
{
    const QString value = m_defaults->string(QLatin1String(SettingsKeys::kTitleColorOverride)).value_or(QString());
    return kTitleColorValues.contains(value) ? value : QStringLiteral("auto");
}

void AppearanceRepositoryImpl::setTitleColorOverride(const QString &value)
{
    write(QLatin1String(SettingsKeys::kTitleColorOverride), kTitleColorValues.contains(value) ? value : QStringLiteral("auto"));
}

bool AppearanceRepositoryImpl::liquidGlassEnabled() const
{
    const QString key = QLatin1String(SettingsKeys::kLiquidGlassEnabled);
    return m_defaults->object(key).isValid() ? m_defaults->boolValue(key) : true;
}

void AppearanceRepositoryImpl::setLiquidGlassEnabled(bool enabled)
{
    write(QLatin1String(SettingsKeys::kLiquidGlassEnabled), enabled);
}

QString AppearanceRepositoryImpl::liquidGlassMaterialStyle() const
{
    const QString style = m_defaults->string(QLatin1String(SettingsKeys::kLiquidGlassMaterialStyle)).value_or(QString());
    return style == QLatin1String("clear") ? style : QStringLiteral("tinted");
}

void AppearanceRepositoryImpl::setLiquidGlassMaterialStyle(const QString &style)
{
    write(QLatin1String(SettingsKeys::kLiquidGlassMaterialStyle),
          style == QLatin1String("clear") ? QStringLiteral("clear") : QStringLiteral("tinted"));
}

bool AppearanceRepositoryImpl::liquidGlassTintStandard() const
{
    const QString key = QLatin1String(SettingsKeys::kLiquidGlassTintStandard);
    return m_defaults->object(key).isValid() ? m_defaults->boolValue(key) : true;
}

void AppearanceRepositoryImpl::setLiquidGlassTintStandard(bool standard)
{
    write(QLatin1String(SettingsKeys::kLiquidGlassTintStandard), standard);
}

double AppearanceRepositoryImpl::liquidGlassTintIntensity() const
{
    return std::clamp(m_defaults->number(QLatin1String(SettingsKeys::kLiquidGlassTintIntensity)).value_or(0.6), 0.0, 0.8);
}

void AppearanceRepositoryImpl::setLiquidGlassTintIntensity(double value)
{
    write(QLatin1String(SettingsKeys::kLiquidGlassTintIntensity), std::clamp(value, 0.0, 0.8));
}

double AppearanceRepositoryImpl::liquidGlassTintHue() const
{
    return m_defaults->number(QLatin1String(SettingsKeys::kLiquidGlassTintHue)).value_or(0.55);
}

void AppearanceRepositoryImpl::setLiquidGlassTintHue(double value)
{
    write(QLatin1String(SettingsKeys::kLiquidGlassTintHue), value);
}

bool AppearanceRepositoryImpl::flag(const char *key, bool fallback) const
{
    // Registered defaults answer first where the process registered them.
    const QString name = QLatin1String(key);
    return m_defaults->object(name).isValid() ? m_defaults->boolValue(name) : fallback;
}

bool AppearanceRepositoryImpl::blurEnabled() const { return flag(SettingsKeys::kBlurEnabled, true); }

void AppearanceRepositoryImpl::setBlurEnabled(bool enabled)
{
    write(QLatin1String(SettingsKeys::kBlurEnabled), enabled);
}

bool AppearanceRepositoryImpl::filledBackgroundEnabled() const
{
    return flag(SettingsKeys::kFilledBackgroundEnabled, false);
}

void AppearanceRepositoryImpl::setFilledBackgroundEnabled(bool enabled)
{
    write(QLatin1String(SettingsKeys::kFilledBackgroundEnabled), enabled);
}

bool AppearanceRepositoryImpl::cellBackgroundEnabled() const
{
    return flag(SettingsKeys::kCellBackgroundEnabled, false);
}

void AppearanceRepositoryImpl::setCellBackgroundEnabled(bool enabled)
{
    write(QLatin1String(SettingsKeys::kCellBackgroundEnabled), enabled);
}

bool AppearanceRepositoryImpl::sunBackgroundEnabled() const { return flag(SettingsKeys::kSunBackgroundEnabled, false); }

void AppearanceRepositoryImpl::setSunBackgroundEnabled(bool enabled)
{
    write(QLatin1String(SettingsKeys::kSunBackgroundEnabled), enabled);
}

bool AppearanceRepositoryImpl::sunBackgroundAutoEnabled() const
{
    return flag(SettingsKeys::kSunBackgroundAutoEnabled, true);
}

void AppearanceRepositoryImpl::setSunBackgroundAutoEnabled(bool enabled)
{
    write(QLatin1String(SettingsKeys::kSunBackgroundAutoEnabled), enabled);
}

double AppearanceRepositoryImpl::sunBackgroundManualTime() const
{
    // Hours as a number; a profile copied from elsewhere may hold a date, whose time of day counts.
    const QVariant value = m_defaults->object(QLatin1String(SettingsKeys::kSunBackgroundManualTime));
    if (value.typeId() == QMetaType::QDateTime) {
        const QTime time = value.toDateTime().toLocalTime().time();
        return time.hour() + time.minute() / 60.0;
    }
    bool ok = false;
    const double hours = value.toDouble(&ok);
    return ok && hours >= 0 && hours <= 24 ? hours : 12.0;
}

void AppearanceRepositoryImpl::setSunBackgroundManualTime(double hours)
{
    write(QLatin1String(SettingsKeys::kSunBackgroundManualTime), std::clamp(hours, 0.0, 24.0));
}
