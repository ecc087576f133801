#pragma once

#include "input/PinchRecognizer.h"
#include "storage/SettingsKeys.h"

#include <QObject>
#include <functional>
#include <memory>

class Clock;
class ContactFrameSource;
class MultitouchPinchMonitor;
class SleepWakeSource;
class UserDefaultsStoreType;

// The pinch feature and its settings: a pinch in opens the launcher, a
// pinch out closes it. Main thread only.
class GesturesManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(int fingerCount READ fingerCount WRITE setFingerCount NOTIFY fingerCountChanged)
public:
    static constexpr const char *kEnabledKey = SettingsKeys::kGesturePinchEnabled;
    static constexpr const char *kFingerCountKey = SettingsKeys::kGesturePinchFingerCount;
    static constexpr int kDefaultFingerCount = 4;

    // Starts the monitor when the stored switch is on.
    GesturesManager(std::shared_ptr<UserDefaultsStoreType> store, ContactFrameSource &source, SleepWakeSource *power,
                    Clock &clock, QObject *parent = nullptr);
    ~GesturesManager() override;

    void setOnOpen(std::function<void()> action) { m_onOpen = std::move(action); }
    void setOnClose(std::function<void()> action) { m_onClose = std::move(action); }
    bool isEnabled() const { return m_isEnabled; }
    int fingerCount() const { return m_fingerCount; }
    const MultitouchPinchMonitor *pinchMonitor() const { return m_monitor.get(); }

    void setEnabled(bool enabled);
    void setFingerCount(int count);

Q_SIGNALS:
    void isEnabledChanged(bool enabled);
    void fingerCountChanged(int count);

private:
    void startMonitor();
    void stopMonitor();
    void pinched(PinchDirection direction);

    std::function<void()> m_onOpen;
    std::function<void()> m_onClose;
    bool m_isEnabled = true;
    int m_fingerCount = kDefaultFingerCount;
    std::unique_ptr<MultitouchPinchMonitor> m_monitor;

    std::shared_ptr<UserDefaultsStoreType> m_store;
    ContactFrameSource &m_source;
    SleepWakeSource *m_power;
    Clock &m_clock;
};
