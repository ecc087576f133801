// The overlay's QML driven like a user would, on the offscreen platform: a
// drag, a folder made by holding one app over another, a search and a launch.
// Each test checks the layout model afterwards.
#include "common/TempEnvironment.h"
#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeLayoutServices.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/UserDefaultsStore.h"
#include "ui/GridPresenter.h"
#include "ui/IconImageProvider.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

namespace {
AppItem app(const QString &name)
{
    return {QUuid::createUuid(), QStringLiteral("/apps/%1.app").arg(name), name};
}
}

class OverlayTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    FakeLayoutServices fakes;
    std::shared_ptr<FakeAppLauncher> launcher;
    std::shared_ptr<UserDefaultsStore> store;
    std::unique_ptr<AppNameRepositoryImpl> names;
    std::unique_ptr<AppearanceRepositoryImpl> appearance;
    std::unique_ptr<LaunchpadViewModel> model;
    std::unique_ptr<GridPresenter> presenter;
    std::unique_ptr<QQuickView> view;

    QPointF cellCenter(int local, double fx = 0.5, double fy = 0.5) const
    {
        auto *pages = view->rootObject()->findChild<QQuickItem *>(QStringLiteral("pages"));
        const double margin = view->rootObject()->property("gridMargin").toDouble();
        const double cellW = (pages->width() - 2 * margin) / presenter->columns();
        const double cellH = pages->height() / presenter->rows();
        return {pages->x() + margin + (local % presenter->columns() + fx) * cellW,
                pages->y() + (local / presenter->columns() + fy) * cellH};
    }

    void type(const QString &text)
    {
        for (const QChar c : text)
            QTest::keyClick(view.get(), c.toLatin1());
    }

    void dragAlong(const QPointF &from, const QPointF &to, int holdMs = 0)
    {
        QTest::mousePress(view.get(), Qt::LeftButton, {}, from.toPoint());
        for (int step = 1; step <= 8; ++step) {
            QTest::mouseMove(view.get(), (from + (to - from) * step / 8.0).toPoint());
            QTest::qWait(10);
        }
        if (holdMs > 0) {
            QTest::mouseMove(view.get(), to.toPoint() + QPoint(1, 0));
            QTest::qWait(holdMs);
        }
        QTest::mouseRelease(view.get(), Qt::LeftButton, {}, to.toPoint());
        QTest::qWait(20);
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        fakes = FakeLayoutServices();
        QList<AppItem> apps;
        for (int i = 0; i < 12; ++i)
            apps.append(app(QStringLiteral("App%1").arg(i)));
        apps.append(app(QStringLiteral("GNOME Terminal")));
        apps.append(app(QStringLiteral("Café")));
        fakes.apps->setApps(apps);
        launcher = std::make_shared<FakeAppLauncher>();
        store = UserDefaultsStore::standard(env->configDir());
        names = std::make_unique<AppNameRepositoryImpl>(store);
        appearance = std::make_unique<AppearanceRepositoryImpl>(store);
        model = std::make_unique<LaunchpadViewModel>(fakes.services());
        model->loadInitial();
        QTRY_VERIFY(!model->isLoading());
        QCOMPARE(model->slots().size(), 14);

        presenter = std::make_unique<GridPresenter>(*model, *names, *appearance, launcher);
        presenter->setDisplayProfile({QStringLiteral("test"), 48, 80});
        view = std::make_unique<QQuickView>();
        view->engine()->addImageProvider(QStringLiteral("icon"), new IconImageProvider([](const QString &) { return QIcon(); }));
        view->rootContext()->setContextProperty(QStringLiteral("grid"), presenter.get());
        view->setResizeMode(QQuickView::SizeRootObjectToView);
        view->resize(1280, 800);
        view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tillmora/qml/Overlay.qml")));
        QVERIFY2(view->status() == QQuickView::Ready, qPrintable(view->errors().value(0).toString()));
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        view->requestActivate();
        QTRY_COMPARE(presenter->pageCount(), 1);
    }

    void cleanup()
    {
        view.reset();
        presenter.reset();
        model.reset();
    }

    void draggingAnIconMovesItInTheModel()
    {
        // Off-centre on the target, so the icons make room instead of merging.
        dragAlong(cellCenter(0), cellCenter(5, 0.12, 0.5));
        const QStringList slots = model->slots();
        QCOMPARE(slots.at(5), QStringLiteral("A:/apps/App0.app"));
        QVERIFY(!slots.contains(QString()) || slots.indexOf(QStringLiteral("A:/apps/App0.app")) == 5);
        QCOMPARE(slots.count(QStringLiteral("A:/apps/App0.app")), 1);
        QVERIFY(slots.contains(QStringLiteral("A:/apps/App5.app"))); // the occupant made room, not lost
        QVERIFY(slots.at(0).isEmpty());
    }

    void holdingAnAppOverAnotherMakesAFolder()
    {
        dragAlong(cellCenter(1), cellCenter(2), 900);
        QCOMPARE(model->folders().size(), 1);
        const FolderItem folder = model->folders().first();
        QCOMPARE(QSet<QString>(folder.appPaths.cbegin(), folder.appPaths.cend()),
                 (QSet<QString>{QStringLiteral("/apps/App1.app"), QStringLiteral("/apps/App2.app")}));
        QCOMPARE(model->slots().at(2), folder.key()); // where the target stood
        QVERIFY(!model->slots().contains(QStringLiteral("A:/apps/App1.app")));
    }

    void typingSearchesAndEnterLaunchesTheFirstResult()
    {
        QSignalSpy hide(presenter.get(), &GridPresenter::hideRequested);
        type(QStringLiteral("cafe"));
        QTRY_COMPARE(presenter->searchText(), QStringLiteral("cafe"));
        QCOMPARE(presenter->searchResultsModel().entries().value(0).title, QStringLiteral("Café"));

        presenter->setSearchText(QString());
        type(QStringLiteral("term"));
        QTRY_COMPARE(presenter->searchResultsModel().entries().size(), 1);
        QTest::keyClick(view.get(), Qt::Key_Return);
        QTRY_COMPARE(launcher->openedApps.size(), 1);
        QCOMPARE(launcher->openedApps.first().path, QStringLiteral("/apps/GNOME Terminal.app"));
        QCOMPARE(hide.size(), 1);
    }

    void clickingAnAppLaunchesItAndEscapeHides()
    {
        QSignalSpy hide(presenter.get(), &GridPresenter::hideRequested);
        QTest::mouseClick(view.get(), Qt::LeftButton, {}, cellCenter(3).toPoint());
        QTRY_COMPARE(launcher->openedApps.size(), 1);
        QCOMPARE(launcher->openedApps.first().path, QStringLiteral("/apps/App3.app"));
        QCOMPARE(hide.size(), 1);

        launcher->failing.insert(QStringLiteral("/apps/App4.app"));
        QTest::mouseClick(view.get(), Qt::LeftButton, {}, cellCenter(4).toPoint());
        QTRY_COMPARE(launcher->openedApps.size(), 2);
        QCOMPARE(hide.size(), 1); // a failed launch keeps the overlay open

        QTest::keyClick(view.get(), Qt::Key_Escape);
        QCOMPARE(hide.size(), 2);
    }

    void keyboardSelectsAndOpensAFolder()
    {
        const auto folder = model->createFolder(QStringLiteral("Tools"), {QStringLiteral("/apps/App6.app"),
                                                                           QStringLiteral("/apps/App7.app")}, {}, 6);
        QVERIFY(folder);
        QTRY_COMPARE(presenter->keyAt(0, 6), folder->key());
        for (int i = 0; i < 7; ++i) // the first press selects cell 0, each further one the next cell
            QTest::keyClick(view.get(), Qt::Key_Right);
        QTest::keyClick(view.get(), Qt::Key_Return);
        QTRY_COMPARE(presenter->openFolderId(), Uuids::toText(folder->id));
        QCOMPARE(presenter->openFolderName(), QStringLiteral("Tools"));
        QCOMPARE(presenter->folderPagesModel().page(0)->cells().at(0).iconPath, QStringLiteral("/apps/App6.app"));
    }
};

QTEST_MAIN(OverlayTest)
#include "test_overlay.moc"
