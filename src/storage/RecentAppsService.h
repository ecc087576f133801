#pragma once

#include <QStringList>
#include <functional>
#include <memory>

class UserDefaultsStoreType;

// The apps opened last, most recent first (the "recentApps" setting).
class RecentAppsService {
public:
    virtual ~RecentAppsService() = default;
    virtual QStringList recentApps() const = 0;
    virtual void noteLaunched(const QString &path) = 0;
    // Drops apps that are no longer installed; returns how many.
    virtual qsizetype removeDeleted(const std::function<bool(const QString &)> &stillInstalled) = 0;
    // The app now lives at to: its entry follows, keeping its rank.
    virtual void moveAppPath(const QString &from, const QString &to) = 0;
};

class RecentAppsServiceImpl final : public RecentAppsService {
public:
    // How many apps the list remembers.
    static constexpr qsizetype kLimit = 20;

    explicit RecentAppsServiceImpl(std::shared_ptr<UserDefaultsStoreType> store);
    QStringList recentApps() const override;
    void noteLaunched(const QString &path) override;
    qsizetype removeDeleted(const std::function<bool(const QString &)> &stillInstalled) override;
    void moveAppPath(const QString &from, const QString &to) override;

private:
    std::shared_ptr<UserDefaultsStoreType> m_store;
};
