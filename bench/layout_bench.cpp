// Prints what loading a layout and moving icons cost, for growing layouts.
// Usage: tillmora_layout_bench [runs]   (debug logging is switched off)

#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "layout/SlotMove.h"
#include "fakes/FakeLayoutServices.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <algorithm>
#include <cstdio>

namespace {

QString appPath(int i) { return QStringLiteral("/Applications/App%1.app").arg(i, 5, 10, QLatin1Char('0')); }

// n installed apps; every tenth app lives in a folder of ten, the rest on the grid.
FakeLayoutServices storedLayout(int n)
{
    FakeLayoutServices fakes;
    QList<AppItem> apps;
    for (int i = 0; i < n; ++i)
        apps.append(AppItem{QUuid::createUuid(), appPath(i), QStringLiteral("App %1").arg(i)});
    fakes.apps->setApps(apps);
    QStringList slots;
    FolderItem folder;
    for (int i = 0; i < n; ++i) {
        if (i % 10 == 0) {
            if (folder.appPaths.isEmpty()) {
                folder.id = QUuid::createUuid();
                folder.name = QStringLiteral("Folder %1").arg(fakes.folders->stored.size());
                slots.append(folder.key());
            }
            folder.appPaths.append(appPath(i));
            folder.slots.append(appPath(i));
            if (folder.appPaths.size() == 10) {
                fakes.folders->stored.append(folder);
                folder = FolderItem();
            }
        } else {
            slots.append(SlotKey::app(appPath(i)));
        }
    }
    if (!folder.appPaths.isEmpty())
        fakes.folders->stored.append(folder);
    fakes.order->storedSlots = slots;
    return fakes;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double timeLoad(LaunchpadViewModel &model)
{
    QEventLoop loop;
    QObject::connect(&model, &LaunchpadViewModel::loadFinished, &loop, &QEventLoop::quit);
    QElapsedTimer timer;
    timer.start();
    model.loadInitial();
    loop.exec();
    return timer.nsecsElapsed() / 1e6;
}

void benchLoad(int runs)
{
    std::printf("loadInitial() (stored layout, 10%% of apps in folders; median of %d runs, scan result is a fake)\n", runs);
    std::printf("%10s %12s %12s %14s\n", "apps", "reload ms", "first ms", "us per app");
    for (int n : {100, 1000, 10000}) {
        QList<double> reloads, firsts;
        for (int r = 0; r < runs; ++r) {
            FakeLayoutServices fakes = storedLayout(n);
            LaunchpadViewModel model(fakes.services());
            reloads.append(timeLoad(model));
            // A first launch: nothing stored, every app placed from the scan.
            FakeLayoutServices empty = storedLayout(n);
            empty.order->storedSlots.clear();
            empty.folders->stored.clear();
            LaunchpadViewModel fresh(empty.services());
            firsts.append(timeLoad(fresh));
        }
        std::printf("%10d %12.2f %12.2f %14.2f\n", n, median(reloads), median(firsts), median(reloads) * 1000.0 / n);
    }
}

void benchMoves(int calls)
{
    std::printf("\n%d random moveKeyInSlots calls (random icon to a random cell of the list)\n", calls);
    std::printf("%10s %10s %16s %16s %18s\n", "apps", "cells", "model ns/op", "list ns/op", "model total ms");
    for (int n : {100, 1000, 10000}) {
        FakeLayoutServices fakes = storedLayout(n);
        LaunchpadViewModel model(fakes.services());
        timeLoad(model);
        QRandomGenerator rng(42);
        auto randomKey = [&](const QStringList &slots) {
            for (;;) {
                const QString &k = slots.at(rng.bounded(int(slots.size())));
                if (!k.isEmpty())
                    return k;
            }
        };
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < calls; ++i) {
            const QString key = randomKey(model.slots());
            model.moveKeyInSlots(key, int(rng.bounded(int(model.slots().size()))));
        }
        const double modelNs = double(timer.nsecsElapsed()) / calls;
        const double totalMs = timer.nsecsElapsed() / 1e6;

        // The same moves on a bare list: the algorithm without saving or signals.
        QStringList slots = fakes.order->storedSlots;
        timer.restart();
        for (int i = 0; i < calls; ++i) {
            SlotEdit edit(slots);
            const QString key = randomKey(slots);
            SlotMove::moveKeyInSlots(edit, key, int(rng.bounded(int(slots.size()))), 5);
        }
        const double listNs = double(timer.nsecsElapsed()) / calls;
        std::printf("%10d %10lld %16.0f %16.0f %18.1f\n", n, (long long)model.slots().size(), modelNs, listNs, totalMs);
    }
}

}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("com.tillmora.Tillmora.*.debug=false"));
    const int runs = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 5;
    benchLoad(runs);
    benchMoves(100000);
    return 0;
}
