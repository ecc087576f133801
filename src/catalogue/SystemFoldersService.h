#pragma once

#include "catalogue/AppLauncher.h"
#include "foundation/GridRecords.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

class Clock;
class UserDefaultsStoreType;
class QLoggingCategory;

// File-system folders placed on the grid or in folders: the picker's
// suggestions, whether a stored path is still a folder, and opening one in
// the user's file manager.
class SystemFoldersService {
public:
    using CategoriesReady = std::function<void(const QList<SystemFolderCategory> &)>;

    virtual ~SystemFoldersService() = default;
    // Answers later, on the main thread.
    virtual void categories(CategoriesReady ready) = 0;
    virtual void preWarm() = 0;
    // An existing directory; answered from a cache after the first call.
    virtual bool isValidPath(const QString &path) = 0;
    // Forgets the cached answers, so a folder deleted or restored meanwhile is seen as it is now.
    virtual void clearValidPathCache() = 0;
    // Remembers how to find a placed folder again.
    virtual void rememberFolder(const QString &path) = 0;
    virtual AppLauncher::Result openFolder(const QString &path) = 0;
};

class SystemFoldersServiceImpl final : public QObject, public SystemFoldersService {
    Q_OBJECT
public:
    // The settings key of a placed folder's bookmark: a file:// URI here.
    static QString bookmarkKey(const QString &path);

    // standard: the standard preferences (bookmarks live there whatever the
    // Space); launcher may be null (headless), then nothing opens.
    SystemFoldersServiceImpl(std::shared_ptr<UserDefaultsStoreType> standard, std::shared_ptr<AppLauncher> launcher,
                             std::shared_ptr<Clock> clock, QObject *parent = nullptr);
    ~SystemFoldersServiceImpl() override;

    void categories(CategoriesReady ready) override;
    void preWarm() override;
    bool isValidPath(const QString &path) override;
    void clearValidPathCache() override;
    void rememberFolder(const QString &path) override;
    AppLauncher::Result openFolder(const QString &path) override;

    static constexpr double kCacheTTL = 30.0;

private:
    void scanFinished(const QList<SystemFolderCategory> &categories);

    const QLoggingCategory &m_logger;
    QList<SystemFolderCategory> m_cachedCategories;
    std::optional<qint64> m_lastScanAt; // Clock nanoseconds
    // The callers waiting for the running scan; empty when none runs.
    std::optional<QList<CategoriesReady>> m_categoriesInFlight;
    QHash<QString, bool> m_validPathCache;
    std::shared_ptr<UserDefaultsStoreType> m_standard;
    std::shared_ptr<AppLauncher> m_launcher;
    std::shared_ptr<Clock> m_clock;
};
