// The overlay's QML driven like a user would, on the offscreen platform: a
// drag, a folder made by holding one app over another, a search and a launch,
// and the keyboard after menus and inside folders. Each test checks the
// layout model afterwards.
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
        const QPointF origin = pages->mapToScene(QPointF(0, 0));
        const double margin = view->rootObject()->property("gridMargin").toDouble();
        const int columns = presenter->pages()->columns();
        const double cellW = (pages->width() - 2 * margin) / columns;
        const double cellH = pages->height() / presenter->pages()->rows();
        return {origin.x() + margin + (local % columns + fx) * cellW, origin.y() + (local / columns + fy) * cellH};
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
        presenter->pages()->setDisplayProfile({QStringLiteral("test"), 48, 80});
        view = std::make_unique<QQuickView>();
        view->engine()->addImageProvider(QStringLiteral("icon"), new IconImageProvider([](const QString &) { return QIcon(); }));
        view->setInitialProperties({{QStringLiteral("presenter"), QVariant::fromValue(presenter.get())}});
        view->setResizeMode(QQuickView::SizeRootObjectToView);
        view->resize(1280, 800);
        view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tillmora/qml/Overlay.qml")));
        QStringList errors;
        for (const QQmlError &error : view->errors())
            errors.append(error.toString());
        QVERIFY2(view->status() == QQuickView::Ready, qPrintable(errors.join(u'\n')));
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        view->requestActivate();
        QTRY_COMPARE(presenter->pages()->count(), 1);
    }

    void cleanup()
    {
        view.reset();
        presenter.reset();
        model.reset();
    }

    // A notice (a save that failed) is shown in the overlay, then goes.
    void aNoticeIsShownAndGoes()
    {
        auto *notice = view->rootObject()->findChild<QQuickItem *>(QStringLiteral("notice"));
        QVERIFY(notice);
        QVERIFY(!notice->isVisible());
        presenter->showNotice(QStringLiteral("Your changes could not be saved: disk full."));
        QTRY_VERIFY(notice->isVisible());
        QCOMPARE(notice->property("text").toString(), presenter->notice());
        presenter->showNotice(QString());
        QTRY_VERIFY(!notice->isVisible());
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
        // Onto the middle of the icon (above the label) and held there.
        dragAlong(cellCenter(1), cellCenter(2, 0.5, 0.4), DragController::kMergeDelayMs + 300);
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
        QTRY_COMPARE(presenter->search()->text(), QStringLiteral("cafe"));
        QCOMPARE(presenter->search()->results()->entries().value(0).title, QStringLiteral("Café"));

        presenter->search()->clear();
        type(QStringLiteral("term"));
        QTRY_COMPARE(presenter->search()->results()->entries().size(), 1);
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
        QCOMPARE(hide.size(), 1); // a failed launch keeps the overlay open and says why
        QCOMPARE(presenter->notice(), QStringLiteral("App4 could not be opened: refused"));

        QTest::keyClick(view.get(), Qt::Key_Escape);
        QCOMPARE(hide.size(), 2);
    }

    void keyboardSelectsAndOpensAFolder()
    {
        const auto folder = model->createFolder(QStringLiteral("Tools"), {QStringLiteral("/apps/App6.app"),
                                                                           QStringLiteral("/apps/App7.app")}, {}, 6);
        QVERIFY(folder);
        QTRY_COMPARE(presenter->pages()->keyAt(0, 6), folder->key());
        for (int i = 0; i < 7; ++i) // the first press selects cell 0, each further one the next cell
            QTest::keyClick(view.get(), Qt::Key_Right);
        QTest::keyClick(view.get(), Qt::Key_Return);
        QTRY_COMPARE(presenter->folder()->folderId(), Uuids::toText(folder->id));
        QCOMPARE(presenter->folder()->name(), QStringLiteral("Tools"));
        QCOMPARE(presenter->folder()->pages()->page(0)->cells().at(0).iconPath, QStringLiteral("/apps/App6.app"));

        // Typing with the folder open searches the whole grid.
        type(QStringLiteral("caf"));
        QTRY_COMPARE(presenter->search()->text(), QStringLiteral("caf"));
        QVERIFY(!presenter->folder()->isOpen());
    }

    void theKeyboardComesBackAfterAMenu_data()
    {
        QTest::addColumn<bool>("byAction");
        QTest::newRow("closed with Esc") << false;
        QTest::newRow("closed by Hide") << true;
    }
    void theKeyboardComesBackAfterAMenu()
    {
        QFETCH(bool, byAction);
        QTest::mouseClick(view.get(), Qt::RightButton, {}, cellCenter(2).toPoint());
        auto *menu = view->rootObject()->findChild<QObject *>(QStringLiteral("itemMenu"));
        QVERIFY(menu);
        QTRY_VERIFY(menu->property("opened").toBool());
        if (byAction) {
            QQuickItem *hide = menuItem(menu, QStringLiteral("Hide"));
            QVERIFY(hide);
            QTest::qWait(100); // the menu settles where it opens
            QTest::mouseClick(view.get(), Qt::LeftButton, {},
                              hide->mapToScene(QPointF(hide->width() / 2, hide->height() / 2)).toPoint());
            QTRY_VERIFY(model->hiddenApps().contains(QStringLiteral("/apps/App2.app")));
        } else {
            QTest::keyClick(view.get(), Qt::Key_Escape);
        }
        QTRY_VERIFY(!menu->property("opened").toBool());
        // Typing reaches the search at once, and Esc then clears it.
        type(QStringLiteral("app1"));
        QTRY_COMPARE(presenter->search()->text(), QStringLiteral("app1"));
        QTest::keyClick(view.get(), Qt::Key_Escape);
        QTRY_COMPARE(presenter->search()->text(), QString());
    }

    static QQuickItem *menuItem(QObject *menu, const QString &text)
    {
        for (int i = 0; i < menu->property("count").toInt(); ++i) {
            QQuickItem *item = nullptr;
            QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem *, item), Q_ARG(int, i));
            if (item && item->property("text").toString() == text)
                return item;
        }
        return nullptr;
    }
    // What the right-click menu offers, by the entries a user can reach.
    void menuEntries(int cell, QStringList &entries)
    {
        auto *menu = view->rootObject()->findChild<QObject *>(QStringLiteral("itemMenu"));
        QTest::mouseClick(view.get(), Qt::RightButton, {}, cellCenter(cell).toPoint());
        QTRY_VERIFY_WITH_TIMEOUT(menu->property("opened").toBool(), 2000);
        entries.clear();
        for (int i = 0; i < menu->property("count").toInt(); ++i) {
            QQuickItem *item = nullptr;
            QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem *, item), Q_ARG(int, i));
            if (item && item->isVisible() && item->isEnabled() && item->height() > 0
                && !item->property("text").toString().isEmpty())
                entries.append(item->property("text").toString());
        }
        QTest::keyClick(view.get(), Qt::Key_Escape);
        QTRY_VERIFY(!menu->property("opened").toBool());
    }

    void theMenuListsOnlyWhatApplies()
    {
        launcher->actionsByPath.insert(QStringLiteral("/apps/App1.app"), {{QStringLiteral("new-window"), QStringLiteral("New Window")}});
        const auto folder = model->createFolder(QStringLiteral("Tools"), {QStringLiteral("/apps/App6.app"),
                                                                           QStringLiteral("/apps/App7.app")}, {}, 6);
        QVERIFY(folder);
        QTRY_COMPARE(presenter->pages()->keyAt(0, 6), folder->key());

        QStringList entries;
        menuEntries(1, entries);
        QCOMPARE(entries, (QStringList{"Open", "New Window", "Rename…", "Change icon…", "Hide", "Show hidden apps…"}));
        menuEntries(6, entries);
        QCOMPARE(entries, (QStringList{"Open", "Rename…", "Dissolve folder", "Show hidden apps…"}));

        // The entry's own action runs through the launcher, for that app.
        auto *menu = view->rootObject()->findChild<QObject *>(QStringLiteral("itemMenu"));
        QTest::mouseClick(view.get(), Qt::RightButton, {}, cellCenter(1).toPoint());
        QTRY_VERIFY(menu->property("opened").toBool());
        QQuickItem *newWindow = menuItem(menu, QStringLiteral("New Window"));
        QVERIFY(newWindow);
        QTest::qWait(100); // the menu settles where it opens
        QTest::mouseClick(view.get(), Qt::LeftButton, {},
                          newWindow->mapToScene(QPointF(newWindow->width() / 2, newWindow->height() / 2)).toPoint());
        QTRY_COMPARE(launcher->openedActions, QStringList{QStringLiteral("/apps/App1.app#new-window")});
    }

    void theMenuKeyOpensTheMenuAtTheSelectedIcon()
    {
        QTest::keyClick(view.get(), Qt::Key_Right); // selects cell 0
        QTest::keyClick(view.get(), Qt::Key_Right);
        QTest::keyClick(view.get(), Qt::Key_Menu);
        auto *menu = view->rootObject()->findChild<QObject *>(QStringLiteral("itemMenu"));
        QVERIFY(menu);
        QTRY_VERIFY(menu->property("opened").toBool());
        QCOMPARE(menu->property("key").toString(), QStringLiteral("A:/apps/App1.app"));
        const QPointF at(menu->property("x").toDouble(), menu->property("y").toDouble());
        QVERIFY((at - cellCenter(1)).manhattanLength() < 4);
    }
};

QTEST_MAIN(OverlayTest)
#include "test_overlay.moc"
