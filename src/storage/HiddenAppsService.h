#pragma once

#include <QStringList>
#include <functional>
#include <memory>

class UserDefaultsStoreType;
class QLoggingCategory;

class HiddenAppsService {
public:
    virtual ~HiddenAppsService() = default;
    virtual QStringList hiddenApps() const = 0;
    virtual void hide(const QString &path) = 0;
    virtual void show(const QString &path) = 0;
    virtual bool isHidden(const QString &path) const = 0;
    // Drops the paths for which stillInstalled is false; returns how many.
    virtual qsizetype removeDeleted(const std::function<bool(const QString &)> &stillInstalled) = 0;
    // The app now lives at to: a hidden from becomes a hidden to, in its place.
    virtual void moveAppPath(const QString &from, const QString &to) = 0;
};

// Hidden applications by path under "hiddenApps_v1"; never a path twice.
class HiddenAppsServiceImpl final : public HiddenAppsService {
public:
    explicit HiddenAppsServiceImpl(std::shared_ptr<UserDefaultsStoreType> store);
    QStringList hiddenApps() const override;
    void hide(const QString &path) override;
    void show(const QString &path) override;
    bool isHidden(const QString &path) const override;
    qsizetype removeDeleted(const std::function<bool(const QString &)> &stillInstalled) override;
    void moveAppPath(const QString &from, const QString &to) override;

private:
    QStringList stored() const;

    std::shared_ptr<UserDefaultsStoreType> m_store;
    const QLoggingCategory &m_logger;
};
