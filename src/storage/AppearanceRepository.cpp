#include "storage/AppearanceRepository.h"

#include "storage/PropertyListValue.h"
#include "storage/UserDefaultsStoreType.h"

#include <algorithm>

const QStringList AppearanceRepositoryImpl::kTitleColorValues{QStringLiteral("auto"), QStringLiteral("light"),
                                                              QStringLiteral("dark")};

AppearanceRepositoryImpl::AppearanceRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore)
    : m_defaults(std::move(standardStore))
{
}

QString AppearanceRepositoryImpl::displayKey(const QString &base, const DisplayProfile &display)
{
    return base + u'@' + display.key;
}

void AppearanceRepositoryImpl::write(const QString &key, const QVariant &value)
{
    if (m_defaults->persistedObject(key) == PropertyListValue::normalized(value))
        return;
    m_defaults->set(value, key);
}

double AppearanceRepositoryImpl::iconSize(const DisplayProfile &display) const
{
    const double size = m_defaults->number(displayKey(QStringLiteral("iconSize"), display)).value_or(kDefaultIconSize);
    return std::clamp(size, display.minIconSize, std::max(display.minIconSize, display.maxIconSize));
}

void AppearanceRepositoryImpl::setIconSize(const DisplayProfile &display, double size)
{
    write(displayKey(QStringLiteral("iconSize"), display),
          std::clamp(size, display.minIconSize, std::max(display.minIconSize, display.maxIconSize)));
}

bool AppearanceRepositoryImpl::showLabels(const DisplayProfile &display) const
{
    const QString key = displayKey(QStringLiteral("showLabels"), display);
    return m_defaults->object(key).isValid() ? m_defaults->boolValue(key) : true;
}

void AppearanceRepositoryImpl::setShowLabels(const DisplayProfile &display, bool show)
{
    write(displayKey(QStringLiteral("showLabels"), display), show);
}

int AppearanceRepositoryImpl::columns(const DisplayProfile &display) const
{
    const auto n = m_defaults->integer(displayKey(QStringLiteral("columns"), display));
    return std::clamp(int(n.value_or(kDefaultColumns)), kMinColumns, kMaxColumns);
}

void AppearanceRepositoryImpl::setColumns(const DisplayProfile &display, int columns)
{
    write(displayKey(QStringLiteral("columns"), display), std::clamp(columns, kMinColumns, kMaxColumns));
}

int AppearanceRepositoryImpl::rows(const DisplayProfile &display) const
{
    const auto n = m_defaults->integer(displayKey(QStringLiteral("rows"), display));
    return std::clamp(int(n.value_or(kDefaultRows)), kMinRows, kMaxRows);
}

void AppearanceRepositoryImpl::setRows(const DisplayProfile &display, int rows)
{
    write(displayKey(QStringLiteral("rows"), display), std::clamp(rows, kMinRows, kMaxRows));
}

double AppearanceRepositoryImpl::glassIntensity() const
{
    return m_defaults->number(QStringLiteral("glassIntensity")).value_or(0.85);
}

void AppearanceRepositoryImpl::setGlassIntensity(double value)
{
    write(QStringLiteral("glassIntensity"), value);
}

QString AppearanceRepositoryImpl::theme() const
{
    return m_defaults->string(QStringLiteral("theme")).value_or(QStringLiteral("auto"));
}

void AppearanceRepositoryImpl::setTheme(const QString &theme)
{
    write(QStringLiteral("theme"), theme);
    m_defaults->synchronize();
}

QString AppearanceRepositoryImpl::titleColorOverride() const
{
    const QString value = m_defaults->string(QStringLiteral("titleColorOverride")).value_or(QString());
    return kTitleColorValues.contains(value) ? value : QStringLiteral("auto");
}

void AppearanceRepositoryImpl::setTitleColorOverride(const QString &value)
{
    write(QStringLiteral("titleColorOverride"), kTitleColorValues.contains(value) ? value : QStringLiteral("auto"));
}

bool AppearanceRepositoryImpl::liquidGlassEnabled() const
{
    const QString key = QStringLiteral("liquidGlassEnabled");
    return m_defaults->object(key).isValid() ? m_defaults->boolValue(key) : true;
}

void AppearanceRepositoryImpl::setLiquidGlassEnabled(bool enabled)
{
    write(QStringLiteral("liquidGlassEnabled"), enabled);
}

QString AppearanceRepositoryImpl::liquidGlassMaterialStyle() const
{
    const QString style = m_defaults->string(QStringLiteral("liquidGlassMaterialStyle")).value_or(QString());
    return style == QLatin1String("clear") ? style : QStringLiteral("tinted");
}

void AppearanceRepositoryImpl::setLiquidGlassMaterialStyle(const QString &style)
{
    write(QStringLiteral("liquidGlassMaterialStyle"),
          style == QLatin1String("clear") ? QStringLiteral("clear") : QStringLiteral("tinted"));
}

bool AppearanceRepositoryImpl::liquidGlassTintStandard() const
{
    const QString key = QStringLiteral("liquidGlassTintStandard");
    return m_defaults->object(key).isValid() ? m_defaults->boolValue(key) : true;
}

void AppearanceRepositoryImpl::setLiquidGlassTintStandard(bool standard)
{
    write(QStringLiteral("liquidGlassTintStandard"), standard);
}

double AppearanceRepositoryImpl::liquidGlassTintIntensity() const
{
    return std::clamp(m_defaults->number(QStringLiteral("liquidGlassTintIntensity")).value_or(0.6), 0.0, 0.8);
}

void AppearanceRepositoryImpl::setLiquidGlassTintIntensity(double value)
{
    write(QStringLiteral("liquidGlassTintIntensity"), std::clamp(value, 0.0, 0.8));
}

double AppearanceRepositoryImpl::liquidGlassTintHue() const
{
    return m_defaults->number(QStringLiteral("liquidGlassTintHue")).value_or(0.55);
}

void AppearanceRepositoryImpl::setLiquidGlassTintHue(double value)
{
    write(QStringLiteral("liquidGlassTintHue"), value);
}
