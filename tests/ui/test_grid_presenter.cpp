// The view glue without a window: page cells update only where they changed,
// search tolerance, and folder drops going back to the grid.
#include "common/TempEnvironment.h"
#include "layout/LaunchpadViewModel.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeLayoutServices.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/UserDefaultsStore.h"
#include "ui/GridPresenter.h"
#include "ui/SearchMatcher.h"

#include <QSignalSpy>
#include <QTest>

class GridPresenterTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void searchForgivesCaseAccentsAndWordStarts_data();
    void searchForgivesCaseAccentsAndWordStarts();
    void searchRanksNameStartsFirst();
    void aMoveRedrawsOnlyTheCellsThatChanged();
    void renamesShowAndPagesFollowTheList();
};

void GridPresenterTest::searchForgivesCaseAccentsAndWordStarts_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    QTest::newRow("case") << "FIRE" << "Firefox" << true;
    QTest::newRow("accent in name") << "cafe" << "Café" << true;
    QTest::newRow("accent in query") << "résumé" << "Resume Builder" << true;
    QTest::newRow("later word") << "term" << "GNOME Terminal" << true;
    QTest::newRow("two word starts") << "stu co" << "Visual Studio Code" << true;
    QTest::newRow("initials") << "vsc" << "Visual Studio Code" << true;
    QTest::newRow("inside a word") << "efo" << "Firefox" << true;
    QTest::newRow("no match") << "xyz" << "Firefox" << false;
    QTest::newRow("blank query") << "  " << "Firefox" << false;
}

void GridPresenterTest::searchForgivesCaseAccentsAndWordStarts()
{
    QFETCH(QString, query);
    QFETCH(QString, name);
    QFETCH(bool, matches);
    QCOMPARE(SearchMatcher::score(query, name).has_value(), matches);
}

void GridPresenterTest::searchRanksNameStartsFirst()
{
    const auto ranked = SearchMatcher::rank(QStringLiteral("te"), {{"1", "Kate"}, {"2", "GNOME Terminal"}, {"3", "Text Editor"}, {"4", "Tetris"}});
    QStringList names;
    for (const auto &c : ranked)
        names.append(c.name);
    QCOMPARE(names, (QStringList{"Tetris", "Text Editor", "GNOME Terminal", "Kate"}));
}

struct PresenterFixture {
    TempEnvironment env;
    FakeLayoutServices fakes;
    std::shared_ptr<UserDefaultsStore> store = UserDefaultsStore::standard(env.configDir());
    AppNameRepositoryImpl names{store};
    AppearanceRepositoryImpl appearance{store};
    std::unique_ptr<LaunchpadViewModel> model;
    std::unique_ptr<GridPresenter> presenter;

    explicit PresenterFixture(int appCount)
    {
        QList<AppItem> apps;
        for (int i = 0; i < appCount; ++i)
            apps.append({QUuid::createUuid(), QStringLiteral("/apps/A%1.app").arg(i), QStringLiteral("A%1").arg(i)});
        fakes.apps->setApps(apps);
        model = std::make_unique<LaunchpadViewModel>(fakes.services());
        model->loadInitial();
        presenter = std::make_unique<GridPresenter>(*model, names, appearance, std::make_shared<FakeAppLauncher>());
        presenter->setDisplayProfile({QStringLiteral("test"), 48, 96});
    }
};

void GridPresenterTest::aMoveRedrawsOnlyTheCellsThatChanged()
{
    PresenterFixture f(20);
    QTRY_VERIFY(!f.model->isLoading());
    QTRY_COMPARE(f.presenter->pagesModel().page(0)->cells().at(19).iconPath, QStringLiteral("/apps/A19.app"));

    QSignalSpy changed(f.presenter->pagesModel().page(0), &QAbstractItemModel::dataChanged);
    QSignalSpy reset(f.presenter->pagesModel().page(0), &QAbstractItemModel::modelReset);
    f.model->moveKeyInSlots(QStringLiteral("A:/apps/A0.app"), 30); // into an empty cell
    QTRY_COMPARE(changed.size(), 2); // the cell it left and the cell it entered
    QCOMPARE(reset.size(), 0);
    QCOMPARE(f.presenter->pagesModel().page(0)->cells().at(30).iconPath, QStringLiteral("/apps/A0.app"));
    QCOMPARE(f.presenter->pagesModel().page(0)->cells().at(0).kind, GridCell::Kind::Empty);
}

void GridPresenterTest::renamesShowAndPagesFollowTheList()
{
    PresenterFixture f(3);
    QTRY_VERIFY(!f.model->isLoading());
    f.presenter->renameApp(QStringLiteral("A:/apps/A1.app"), QStringLiteral("Renamed"));
    QTRY_COMPARE(f.presenter->pagesModel().page(0)->cells().at(1).title, QStringLiteral("Renamed"));

    QSignalSpy pages(f.presenter.get(), &GridPresenter::pageCountChanged);
    f.model->moveKeyInSlots(QStringLiteral("A:/apps/A2.app"), 45); // on the second page of 40
    QTRY_COMPARE(f.presenter->pageCount(), 2);
    QCOMPARE(f.presenter->keyAt(1, 5), QStringLiteral("A:/apps/A2.app"));
    f.presenter->setCurrentPage(7);
    QCOMPARE(f.presenter->currentPage(), 1);
}

QTEST_MAIN(GridPresenterTest)
#include "test_grid_presenter.moc"
