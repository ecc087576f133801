// Prints the cost of a settings write + flush and of opening a domain that
// holds 1,000 keys. Run: build/bench/settings_store_bench
#include "storage/UserDefaultsStore.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

void fill(UserDefaultsStore &store, int keys)
{
    for (int i = 0; i < keys; ++i) {
        switch (i % 4) {
        case 0: store.set(i, QStringLiteral("int.%1").arg(i)); break;
        case 1: store.set(QStringLiteral("value %1").arg(i), QStringLiteral("text.%1").arg(i)); break;
        case 2: store.set(QByteArray(64, char(i)), QStringLiteral("bytes.%1").arg(i)); break;
        default: store.set(QVariantList{i, true, 0.5}, QStringLiteral("list.%1").arg(i)); break;
        }
    }
    store.synchronize();
}

}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;

    for (int keys : {10, 100, 1000}) {
        UserDefaultsStore store(QStringLiteral("bench.write.%1").arg(keys), std::nullopt, dir.path());
        fill(store, keys);
        std::vector<double> samples;
        for (int i = 0; i < 100; ++i) {
            QElapsedTimer t;
            t.start();
            store.set(i, QStringLiteral("int.0"));
            store.synchronize();
            samples.push_back(t.nsecsElapsed() / 1e6);
        }
        std::printf("write+flush, domain of %4d keys: median %.3f ms\n", keys, median(samples));
    }

    const QString source = QStringLiteral("bench.open");
    {
        UserDefaultsStore store(source, std::nullopt, dir.path());
        fill(store, 1000);
        std::printf("domain file with 1000 keys: %lld bytes\n", QFile(store.fileName()).size());
    }
    std::vector<double> samples;
    for (int i = 0; i < 30; ++i) {
        // A fresh name each time: an open file would otherwise come from the in-process cache.
        const QString name = QStringLiteral("bench.open.copy%1").arg(i);
        QFile::copy(dir.filePath(source + QStringLiteral(".json")), dir.filePath(name + QStringLiteral(".json")));
        QElapsedTimer t;
        t.start();
        UserDefaultsStore store(name, std::nullopt, dir.path());
        const QVariant v = store.object(QStringLiteral("int.996"));
        samples.push_back(t.nsecsElapsed() / 1e6);
        if (v.toInt() != 996)
            return 1;
    }
    std::printf("open domain with 1000 keys and read one: median %.3f ms\n", median(samples));
    return 0;
}
