#pragma once

#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "fakes/FakeLayoutServices.h"

#include <QSignalSpy>
#include <QTest>
#include <memory>

namespace LayoutTest {

inline AppItem app(const QString &name)
{
    return AppItem{QUuid::createUuid(), QStringLiteral("/Applications/%1.app").arg(name), name};
}

inline QList<AppItem> apps(const QStringList &names)
{
    QList<AppItem> out;
    for (const QString &n : names)
        out.append(app(n));
    return out;
}

inline QString appKey(const QString &name)
{
    return SlotKey::app(QStringLiteral("/Applications/%1.app").arg(name));
}

inline QString path(const QString &name)
{
    return QStringLiteral("/Applications/%1.app").arg(name);
}

// A stored folder of the named apps (members and cells alike).
inline FolderItem folderOf(const QString &name, const QStringList &appNames)
{
    FolderItem folder;
    folder.id = QUuid::createUuid();
    folder.name = name;
    for (const QString &app : appNames)
        folder.appPaths.append(path(app));
    folder.slots = folder.appPaths;
    return folder;
}

inline QStringList keys(std::initializer_list<const char *> list)
{
    QStringList out;
    for (const char *k : list)
        out.append(QString::fromUtf8(k));
    return out;
}

// Apps named "0" .. "count-1", and their keys in that order.
inline QStringList numberedNames(int count)
{
    QStringList out;
    for (int i = 0; i < count; ++i)
        out.append(QString::number(i));
    return out;
}
inline QStringList numberedKeys(int count)
{
    QStringList out;
    for (int i = 0; i < count; ++i)
        out.append(appKey(QString::number(i)));
    return out;
}

// Runs the event loop until the model finished loading (scan included).
inline bool waitForLoad(LaunchpadViewModel &model, int timeoutMs = 5000)
{
    if (!model.isLoading())
        return true;
    QSignalSpy finished(&model, &LaunchpadViewModel::loadFinished);
    return finished.wait(timeoutMs);
}

// A model over in-memory repositories, loaded once.
struct Fixture {
    FakeLayoutServices fakes;
    std::unique_ptr<LaunchpadViewModel> model;

    LaunchpadViewModel &load()
    {
        model = std::make_unique<LaunchpadViewModel>(fakes.services());
        model->loadInitial();
        waitForLoad(*model);
        return *model;
    }
    // Loaded with exactly these cells stored and these apps installed.
    LaunchpadViewModel &load(const QStringList &slots, const QStringList &appNames)
    {
        fakes.apps->setApps(apps(appNames));
        fakes.order->storedSlots = slots;
        return load();
    }
};

}
