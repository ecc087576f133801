// The last run's catalogue: kept across runs, ignored when damaged, and shown
// by the layout model only until this run's scan replaces it.
#include "catalogue/CatalogueCache.h"
#include "common/TempEnvironment.h"
#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "fakes/FakeLayoutServices.h"

#include <QFile>
#include <QTest>

class CatalogueCacheTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void roundTripsAndIgnoresDamage()
    {
        TempEnvironment env;
        const QString path = env.path(QStringLiteral("data/tillmora/catalogue-cache.json"));
        QVERIFY(CatalogueCache::load(path).isEmpty());
        const QList<AppItem> apps{{QUuid::createUuid(), "/a/Mail.app", "Mail"}, {QUuid::createUuid(), "/a/Notes.app", "Notes"}};
        QVERIFY(CatalogueCache::save(path, apps));
        QCOMPARE(CatalogueCache::load(path), apps);

        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("[{\"id\": 3}");
        file.close();
        QVERIFY(CatalogueCache::load(path).isEmpty());
    }

    void preloadedAppsResolveUntilTheScanReplacesThem()
    {
        FakeLayoutServices fakes;
        const AppItem mail{QUuid::createUuid(), "/a/Mail.app", "Mail"};
        const AppItem notes{QUuid::createUuid(), "/a/Notes.app", "Notes"};
        fakes.order->setSlots({SlotKey::app(mail.path), SlotKey::app(notes.path)});
        fakes.apps->setApps({notes}); // Mail was removed since the cache was written
        LaunchpadViewModel model(fakes.services());
        model.preloadApps({mail, notes});
        QVERIFY(model.resolve(SlotKey::app(mail.path)).has_value()); // the first frame can draw it

        model.loadInitial();
        QTRY_VERIFY(!model.isLoading());
        QCOMPARE(model.apps(), QList<AppItem>{notes});
        QVERIFY(!model.resolve(SlotKey::app(mail.path)));
        QVERIFY(!model.slots().contains(SlotKey::app(mail.path))); // reconciled against the scan, not the cache

        model.preloadApps({mail}); // too late: a scan result is never overwritten
        QCOMPARE(model.apps(), QList<AppItem>{notes});
    }
};

QTEST_GUILESS_MAIN(CatalogueCacheTest)
#include "test_catalogue_cache.moc"
