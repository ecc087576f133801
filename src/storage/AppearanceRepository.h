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

// Appearance settings (standard store). The grid geometry is remembered per
// display under "<name>@<display key>"; reads and writes use the display's
// own key, so every monitor keeps its own icon size and grid.
class AppearanceRepositoryImpl {
public:
    // Eight columns: moves and widget rectangles count rows eight cells wide, so
    // with eight the rows the user sees are the rows those rules use.
    static constexpr int kDefaultColumns = 8;
    static constexpr int kDefaultRows = 5;
    static constexpr int kMinColumns = 3, kMaxColumns = 12;
    static constexpr int kMinRows = 2, kMaxRows = 10;
    static constexpr double kDefaultIconSize = 120;
    static const QStringList kTitleColorValues; // "auto", "light", "dark"

    explicit AppearanceRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore);

    double iconSize(const DisplayProfile &display) const;
    void setIconSize(const DisplayProfile &display, double size);
    bool showLabels(const DisplayProfile &display) const;
    void setShowLabels(const DisplayProfile &display, bool show);
    int columns(const DisplayProfile &display) const;
    void setColumns(const DisplayProfile &display, int columns);
    int rows(const DisplayProfile &display) const;
    void setRows(const DisplayProfile &display, int rows);

    double glassIntensity() const;
    void setGlassIntensity(double value);
    QString theme() const;
    void setTheme(const QString &theme); // flushed at once
    QString titleColorOverride() const;
    void setTitleColorOverride(const QString &value);
    bool liquidGlassEnabled() const;
    void setLiquidGlassEnabled(bool enabled);
    QString liquidGlassMaterialStyle() const; // "clear" or "tinted"
    void setLiquidGlassMaterialStyle(const QString &style);
    bool liquidGlassTintStandard() const;
    void setLiquidGlassTintStandard(bool standard);
    double liquidGlassTintIntensity() const; // 0 ... 0.8
    void setLiquidGlassTintIntensity(double value);
    double liquidGlassTintHue() const;
    void setLiquidGlassTintHue(double value);

    static QString displayKey(const QString &base, const DisplayProfile &display);

private:
    // A setter whose value equals the current one writes nothing.
    void write(const QString &key, const QVariant &value);

    std::shared_ptr<UserDefaultsStoreType> defaults;
};
