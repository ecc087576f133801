#include "LayoutTestSupport.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "layout/SlotMove.h"
#include "foundation/Uuids.h"
#include "organise/WorkflowsRepository.h"
#include "storage/FileSystemStore.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/MigrationService.h"
#include "storage/RecentAppsService.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"
#include "storage/WallpaperResolver.h"

#include <QBuffer>
#include <QImage>

#include <functional>

using namespace LayoutTest;

// The log lines of the layout, the repositories and the migrations are behaviour: people and scripts follow them. Each
// row runs one scenario and names a line it must write, word for word. The
// behaviour tests check state; this table alone checks the wording.
class LogTextsTest : public QObject {
    Q_OBJECT

    // Widget ids are fresh per run: a scenario records the one its lines
    // name, and "{id}" in an expected line stands for it.
    inline static QString s_id;

    static QUuid fixedId(int n) { return QUuid(QStringLiteral("00000000-0000-0000-0000-%1").arg(n, 12, 10, QChar(u'0'))); }

    static void move(QStringList slots, const char *key, qsizetype to, int rows = 5)
    {
        SlotEdit edit(slots);
        SlotMove::moveKeyInSlots(edit, QString::fromUtf8(key), to, rows);
    }
    static QStringList filled(int count)
    {
        QStringList out;
        for (int i = 0; i < count; ++i)
            out.append(QStringLiteral("A:/x%1").arg(i));
        return out;
    }

    // The migrations over a fresh store, with whatever `prepare` stores first.
    static void migrate(const std::function<void(UserDefaultsStore &)> &prepare = {})
    {
        TempEnvironment env;
        const auto store = UserDefaultsStore::standard(env.configDir());
        if (prepare)
            prepare(*store);
        MigrationService(store, std::make_shared<FileSystemStore>(env.dataDir())).runAll();
        s_id = store->string(QLatin1String(SettingsKeys::kCustomBackgroundImagePath)).value_or(QString());
    }

    static const QHash<QString, std::function<void()>> &scenarios()
    {
        static const QHash<QString, std::function<void()>> all{
            // --- the drag-and-drop move, on bare slot lists
            {"same slot", [] { move(keys({"A:/p", "A:/k"}), "A:/k", 1); }},
            {"shift right",
             [] { move(keys({"A:/P", "A:/Q", "", "A:/R", "A:/a", "A:/b", "A:/c", "A:/d", "A:/K"}), "A:/K", 1); }},
            {"shift left",
             [] { move(keys({"", "A:/a", "A:/T", "", "A:/b", "A:/c", "A:/d", "A:/e", "A:/K"}), "A:/K", 2); }},
            {"shift carries the key",
             [] { move(keys({"", "A:/P", "A:/K", "A:/Q", "A:/a", "A:/b", "A:/c", "A:/d"}), "A:/K", 3); }},
            {"page relocation",
             [] {
                 QStringList slots = filled(24);
                 slots[2] = slots[20] = QString();
                 slots.append("A:/K");
                 move(slots, "A:/K", 9, 3);
             }},
            {"swap",
             [] {
                 QStringList slots = filled(8);
                 slots.append("A:/K");
                 move(slots, "A:/K", 3, 1);
             }},
            {"simple move", [] { move(keys({"A:/k", "A:", ""}), "A:/k", 1); }},
            {"duplicate", [] { move(keys({"A:/k", "A:/p", "A:/k"}), "A:/k", 2); }},
            {"not on grid", [] { move(keys({"", "A:/a", "A:/b", "", "A:/c"}), "WF:1", 1, 1); }},
            {"not on grid, empty target", [] { move(keys({""}), "WF:2", 0); }},
            {"not on grid, full page",
             [] {
                 QStringList slots = filled(8);
                 slots[0] = QString();
                 move(slots, "WF:1", 2, 1);
             }},
            {"widget cells",
             [] {
                 move(keys({"", "WB:w", "A:/K"}), "A:/K", 1);
                 move(keys({"W:w"}), "W:w", 3);
             }},

            // --- loading
            {"unreachable",
             [] {
                 Fixture fx;
                 const FolderItem lost = folderOf("Lost", {"B"});
                 fx.fakes.folders->stored = {lost};
                 fx.fakes.widgets->stored = {WidgetItem{QUuid::createUuid(), "clock", WidgetSize::size2x2, {}}};
                 fx.load({appKey("A")}, {"A", "B"});
             }},
            {"load",
             [] {
                 Fixture fx;
                 const FolderItem tools = folderOf("Tools", {"B"});
                 fx.fakes.folders->stored = {tools};
                 const QUuid gone = QUuid::createUuid();
                 fx.load({"A:", "F:", appKey("A"), appKey("A"), appKey("B"), tools.key(), SlotKey::widgetAnchor(gone),
                          SlotKey::widgetBlock(gone), SlotKey::workflow(gone)},
                         {"A", "B"});
                 fx.model->loadInitial();
                 fx.model->loadInitial();
                 waitForLoad(*fx.model);
                 waitForLoad(*fx.model);
             }},
            {"first layout", [] { Fixture().load({}, {"A"}); }},
            {"clean-up",
             [] {
                 Fixture fx;
                 const FolderItem lonely = folderOf("Lonely", {"Gone"});
                 fx.fakes.folders->stored = {lonely};
                 fx.fakes.hidden->stored = {path("Gone3"), path("H")};
                 fx.load({appKey("Gone4"), lonely.key(), appKey("A"), appKey("H")}, {"A", "H", "New"});
             }},
            {"moved app",
             [] {
                 Fixture fx;
                 fx.fakes.apps->setApps({AppItem{QUuid::createUuid(), path("Old"), "Old", "org.example.x"}});
                 auto &model = fx.load();
                 fx.fakes.apps->setApps({AppItem{QUuid::createUuid(), path("New"), "New", "org.example.x"}});
                 model.loadInitial();
                 waitForLoad(model);
             }},
            {"no catalogue",
             [] {
                 FakeLayoutServices fakes;
                 LayoutServices services = fakes.services();
                 services.appsRepo = nullptr;
                 LaunchpadViewModel model(services);
                 model.loadInitial();
                 waitForLoad(model);
             }},

            // --- placement, removal and hiding
            {"insert and remove",
             [] {
                 Fixture fx;
                 fx.fakes.hidden->stored = {path("C")};
                 auto &model = fx.load({appKey("A"), appKey("B")}, {"A", "B", "C"});
                 model.removeKey(appKey("A"));
                 model.removeKey(appKey("A"));
                 model.insertKey(appKey("A"));
                 model.insertKey(appKey("A"));
                 model.insertKey(SlotKey::workflow(fixedId(1)));
                 model.unhideApp(path("C")); // no empty cell left: appended
             }},
            {"hide",
             [] {
                 Fixture fx;
                 auto &model = fx.load({appKey("A"), "", appKey("B")}, {"A", "B"});
                 model.hideApp(path("B"));
                 model.moveKeyInSlots(appKey("B"), 0);
                 model.unhideApp(path("B"));
                 model.unhideApp(path("B"));
             }},
            {"hide in folder",
             [] {
                 Fixture fx;
                 auto &model = fx.load({appKey("A"), appKey("B")}, {"A", "B"});
                 model.createFolder("F", {path("A")});
                 model.hideApp(path("A"));
                 model.unhideApp(path("A"));
             }},

            // --- folders
            {"create folder",
             [] {
                 Fixture fx;
                 auto &model = fx.load(numberedKeys(12), numberedNames(12));
                 model.createFolder("Games", {path("3"), path("9")}, {}, 3);
                 model.createFolder("None", {});
             }},
            {"create folder, grid full",
             [] {
                 Fixture fx;
                 fx.load({appKey("A")}, {"A"}).createFolder("S", {}, {"/home/u/Documents"});
             }},
            {"folder edits",
             [] {
                 Fixture fx;
                 auto &model = fx.load({appKey("A"), appKey("B"), appKey("C"), appKey("D")}, {"A", "B", "C", "D"});
                 const auto f = model.createFolder("F", {path("B"), path("C")}, {}, 1);
                 model.removeAppFromFolder(f->id, path("C"));
                 model.removeAppFromFolder(f->id, path("B"));
                 const auto g = model.createFolder("G", {path("A")});
                 model.dissolveFolder(g->id);
                 FolderItem unknown;
                 unknown.id = fixedId(2);
                 model.updateFolder(unknown);
             }},

            // --- the grid view's side of a drag
            {"drag",
             [] {
                 Fixture fx;
                 auto &model = fx.load({appKey("A"), appKey("B")}, {"A", "B"});
                 model.setGridGeometry(8, 2);
                 model.addWidget("clock", WidgetSize::size2x2, 2);
                 model.beginDrag(appKey("A"), 0);
                 model.endDrag(appKey("A"), 0, 0, 10);
                 model.endDrag(appKey("A"), 0, 1, 4);
                 const auto box = model.createFolder("Box", {path("B")});
                 model.beginDrag(box->key(), 1);
                 model.endDrag(box->key(), 1, 0, 5);
                 model.endDrag(box->key(), 5, 0, 3);
             }},
            {"neighbour page",
             [] {
                 Fixture fx;
                 WorkflowItem morning;
                 morning.id = QUuid::createUuid();
                 morning.name = "Morning";
                 fx.fakes.workflows->stored = {morning};
                 auto &model = fx.load({appKey("A"), appKey("B"), morning.key()}, {"A", "B"});
                 model.setGridGeometry(8, 2);
                 model.beginDrag(appKey("A"), 0);
                 model.moveEntryToNeighbourPage(model.apps().first(), 0, 2, LaunchpadViewModel::NeighbourPage::Next);
                 model.endDrag(appKey("A"), 2, 0, 2, true);
                 model.moveEntryToNeighbourPage(morning, 0, 3, LaunchpadViewModel::NeighbourPage::Next);
                 const auto box = model.createFolder("Box", {path("B")});
                 model.beginDrag(box->key(), 1);
                 model.moveEntryToNeighbourPage(*box, 1, 1, LaunchpadViewModel::NeighbourPage::Previous);
                 model.endDrag(box->key(), 1, 0, 1, true);
                 const auto clock = model.addWidget("clock", WidgetSize::size2x2, 4);
                 model.moveEntryToNeighbourPage(*clock, 0, 0, LaunchpadViewModel::NeighbourPage::Next);
                 model.moveEntryToNeighbourPage(SystemFolderItem{}, 0, 0, LaunchpadViewModel::NeighbourPage::Next);
             }},

            // --- widgets
            {"widget placed and moved",
             [] {
                 Fixture fx;
                 auto &model = fx.load(numberedKeys(30), numberedNames(30));
                 model.setGridGeometry(8, 5);
                 const auto w = model.addWidget("clock", WidgetSize::size3x2, 5);
                 s_id = Uuids::toText(w->id);
                 model.moveWidget(w->id, 18);
                 model.moveWidget(fixedId(3), 3);
             }},
            {"widget refused",
             [] {
                 Fixture fx;
                 auto &model = fx.load();
                 model.setGridGeometry(8, 2);
                 s_id = Uuids::toText(model.addWidget("clock", WidgetSize::size2x2, 0)->id);
                 for (int i = 1; i < 4; ++i)
                     model.addWidget("clock", WidgetSize::size2x2, 2 * i);
                 model.addWidget("clock", WidgetSize::size2x2, 0);
             }},
            {"widget re-laid",
             [] {
                 Fixture fx;
                 auto &model = fx.load(numberedKeys(40), numberedNames(40));
                 model.setGridGeometry(8, 5);
                 s_id = Uuids::toText(model.addWidget("clock", WidgetSize::size2x2, 30)->id);
                 model.setGridColumns(7);
                 model.setGridGeometry(3, 2);
             }},

            // --- repositories
            {"folders repository",
             [] {
                 TempEnvironment env;
                 const auto store = UserDefaultsStore::standard(env.configDir());
                 FoldersRepositoryImpl folders(store);
                 folders.loadAll();
                 FolderItem f;
                 f.id = QUuid::createUuid();
                 f.name = "Work";
                 folders.saveAll({f});
                 folders.loadAll();
                 store->set(QByteArray(R"([{"id":"6F1A2B3C-0000-4000-8000-000000000001","appPaths":[]}])"),
                            QLatin1String(SettingsKeys::kFolders));
                 folders.loadAll();
             }},
            {"hidden apps",
             [] {
                 TempEnvironment env;
                 HiddenAppsServiceImpl hidden(UserDefaultsStore::standard(env.configDir()));
                 hidden.hide("/a/A.app");
                 hidden.hide("/a/B.app");
                 hidden.show("/a/B.app");
                 hidden.hiddenApps();
                 hidden.removeDeleted([](const QString &) { return false; });
             }},
            {"recent apps",
             [] {
                 TempEnvironment env;
                 RecentAppsServiceImpl recent(UserDefaultsStore::standard(env.configDir()));
                 recent.noteLaunched("/a/A.app");
                 recent.noteLaunched("/a/B.app");
                 recent.removeDeleted([](const QString &p) { return p == "/a/B.app"; });
             }},
            {"workflows repository",
             [] {
                 TempEnvironment env;
                 WorkflowsRepositoryImpl workflows(UserDefaultsStore::standard(env.configDir()));
                 workflows.load();
                 WorkflowItem morning;
                 morning.id = QUuid::createUuid();
                 morning.name = "Morning";
                 workflows.save({morning});
                 workflows.load();
             }},

            // --- migrations
            {"first migration", [] { migrate(); }},
            {"folders gain slots",
             [] {
                 migrate([](UserDefaultsStore &store) {
                     store.set(QByteArray(R"([{"id":"0B8F1C3E-8F1E-4C59-9D6B-2E8A4C1F7A10","name":"Old",)"
                                          R"("appPaths":["/a.app"]}])"),
                               QLatin1String(SettingsKeys::kFolders));
                 });
             }},
            {"background image",
             [] {
                 migrate([](UserDefaultsStore &store) {
                     QImage image(2, 2, QImage::Format_ARGB32);
                     image.fill(Qt::red);
                     QBuffer png;
                     png.open(QIODevice::WriteOnly);
                     image.save(&png, "PNG");
                     store.set(png.data(), QLatin1String(SettingsKeys::kLegacyCustomBackgroundImageData));
                 });
             }},
            {"missing wallpaper",
             [] {
                 WallpaperChoice choice;
                 choice.imagePath = QStringLiteral("/media/usb/Wallpapers/gone.jpg");
                 WallpaperResolver().resolve(choice, QString());
             }},
            {"dangling Space",
             [] {
                 migrate([](UserDefaultsStore &store) {
                     store.set(QStringLiteral("7D0E1A2B-3C4D-4E5F-8A9B-0C1D2E3F4A5B"),
                               QLatin1String(SettingsKeys::kSpacesActiveSpaceId));
                 });
             }},
        };
        return all;
    }

private Q_SLOTS:
    void lineIsWritten_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *scenario, const char *line) {
            QTest::addRow("%s: %s", scenario, line) << QString::fromUtf8(scenario) << QString::fromUtf8(line);
        };
        row("same slot", "🔄 [DRAG LOG] A:/k dropped on same slot 1, no movement needed");
        row("shift right", "🔄 [DRAG LOG] Moving A:/K from slot 8 to slot 1");
        row("shift right", "🔄 [DRAG LOG] Target slot 1 is occupied by A:/Q, attempting shift operation");
        row("shift right", "🔄 [DRAG LOG] Found empty slots in row, performing shift operation");
        row("shift right", "🔄 [DRAG LOG] Will shift right, empty slot found at 2");
        row("shift right", "🔄 [DRAG LOG] Executing right shift operation");
        row("shift right", "🔄 [DRAG LOG] Shifted A:/Q from slot 1 to slot 2");
        row("shift right", "🔄 [DRAG LOG] Placed A:/K at target slot 1");
        row("shift left", "🔄 [DRAG LOG] Will shift left, empty slot found at 0");
        row("shift left", "🔄 [DRAG LOG] Executing left shift operation");
        row("shift left", "🔄 [DRAG LOG] Shifted A:/a from slot 1 to slot 0");
        row("shift carries the key",
            "🔄 [DRAG LOG] Skipped clearing original slot 2 after shift because it no longer contains A:/K");
        row("shift carries the key", "🔄 [DRAG LOG] Cleared shifted copy of A:/K at slot 1");
        row("page relocation", "🔄 [DRAG LOG] No empty slots in row, searching for empty slots on page");
        row("page relocation", "🔄 [DRAG LOG] Found empty slot at 20, moving displaced item there");
        row("page relocation", "🔄 [DRAG LOG] Moved: A:/K to 9, A:/x9 to 20");
        row("swap", "🔄 [DRAG LOG] No empty slots found on page, performing simple swap");
        row("swap", "🔄 [DRAG LOG] Swapped: A:/K moved to 3, A:/x3 moved to 8");
        row("simple move", "🔄 [DRAG LOG] Simple move: A:/k moved from 0 to 1 (target was empty or malformed)");
        row("duplicate", "🔄 [DRAG LOG] Duplicate detected at target=2. Cleared original slot 0 and kept A:/k at target");
        row("not on grid", "🔄 [DRAG LOG] Item WF:1 not found in slots, adding to target position 1");
        row("not on grid", "🔄 [DRAG LOG] Target slot 1 was occupied by A:/a, need to relocate it");
        row("not on grid", "🔄 [DRAG LOG] Moved displaced item A:/a to empty slot 3");
        row("not on grid, empty target", "🔄 [DRAG LOG] Target slot 0 was empty, simple placement completed");
        row("not on grid, full page", "🔄 [DRAG LOG] No empty slots on page, moved A:/x2 to new page at slot 8");
        row("widget cells", "🔄 [DRAG LOG] Target slot 1 belongs to widget area, A:/K not moved");
        row("widget cells", "🔄 [DRAG LOG] W:w is a widget cell; widgets are moved with moveWidget");

        row("load", "🎯 [LaunchpadViewModel] loadInitial() called");
        row("load", "loadInitial already running; queued one pending reload");
        row("load", "Loaded 1 folders from repository");
        row("load", "Folder 0: Tools with 1 apps and 0 system folders");
        row("load", "Loaded 9 slots from repository");
        row("load", "🧹 [SANITIZE LOG] Removed 3 malformed/duplicate slot entries");
        row("load", "🧹 [SANITIZE LOG] Cleared 1 stale folder-member app keys from slots");
        row("load", "🧹 [SANITIZE LOG] Cleaned malformed slot keys on load; saving sanitized slots");
        row("load", "🧹 [SANITIZE LOG] Cleared 2 orphaned widget markers from slots");
        row("load", "🧹 [SANITIZE LOG] Cleared 1 orphaned workflow markers from slots");
        row("unreachable", "🧹 [SANITIZE LOG] Placed 2 folders and widgets that stood on no cell");
        row("load", "Fetched 2 apps");
        row("load", "Slots not empty, cleaning up and syncing with current apps");
        row("first layout", "Slots empty, initializing from apps");
        row("clean-up", "🗑️ [CLEANUP] Removing deleted app from slot 0: /Applications/Gone4.app");
        row("clean-up", "🗑️ [CLEANUP] Removing 1 deleted apps from folder 'Lonely'");
        row("clean-up", "🗑️ [CLEANUP] Folder 'Lonely' is now empty, marking for deletion");
        row("moved app",
            "🔀 [CLEANUP] org.example.x moved from /Applications/Old.app to /Applications/New.app; its place in the "
            "layout follows it");
        row("clean-up", "📝 [INSERT LOG] Placed A:/Applications/New.app in empty slot 0");
        row("clean-up", "👁️ [HIDE LOG] Hidden app /Applications/H.app was on the grid at slot 3, clearing it");
        row("no catalogue", "No application catalogue; the stored layout is kept without a scan");

        row("insert and remove", "🗑️ [REMOVE LOG] Removing A:/Applications/A.app from slot 0, slot becomes empty");
        row("insert and remove", "🗑️ [REMOVE LOG] Key A:/Applications/A.app not found in slots");
        row("insert and remove", "📝 [INSERT LOG] Placed A:/Applications/A.app in empty slot 0");
        row("insert and remove", "📝 [INSERT LOG] A:/Applications/A.app already in slot 0, not inserted again");
        row("insert and remove",
            "📝 [INSERT LOG] WF:00000000-0000-0000-0000-000000000001 not inserted: no workflow has that id");
        row("insert and remove", "📝 [INSERT LOG] Appended A:/Applications/C.app to end of slots at index 2");
        row("hide", "👁️ [HIDE LOG] Hiding app: /Applications/B.app");
        row("hide", "👁️ [HIDE LOG] App /Applications/B.app found at slot 2, freeing this slot");
        row("hide", "🔄 [DRAG LOG] A:/Applications/B.app not moved: it is hidden");
        row("hide", "👁️ [UNHIDE LOG] Unhiding app: /Applications/B.app");
        row("hide", "👁️ [UNHIDE LOG] App /Applications/B.app is not in hidden list, skipping");
        row("hide in folder",
            "👁️ [HIDE LOG] App /Applications/A.app not found in slots (may already be hidden or in folder)");
        row("hide in folder", "📝 [INSERT LOG] A:/Applications/A.app not inserted: it is inside a folder");

        row("create folder", "📁 [FOLDER LOG] Creating folder 'Games' with 2 apps and 0 system folders");
        row("create folder", "📁 [FOLDER LOG] Removing 2 apps from main grid slots to place in folder");
        row("create folder", "📁 [FOLDER LOG] App /Applications/9.app removed from slot 9 to be placed in folder");
        row("create folder", "📁 [FOLDER LOG] Placing folder 'Games' in empty slot 3");
        row("create folder", "📁 [FOLDER LOG] Folder 'None' has no members, not created");
        row("create folder, grid full", "📁 [FOLDER LOG] No empty slots found, appending folder 'S' to end of slots");
        row("folder edits", "📁 [FOLDER LOG] App A:/Applications/C.app returned to its original slot 2");
        row("folder edits", "🔧 Folder is empty in updateFolder, deleting...");
        row("folder edits", "📁 [FOLDER LOG] Dissolving folder 'G' with 1 apps");
        row("folder edits", "📁 [FOLDER LOG] Folder F:00000000-0000-0000-0000-000000000002 not found, nothing updated");

        row("drag", "🎯 [GRID DRAG LOG] Started dragging app: /Applications/A.app from page slot 0");
        row("drag", "🎯 [GRID DRAG LOG] Drop blocked: target absolute slot 10 belongs to widget area");
        row("drag", "🎯 [GRID DRAG LOG] Drag ended: /Applications/A.app from page slot 0 to local slot 4 (absolute slot 20)");
        row("drag", "🎯 [GRID DRAG LOG] Calling moveKeyInSlots for /Applications/A.app to absolute slot 20");
        row("drag", "🎯 [GRID DRAG LOG] Started dragging folder: 'Box' from page slot 1");
        row("drag", "🎯 [GRID DRAG LOG] Folder drag ended: 'Box' from page slot 1 to local slot 5 (absolute slot 5)");
        row("drag", "🎯 [GRID DRAG LOG] Calling moveKeyInSlots for folder Box to absolute slot 5");
        row("drag", "🎯 [GRID DRAG LOG] Drop blocked: folder target absolute slot 3 belongs to widget area");
        row("neighbour page", "🎯 [GRID DRAG LOG] Moving entry to next page, target slot: 18");
        row("neighbour page", "🎯 [GRID DRAG LOG] Moving entry to previous page, target slot: 1");
        row("neighbour page", "🎯 [GRAG LOG] Moving app /Applications/A.app to neighbor page at slot 18");
        row("neighbour page", "🎯 [GRID DRAG LOG] Item moved to other page, skip handleDragEnd");
        row("neighbour page", "🎯 [GRID DRAG LOG] Moving workflow 'Morning' to neighbor page at slot 19");
        row("neighbour page", "🎯 [GRID DRAG LOG] Moving folder 'Box' to neighbor page at slot 1");
        row("neighbour page", "🎯 [GRID DRAG LOG] Folder moved to other page, skip handleDragEndFolder");
        row("neighbour page", "🎯 [GRID DRAG LOG] Widget drag to neighbor page not implemented");
        row("neighbour page", "🎯 [GRID DRAG LOG] System folder drag to neighbor page not supported");

        row("widget placed and moved", "[Widgets] addWidget id={id} size=3x2 requested=5");
        row("widget placed and moved", "[Widgets] moveWidget: candidate=5 pageStart=0");
        row("widget placed and moved", "[Widgets] placed widget at 5 with blocked cells");
        row("widget placed and moved", "[Widgets] displaced count=6");
        row("widget placed and moved", "[Widgets] moveWidget id={id} size=3x2 requested=18");
        row("widget placed and moved", "[Widgets] moveWidget: widget not found 00000000-0000-0000-0000-000000000003");
        row("widget refused", "[Widgets] Rect cell idx=0 contains widget marker id={id} blocked=false");
        row("widget refused", "[Widgets] Rect cell idx=1 contains widget marker id={id} blocked=true");
        row("widget refused", "[Widgets] No suitable rect on page; place at next page start");
        row("widget re-laid", "[Widgets] re-laying widget {id}: its cells no longer form a rectangle inside one page");
        row("widget re-laid", "[Widgets] widget {id} of size 2x2 cannot fit a page of 3x2 cells");

        row("folders repository", "No folders data found in UserDefaults");
        row("folders repository", "Successfully saved 1 folders to UserDefaults");
        row("folders repository", "Successfully decoded 1 folders from UserDefaults");
        row("folders repository", "Failed to decode folders from UserDefaults: element 0: key \"name\": missing");
        row("missing wallpaper",
            "Wallpaper file is missing, showing the desktop's wallpaper instead: /media/usb/Wallpapers/gone.jpg");
        row("hidden apps", "Hidden app: /a/A.app");
        row("hidden apps", "Showed app: /a/B.app");
        row("hidden apps", "Retrieved 1 hidden apps");
        row("hidden apps", "🗑️ [CLEANUP] Removed 1 deleted apps from hidden list");
        row("recent apps", "🗑️ [CLEANUP] Removed 1 deleted apps from recently opened list");
        row("workflows repository", "No workflows data found");
        row("workflows repository", "Saved 1 workflows");
        row("workflows repository", "Loaded 1 workflows");

        row("first migration", "Migrated: set liquidGlassMaterialStyle to 'tinted' for existing user");
        row("first migration", "Migrated: enabled Pinch to invoke once for all users");
        row("first migration", "Migrated: set Sun Background defaults for existing user");
        row("folders gain slots", "Migrating folders to slots format");
        row("folders gain slots", "Successfully migrated 1 folders to slots format");
        row("background image", "Migrated background image data to file: {id}");
        row("dangling Space", "Spaces: cleared activeSpaceId (no spaces list)");
    }

    void lineIsWritten()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, line);
        const auto run = scenarios().value(scenario);
        QVERIFY2(run, qPrintable("no scenario " + scenario));
        LogCapture log;
        s_id.clear();
        run();
        line.replace(QLatin1String("{id}"), s_id);
        QVERIFY2(log.contains(line), qPrintable(log.messages().join(u'\n')));
    }
};

QTEST_GUILESS_MAIN(LogTextsTest)
#include "tst_log_texts.moc"
