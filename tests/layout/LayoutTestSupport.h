#pragma once

#include "layout/LaunchpadViewModel.h"
#include "layout/SlotKey.h"
#include "platform/fake/FakeLayoutServices.h"

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
};

}
