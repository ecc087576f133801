#pragma once

#include "catalogue/AppsRepository.h"
#include "layout/LayoutServices.h"
#include "organise/WorkflowsRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/RecentAppsService.h"
#include "storage/OrderRepository.h"
#include "storage/WidgetsRepository.h"

#include <QMutex>
#include <QMutexLocker>
#include <atomic>
#include <optional>

// In-memory stand-ins for the layout's repositories, for tests, benchmarks
// and tools that must not touch the user's settings.

// The installed applications as a test sets them; scan() runs on a worker.
// Unless told otherwise it vouches for the whole disk, so every app it does
// not list counts as uninstalled.
class FakeAppsRepository final : public AppsRepository {
public:
    AppScan scan() const override
    {
        ++m_fetches;
        QMutexLocker lock(&m_mutex);
        if (m_scan)
            return *m_scan;
        AppScan scan;
        for (const AppItem &app : m_apps)
            scan.add(app);
        for (const QString &folder : m_listedFolders)
            scan.addListedFolder(folder, {});
        return scan;
    }
    void setApps(const QList<AppItem> &apps)
    {
        QMutexLocker lock(&m_mutex);
        m_apps = apps;
        m_scan.reset();
    }
    // The folders the scan could list in full (nothing below them but the
    // listed apps); "/" by default.
    void setListedFolders(const QStringList &folders)
    {
        QMutexLocker lock(&m_mutex);
        m_listedFolders = folders;
    }
    // A whole scan, as a real catalogue made it.
    void setScan(const AppScan &scan)
    {
        QMutexLocker lock(&m_mutex);
        m_scan = scan;
        m_apps = scan.apps();
    }
    QList<AppItem> apps() const
    {
        QMutexLocker lock(&m_mutex);
        return m_apps;
    }
    int fetchCount() const { return m_fetches; }

private:
    mutable QMutex m_mutex;
    QList<AppItem> m_apps;
    QStringList m_listedFolders{QStringLiteral("/")};
    std::optional<AppScan> m_scan;
    mutable std::atomic<int> m_fetches{0};
};

class FakeFoldersRepository final : public FoldersRepository {
public:
    QList<FolderItem> stored;
    int saves = 0;
    QList<FolderItem> loadAll() const override { return stored; }
    void saveAll(const QList<FolderItem> &folders) override
    {
        stored = folders;
        ++saves;
    }
};

class FakeOrderRepository final : public OrderRepository {
public:
    QStringList storedSlots;
    int slotSaves = 0;
    QStringList appOrder() const override { return m_app; }
    void setAppOrder(const QStringList &order) override { m_app = order; }
    QStringList folderOrder() const override { return m_folder; }
    void setFolderOrder(const QStringList &order) override { m_folder = order; }
    QStringList combinedOrder() const override { return m_combined; }
    void setCombinedOrder(const QStringList &order) override { m_combined = order; }
    QStringList slots() const override { return storedSlots; }
    void setSlots(const QStringList &slots) override
    {
        storedSlots = slots;
        ++slotSaves;
    }

private:
    QStringList m_app, m_folder, m_combined;
};

class FakeWidgetsRepository final : public WidgetsRepository {
public:
    QList<WidgetItem> stored;
    QList<WidgetItem> load() const override { return stored; }
    void save(const QList<WidgetItem> &widgets) override { stored = widgets; }
};

class FakeWorkflowsRepository final : public WorkflowsRepository {
public:
    QList<WorkflowItem> stored;
    QList<WorkflowItem> load() const override { return stored; }
    void save(const QList<WorkflowItem> &workflows) override { stored = workflows; }
};

// The stored path lists of the hidden and recent fakes.
namespace FakePathList {
inline qsizetype removeDeleted(QStringList &paths, const std::function<bool(const QString &)> &stillInstalled)
{
    return paths.removeIf([&](const QString &p) { return !stillInstalled(p); });
}
inline void move(QStringList &paths, const QString &from, const QString &to)
{
    if (const qsizetype at = paths.indexOf(from); at >= 0)
        paths[at] = to;
}
}

class FakeHiddenAppsService final : public HiddenAppsService {
public:
    QStringList stored;
    QStringList hiddenApps() const override { return stored; }
    void hide(const QString &path) override
    {
        if (!stored.contains(path))
            stored.append(path);
    }
    void show(const QString &path) override { stored.removeAll(path); }
    bool isHidden(const QString &path) const override { return stored.contains(path); }
    qsizetype removeDeleted(const std::function<bool(const QString &)> &stillInstalled) override
    {
        return FakePathList::removeDeleted(stored, stillInstalled);
    }
    void moveAppPath(const QString &from, const QString &to) override { FakePathList::move(stored, from, to); }
};

class FakeRecentAppsService final : public RecentAppsService {
public:
    QStringList stored;
    QStringList recentApps() const override { return stored; }
    void noteLaunched(const QString &path) override
    {
        stored.removeAll(path);
        stored.prepend(path);
    }
    qsizetype removeDeleted(const std::function<bool(const QString &)> &stillInstalled) override
    {
        return FakePathList::removeDeleted(stored, stillInstalled);
    }
    void moveAppPath(const QString &from, const QString &to) override { FakePathList::move(stored, from, to); }
};

// One of each, wired into the services the layout model takes.
struct FakeLayoutServices {
    std::shared_ptr<FakeAppsRepository> apps = std::make_shared<FakeAppsRepository>();
    std::shared_ptr<FakeFoldersRepository> folders = std::make_shared<FakeFoldersRepository>();
    std::shared_ptr<FakeOrderRepository> order = std::make_shared<FakeOrderRepository>();
    std::shared_ptr<FakeWidgetsRepository> widgets = std::make_shared<FakeWidgetsRepository>();
    std::shared_ptr<FakeWorkflowsRepository> workflows = std::make_shared<FakeWorkflowsRepository>();
    std::shared_ptr<FakeHiddenAppsService> hidden = std::make_shared<FakeHiddenAppsService>();
    std::shared_ptr<FakeRecentAppsService> recent = std::make_shared<FakeRecentAppsService>();

    LayoutServices services() const
    {
        LayoutServices s;
        s.appsRepo = apps;
        s.foldersRepo = folders;
        s.orderRepo = order;
        s.widgetsRepo = widgets;
        s.workflowsRepo = workflows;
        s.hiddenAppsService = hidden;
        s.recentAppsService = recent;
        return s;
    }
};
