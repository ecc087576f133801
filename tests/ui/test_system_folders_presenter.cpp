// The open folder's folders of the disk as the overlay shows them: a folder
// gone from the disk stays listed, marked missing, and a click on it
// explains instead of opening; it leaves only when the user takes it out.
#include "catalogue/SystemFolderPanelAssetCache.h"
#include "catalogue/SystemFoldersService.h"
#include "common/TempEnvironment.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeLayoutServices.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/UserDefaultsStore.h"
#include "ui/GridPresenter.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

class SystemFoldersPresenterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aGoneFolderStaysMarkedAndIsExplained()
    {
        TempEnvironment env;
        FakeLayoutServices fakes;
        fakes.apps->setApps({{QUuid::createUuid(), QStringLiteral("/apps/Mail.app"), QStringLiteral("Mail")}});
        auto launcher = std::make_shared<FakeAppLauncher>();
        auto store = UserDefaultsStore::standard(env.configDir());
        AppNameRepositoryImpl names{store};
        AppearanceRepositoryImpl appearance{store};
        LaunchpadViewModel model(fakes.services());
        model.loadInitial();
        QTRY_VERIFY(!model.isLoading());
        GridPresenter presenter(model, names, appearance, launcher);
        auto service = std::make_shared<SystemFoldersServiceImpl>(store, launcher, std::make_shared<FakeClock>());
        presenter.attach({nullptr, nullptr, service, std::make_shared<SystemFolderPanelAssetCache>(nullptr), nullptr});

        const QString docs = env.path(QStringLiteral("home/Docs"));
        const QString old = env.path(QStringLiteral("home/Old"));
        QVERIFY(QDir().mkpath(docs) && QDir().mkpath(old));
        const auto folder = model.createFolder(QStringLiteral("Work"), {QStringLiteral("/apps/Mail.app")});
        QVERIFY(folder);
        SystemFoldersPresenter &strip = *presenter.systemFolders();
        presenter.folder()->open(Uuids::toText(folder->id));
        QVERIFY(strip.add(docs));
        QVERIFY(strip.add(old));
        QVERIFY(!strip.add(old)); // once only
        QVERIFY(QDir(old).removeRecursively());
        presenter.folder()->close();
        presenter.folder()->open(Uuids::toText(folder->id));

        const QVariantList entries = strip.entries();
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries.at(0).toMap().value("title").toString(), QStringLiteral("Docs"));
        QCOMPARE(entries.at(0).toMap().value("missing").toBool(), false);
        QCOMPARE(entries.at(1).toMap().value("missing").toBool(), true);

        QSignalSpy notice(&strip, &SystemFoldersPresenter::notice);
        QVERIFY(!strip.open(old));
        QCOMPARE(notice.size(), 1);
        QVERIFY(notice.first().first().toString().contains(old));
        QVERIFY(launcher->openedLocations.isEmpty());
        QVERIFY(strip.open(docs));
        QCOMPARE(launcher->openedLocations, QList<QUrl>{QUrl::fromLocalFile(docs)});

        QVERIFY(strip.remove(old));
        QCOMPARE(model.folder(folder->id)->systemFolderPaths, QStringList{docs});
        QCOMPARE(strip.entries().size(), 1);
    }
};

QTEST_MAIN(SystemFoldersPresenterTest)
#include "test_system_folders_presenter.moc"
