#pragma once

#include <QString>
#include <QStringList>
#include <memory>

class UserDefaultsStoreType;

// What the display service tells about the display the overlay is on.
struct DisplayProfile {
    QString key;               // stable per monitor, e.g. the output name
    double minIconSize = 48;   // allowed icon sizes on this display
    double maxIconSize = 256;
};

class AppearanceRepository {
public:
    virtual ~AppearanceRepository() = default;
    virtual double iconSize(const DisplayProfile &display) const = 0;
    virtual void setIconSize(const DisplayProfile &display, double size) = 0;
    virtual bool showLabels(const DisplayProfile &display) const = 0;
    virtual void setShowLabels(const DisplayProfile &display, bool show) = 0;
    virtual int columns(const DisplayProfile &display) const = 0;
    virtual void setColumns(const DisplayProfile &display, int columns) = 0;
    virtual int rows(const DisplayProfile &display) const = 0;
    virtual void setRows(const DisplayProfile &display, int rows) = 0;
    // The key of the display the overlay last used; "default" before any.
    virtual QString lastDisplay() const = 0;
    virtual void setLastDisplay(const QString &key) = 0;
    // The last display with the icon sizes it allows, for readers that have
    // no display of their own (the command line).
    virtual DisplayProfile lastDisplayProfile() const = 0;
    virtual void setLastDisplayProfile(const DisplayProfile &display) = 0;
    virtual double glassIntensity() const = 0;
    virtual void setGlassIntensity(double value) = 0;
    virtual QString theme() const = 0;
    virtual void setTheme(const QString &theme) = 0; // flushed at once
    virtual QString titleColorOverride() const = 0;
    virtual void setTitleColorOverride(const QString &value) = 0;
    virtual bool liquidGlassEnabled() const = 0;
    virtual void setLiquidGlassEnabled(bool enabled) = 0;
    virtual QString liquidGlassMaterialStyle() const = 0; // "clear" or "tinted"
    virtual void setLiquidGlassMaterialStyle(const QString &style) = 0;
    virtual bool liquidGlassTintStandard() const = 0;
    virtual void setLiquidGlassTintStandard(bool standard) = 0;
    virtual double liquidGlassTintIntensity() const = 0; // 0 ... 0.8
    virtual void setLiquidGlassTintIntensity(double value) = 0;
    virtual double liquidGlassTintHue() const = 0;
    virtual void setLiquidGlassTintHue(double value) = 0;
    virtual bool blurEnabled() const = 0;
    virtual void setBlurEnabled(bool enabled) = 0;
    virtual bool filledBackgroundEnabled() const = 0;
    virtual void setFilledBackgroundEnabled(bool enabled) = 0;
    virtual bool cellBackgroundEnabled() const = 0;
    // The time-of-day tint: on or off, following the clock or a chosen hour.
    virtual bool sunBackgroundEnabled() const = 0;
    virtual void setSunBackgroundEnabled(bool enabled) = 0;
    virtual bool sunBackgroundAutoEnabled() const = 0;
    virtual void setSunBackgroundAutoEnabled(bool enabled) = 0;
    virtual double sunBackgroundManualTime() const = 0; // hours, 0 ... 24
    virtual void setSunBackgroundManualTime(double hours) = 0;
    virtual void setCellBackgroundEnabled(bool enabled) = 0;
};

// Appearance settings (standard store). The grid geometry is remembered per
// display under "<name>@<display key>"; reads and writes use the display's
// own key, so every monitor keeps its own icon size and grid.
class AppearanceRepositoryImpl final : public AppearanceRepository {
public:
    // Eight columns: moves and widget rectangles count rows eight cells wide, so
    // with eight the rows the user sees are the rows those rules use.
    static constexpr int kDefaultColumns = 8;
    static constexpr int kDefaultRows = 5;
    static constexpr int kMinColumns = 3, kMaxColumns = 12;
    static constexpr int kMinRows = 2, kMaxRows = 10;
    static constexpr double kDefaultIconSize = 120;
    static const QStringList kTitleColorValues; // "auto", "light", "dark"

    // machineStore: where the last display is kept, a fact of this machine
    // rather than of a profile; the profile's store when not given.
    explicit AppearanceRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store,
                                      std::shared_ptr<UserDefaultsStoreType> machineStore = nullptr);

    double iconSize(const DisplayProfile &display) const override;
    void setIconSize(const DisplayProfile &display, double size) override;
    bool showLabels(const DisplayProfile &display) const override;
    void setShowLabels(const DisplayProfile &display, bool show) override;
    int columns(const DisplayProfile &display) const override;
    void setColumns(const DisplayProfile &display, int columns) override;
    int rows(const DisplayProfile &display) const override;
    void setRows(const DisplayProfile &display, int rows) override;
    QString lastDisplay() const override;
    void setLastDisplay(const QString &key) override;
    DisplayProfile lastDisplayProfile() const override;
    void setLastDisplayProfile(const DisplayProfile &display) override;

    double glassIntensity() const override;
    void setGlassIntensity(double value) override;
    QString theme() const override;
    void setTheme(const QString &theme) override; // flushed at once
    QString titleColorOverride() const override;
    void setTitleColorOverride(const QString &value) override;
    bool liquidGlassEnabled() const override;
    void setLiquidGlassEnabled(bool enabled) override;
    QString liquidGlassMaterialStyle() const override; // "clear" or "tinted"
    void setLiquidGlassMaterialStyle(const QString &style) override;
    bool liquidGlassTintStandard() const override;
    void setLiquidGlassTintStandard(bool standard) override;
    double liquidGlassTintIntensity() const override; // 0 ... 0.8
    void setLiquidGlassTintIntensity(double value) override;
    double liquidGlassTintHue() const override;
    void setLiquidGlassTintHue(double value) override;
    bool blurEnabled() const override;
    void setBlurEnabled(bool enabled) override;
    bool filledBackgroundEnabled() const override;
    void setFilledBackgroundEnabled(bool enabled) override;
    bool cellBackgroundEnabled() const override;
    bool sunBackgroundEnabled() const override;
    void setSunBackgroundEnabled(bool enabled) override;
    bool sunBackgroundAutoEnabled() const override;
    void setSunBackgroundAutoEnabled(bool enabled) override;
    double sunBackgroundManualTime() const override;
    void setSunBackgroundManualTime(double hours) override;
    void setCellBackgroundEnabled(bool enabled) override;

    static QString displayKey(const QString &base, const DisplayProfile &display);

private:
    // A setter whose value equals the current one writes nothing.
    void write(const QString &key, const QVariant &value);
    bool flag(const char *key, bool fallback) const;

    std::shared_ptr<UserDefaultsStoreType> m_defaults;
    std::shared_ptr<UserDefaultsStoreType> m_machine;
};
