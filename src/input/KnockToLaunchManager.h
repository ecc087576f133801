#pragma once

#include "storage/SettingsKeys.h"

#include <QObject>
#include <memory>

class UserDefaultsStoreType;

// Knock detection is not part of this build: the manager exists so the
// settings screen finds it, and it always comes up switched off.
class KnockToLaunchManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled CONSTANT)
public:
    static constexpr const char *kEnabledKey = SettingsKeys::kKnockToLaunchEnabled;

    // Writes false to "knockToLaunch.enabled".
    explicit KnockToLaunchManager(std::shared_ptr<UserDefaultsStoreType> store, QObject *parent = nullptr);

    bool isEnabled() const { return false; }
};
