// Workflows made, changed and deleted through the model: a new one lands in
// the shown profile and in every other profile's stored list and grid; a
// deleted one leaves every grid and folder.
#include "LayoutTestSupport.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "layout/WorkflowsViewModel.h"
#include "organise/WorkflowsRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/OrderRepository.h"
#include "storage/UserDefaultsStore.h"

#include <QImage>

using namespace LayoutTest;

class WorkflowsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::unique_ptr<Fixture> fixture;
    QList<std::shared_ptr<UserDefaultsStoreType>> spaces;

    std::shared_ptr<UserDefaultsStoreType> space(const QString &name, const QStringList &slots)
    {
        auto store = std::make_shared<UserDefaultsStore>(QStringLiteral("com.tillmora.space.") + name, std::nullopt,
                                                         env->configDir());
        OrderRepositoryImpl(store).setSlots(slots);
        return store;
    }
    static WorkflowItem morning()
    {
        WorkflowItem w;
        w.id = QUuid::createUuid();
        w.name = QStringLiteral("Morning");
        w.emoji = QStringLiteral("☀");
        w.appPaths = {path("Mail")};
        return w;
    }
    OtherProfilesProvider provider()
    {
        return [this] { return OtherProfiles{spaces, long(spaces.size())}; };
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        fixture = std::make_unique<Fixture>();
        spaces.clear();
    }

    void aNewWorkflowLandsInEveryProfileByTheInsertRule()
    {
        LaunchpadViewModel &model = fixture->load({appKey("Mail"), "", appKey("Chat")}, {"Mail", "Chat"});
        spaces = {space("A", {appKey("Chat"), ""}), space("B", {appKey("Mail")})};
        WorkflowsViewModel workflows(model, env->path(QStringLiteral("icons")), provider());
        LogCapture log;
        const WorkflowItem w = morning();
        QVERIFY(workflows.save(w));

        QCOMPARE(fixture->fakes.workflows->stored, QList{w});
        QCOMPARE(model.slots().at(1), w.key()); // the first empty cell
        // Space A had an empty cell; B had none, so the key is appended.
        QCOMPARE(OrderRepositoryImpl(spaces.at(0)).slots(), (QStringList{appKey("Chat"), w.key()}));
        QCOMPARE(OrderRepositoryImpl(spaces.at(1)).slots(), (QStringList{appKey("Mail"), w.key()}));
        for (const auto &store : spaces)
            QCOMPARE(WorkflowsRepositoryImpl(store).load(), QList{w});
        QVERIFY(log.contains(QStringLiteral("Added workflow 'Morning' to standard and 2 Space(s) (isNew: true)")));

        // An edit reaches every copy and places nothing again.
        WorkflowItem renamed = w;
        renamed.name = QStringLiteral("Evening");
        log.clear();
        QVERIFY(workflows.save(renamed));
        QVERIFY(log.contains(QStringLiteral("Added workflow 'Evening' to standard and 2 Space(s) (isNew: false)")));
        QCOMPARE(model.workflows().first().name, QStringLiteral("Evening"));
        QCOMPARE(WorkflowsRepositoryImpl(spaces.at(1)).load().first().name, QStringLiteral("Evening"));
        QCOMPARE(OrderRepositoryImpl(spaces.at(1)).slots().count(w.key()), 1);
        QCOMPARE(model.slots().count(w.key()), 1);
    }

    void deletingRemovesItsKeysFromEveryGridAndFolder()
    {
        LaunchpadViewModel &model = fixture->load({appKey("Mail")}, {"Mail", "Chat"});
        spaces = {space("A", {})};
        WorkflowsViewModel workflows(model, env->path(QStringLiteral("icons")), provider());
        const WorkflowItem w = morning();
        QVERIFY(workflows.save(w));
        // It also sits in a folder, here and in the Space.
        FolderItem folder = folderOf(QStringLiteral("Work"), {"Chat"});
        QVERIFY(model.createFolder(folder.name, folder.appPaths));
        const QUuid folderId = model.folders().first().id;
        QVERIFY(model.setFolderSlots(folderId, {path("Chat"), w.key()}));
        FolderItem spaceFolder = folderOf(QStringLiteral("Work"), {"Chat"});
        spaceFolder.slots.append(w.key());
        FoldersRepositoryImpl(spaces.at(0)).saveAll({spaceFolder});

        QVERIFY(workflows.remove(w.id));
        QVERIFY(model.workflows().isEmpty());
        QVERIFY(!model.slots().contains(w.key()));
        QVERIFY(!model.folder(folderId)->slots.contains(w.key()));
        QVERIFY(WorkflowsRepositoryImpl(spaces.at(0)).load().isEmpty());
        QVERIFY(!OrderRepositoryImpl(spaces.at(0)).slots().contains(w.key()));
        QVERIFY(!FoldersRepositoryImpl(spaces.at(0)).loadAll().first().slots.contains(w.key()));
        QVERIFY(!workflows.remove(w.id));
    }

    void aWorkflowMovesIntoAFolderAndBackOut()
    {
        LaunchpadViewModel &model = fixture->load({appKey("Mail"), appKey("Chat")}, {"Mail", "Chat", "Notes"});
        WorkflowsViewModel workflows(model, env->path(QStringLiteral("icons")));
        const auto work = model.createFolder(QStringLiteral("Work"), {path("Notes")});
        const auto home = model.createFolder(QStringLiteral("Home"), {path("Chat")});
        QVERIFY(work && home);
        const WorkflowItem w = *workflows.save(morning());
        QVERIFY(model.addWorkflowToFolder(work->id, w.id));
        QVERIFY(!model.slots().contains(w.key()));
        QVERIFY(model.folder(work->id)->slots.contains(w.key()));
        // Into another folder: it leaves the first.
        QVERIFY(model.addWorkflowToFolder(home->id, w.id));
        QVERIFY(!model.folder(work->id)->slots.contains(w.key()));
        QVERIFY(model.folder(home->id)->slots.contains(w.key()));

        const auto placed = model.removeWorkflowFromFolder(home->id, w.id);
        QVERIFY(placed);
        QCOMPARE(model.slots().at(*placed), w.key());
        QVERIFY(!model.folder(home->id)->slots.contains(w.key()));
        QCOMPARE(model.removeWorkflowFromFolder(home->id, w.id).error(), LayoutRefusal::NotInFolder);
    }

    void anImageIconIsCopiedIntoTheDataFolder()
    {
        LaunchpadViewModel &model = fixture->load({}, {"Mail"});
        const QString icons = env->path(QStringLiteral("icons"));
        WorkflowsViewModel workflows(model, icons);
        const QString original = env->path(QStringLiteral("sun.png"));
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(Qt::yellow);
        QVERIFY(image.save(original));
        WorkflowItem w = morning();
        w.iconType = WorkflowIconType::image;
        w.imagePath = original;
        const auto saved = workflows.save(w);
        QVERIFY(saved);
        QVERIFY(saved->imagePath.startsWith(icons + u'/'));
        QVERIFY(saved->isPNG);
        QVERIFY(QFile::remove(original));
        QVERIFY(QImage(model.workflows().first().imagePath).size() == QSize(8, 8));
    }

    void theEditorSavesOnlyAWorkflowWithAName()
    {
        LaunchpadViewModel &model = fixture->load({}, {"Mail", "Chat"});
        WorkflowsViewModel workflows(model, env->path(QStringLiteral("icons")));
        workflows.beginCreate();
        WorkflowEditViewModel *edit = workflows.workflowToEdit();
        QVERIFY(edit && edit->isNew());
        edit->addApp(path("Mail"));
        edit->addApp(path("Chat"));
        edit->moveApp(1, 0);
        QVERIFY(!workflows.saveEdit());
        QVERIFY(!edit->problem().isEmpty());
        edit->setProperty("name", QStringLiteral("  Morning "));
        QVERIFY(workflows.saveEdit());
        QVERIFY(!workflows.workflowToEdit());
        QCOMPARE(model.workflows().first().name, QStringLiteral("Morning"));
        QCOMPARE(model.workflows().first().appPaths, (QStringList{path("Chat"), path("Mail")}));
    }
};

QTEST_GUILESS_MAIN(WorkflowsTest)
#include "tst_workflows.moc"
