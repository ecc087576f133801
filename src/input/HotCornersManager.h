#pragma once

#include "foundation/Clock.h"
#include "input/HotCornerGeometry.h"
#include "storage/SettingsKeys.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

class ApplicationActivity;
class PointerSource;
class UserDefaultsStoreType;

// Shows or hides the launcher when the pointer rests 0.3 s in the chosen
// corner of the screen it is on. Samples the pointer every 0.1 s while
// monitoring, and also on every movement where a motion listener may be
// installed. Main thread only.
class HotCornersManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY isEnabledChanged)
public:
    static constexpr const char *kEnabledKey = SettingsKeys::kHotCornerEnabled;
    static constexpr const char *kSelectedKey = SettingsKeys::kHotCornerSelected;

    // Reads the settings; starts no monitoring.
    HotCornersManager(std::shared_ptr<UserDefaultsStoreType> store, PointerSource &pointer,
                      ApplicationActivity &activity, Clock &clock, QObject *parent = nullptr);
    ~HotCornersManager() override;

    void setOnActivate(std::function<void()> action) { m_onActivate = std::move(action); }
    bool isEnabled() const { return m_isEnabled; }
    HotCorner selectedCorner() const { return m_selectedCorner; }
    bool isMonitoring() const { return m_cornerDetectionTimer != nullptr; }

    void setEnabled(bool enabled);
    void setSelectedCorner(HotCorner corner);
    void startMonitoring();
    void stopMonitoring();

    // Informational: the checks use the literal values 10.0 and 0.3, so
    // changing these alone changes nothing.
    double cornerZoneSize = 10.0;
    double activationDelay = 0.3;

Q_SIGNALS:
    void isEnabledChanged(bool enabled);
    void selectedCornerChanged(HotCorner corner);

private:
    void sample();
    void checkCorner(QPoint pixel);
    void applicationDidBecomeActive();

    std::function<void()> m_onActivate;
    bool m_isEnabled = false;
    HotCorner m_selectedCorner = HotCorner::none;
    bool m_eventTap = false; // the motion listener is installed
    std::unique_ptr<Clock::Timer> m_cornerDetectionTimer;
    bool m_isInCorner = false;
    std::optional<qint64> m_enteredCornerAt; // clock nanoseconds
    QMetaObject::Connection m_permissionObserver;
    std::unique_ptr<Clock::Timer> m_delayedRestart;

    std::shared_ptr<UserDefaultsStoreType> m_store;
    PointerSource &m_pointer;
    Clock &m_clock;
};
