// The real launcher on a private X server, driven with real input (XTest
// through xdotool) under openbox and without a window manager. Every case
// is a way arranging used to break; each checks what was stored (through
// `tillmora layout --json`, answered by the running launcher) and what is
// on screen (screenshots of the root window).
//
// TILLMORA_TEST_SCREENSHOTS=DIR keeps the screenshots taken along the way.
#include "common/TempEnvironment.h"
#include "common/XvfbServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTest>

namespace {

QString appPath(const QString &apps, const QString &id)
{
    return apps + QStringLiteral("/demo.%1.desktop").arg(id);
}

// One launcher on one X server with its own settings and demo apps.
class Session {
public:
    Session(bool windowManager, int appCount, QSize screen = {1280, 800})
        : m_x(screen)
        , m_screen(screen)
    {
        if (!m_x.isRunning())
            return;
        QProcess demo;
        demo.start(QStringLiteral(TILLMORA_SOURCE_DIR "/scripts/demo-apps.sh"),
                   {m_env.path(QStringLiteral("share")), QString::number(appCount)});
        if (!demo.waitForFinished(30000) || demo.exitCode() != 0)
            return;
        m_apps = m_env.path(QStringLiteral("share/applications"));

        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_x.display()));
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_environment.insert(QStringLiteral("XDG_DATA_DIRS"), m_env.path(QStringLiteral("share")) + QStringLiteral(":/usr/share"));
        m_environment.insert(QStringLiteral("TILLMORA_APP_DIRS"), m_env.path(QStringLiteral("no-bundles")));
        m_environment.insert(QStringLiteral("HOME"), m_env.root());
        m_environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("com.tillmora.Tillmora.*=true")); // log() reads it

        if (windowManager) {
            m_wm.setProcessEnvironment(m_environment);
            m_wm.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
            if (!m_wm.waitForStarted(5000))
                return;
            QTest::qWait(500);
        }
        m_launcher.setProcessEnvironment(m_environment);
        m_launcher.setStandardOutputFile(m_env.path(QStringLiteral("launcher.log")));
        m_launcher.setProcessChannelMode(QProcess::MergedChannels);
        m_launcher.start(QStringLiteral(TILLMORA_BINARY), {});
        if (!m_launcher.waitForStarted(5000))
            return;
        m_ready = QTest::qWaitFor([this] { return overlayVisible(); }, 20000);
        // The catalogue scan has finished when the stored layout names the apps.
        m_ready = m_ready && QTest::qWaitFor([this, appCount] {
            return layout().value(QStringLiteral("slots")).toArray().size() >= std::max(45, appCount);
        }, 20000);
        QTest::qWait(300);
    }

    ~Session()
    {
        m_launcher.terminate();
        if (!m_launcher.waitForFinished(10000))
            m_launcher.kill();
        m_wm.kill();
        m_wm.waitForFinished(5000);
    }

    bool ready() const { return m_ready; }
    QString apps() const { return m_apps; }
    QString app(const QString &id) const { return appPath(m_apps, id); }

    // Runs the command line against the running launcher.
    QByteArray tillmora(const QStringList &arguments) const
    {
        QProcess p;
        p.setProcessEnvironment(m_environment);
        p.start(QStringLiteral(TILLMORA_BINARY), arguments);
        p.waitForFinished(20000);
        return p.readAllStandardOutput();
    }
    QJsonObject layout() const
    {
        return QJsonDocument::fromJson(tillmora({QStringLiteral("layout"), QStringLiteral("--json")})).object();
    }
    QStringList slots() const
    {
        QStringList out;
        for (const QJsonValue &v : layout().value(QStringLiteral("slots")).toArray())
            out.append(v.toString());
        return out;
    }
    // The cells without empty ones at the end beyond size (a cancelled
    // drag may leave some).
    QStringList slotsTrimmedTo(qsizetype size) const
    {
        QStringList out = slots();
        while (out.size() > size && out.last().isEmpty())
            out.removeLast();
        return out;
    }
    QJsonObject folder(const QString &id) const
    {
        for (const QJsonValue &v : layout().value(QStringLiteral("folders")).toArray())
            if (v.toObject().value(QStringLiteral("id")).toString().compare(id, Qt::CaseInsensitive) == 0)
                return v.toObject();
        return {};
    }

    bool xdo(const QStringList &arguments) const { return m_x.xdotool(arguments); }
    // Keys separated by spaces are pressed one after the other.
    bool key(const QString &keys) const
    {
        return xdo(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("60")}
                   + keys.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    bool moveTo(QPointF p) const
    {
        return xdo({QStringLiteral("mousemove"), QString::number(qRound(p.x())), QString::number(qRound(p.y()))});
    }
    bool overlayVisible() const
    {
        QProcess search;
        search.setProcessEnvironment(m_environment);
        search.start(QStringLiteral("xdotool"), {"search", "--onlyvisible", "--name", "^Tillmora$"});
        search.waitForFinished(10000);
        return search.exitCode() == 0 && !search.readAllStandardOutput().trimmed().isEmpty();
    }

    // A press, a path walked in small steps, an optional rest, a release.
    void drag(QPointF from, const QList<QPointF> &path, int restMs = 600) const
    {
        moveTo(from);
        xdo({"mousedown", "1"});
        QTest::qWait(80);
        QPointF at = from;
        for (const QPointF &to : path) {
            for (int step = 1; step <= 6; ++step) {
                moveTo(at + (to - at) * step / 6.0);
                QTest::qWait(25);
            }
            at = to;
        }
        moveTo(at + QPointF(1, 1)); // a last small move, as a hand never rests still
        QTest::qWait(restMs);
    }
    void drop() const
    {
        xdo({"mouseup", "1"});
        QTest::qWait(400);
    }

    QImage screenshot(const QString &name) const
    {
        const QString file = m_env.path(name + QStringLiteral(".png"));
        QProcess import;
        import.setProcessEnvironment(m_environment);
        import.start(QStringLiteral("import"), {"-window", "root", file});
        import.waitForFinished(20000);
        const QString keep = qEnvironmentVariable("TILLMORA_TEST_SCREENSHOTS");
        if (!keep.isEmpty()) {
            QDir().mkpath(keep);
            QFile::remove(keep + QStringLiteral("/") + name + QStringLiteral(".png"));
            QFile::copy(file, keep + QStringLiteral("/") + name + QStringLiteral(".png"));
        }
        return QImage(file);
    }

    // Where the overlay draws its cells on this screen (as Overlay.qml lays
    // them out: margins of 6 % at the sides, the search field above, the
    // page dots below; 8 x 5 cells).
    QRectF gridArea() const
    {
        const qreal margin = std::max(40.0, m_screen.width() * 0.06);
        const qreal top = std::max(24.0, m_screen.height() * 0.04) + 40 + 24;
        return {margin, top, m_screen.width() - 2 * margin, m_screen.height() - top - 70};
    }
    QRectF cellRect(int cell) const
    {
        const QRectF a = gridArea();
        const qreal w = a.width() / 8, h = a.height() / 5;
        return {a.left() + (cell % 8) * w, a.top() + (cell / 8) * h, w, h};
    }
    QPointF cell(int cell) const { return cellRect(cell).center(); }
    // Off the icon's centre, so the icons make room instead of gathering.
    QPointF gap(int cell) const { return cellRect(cell).center() + QPointF(-cellRect(cell).width() * 0.35, 0); }
    // A cell of an open folder (as FolderPanel.qml lays out its default 4 x 5
    // grid: a box centred on the screen, its name above the cells).
    // The open panel of a folder of 4 x 5 holding `members` apps: as tall as
    // the rows they fill.
    QPointF folderCell(int cell, int members) const
    {
        const qreal size = std::min(m_screen.width() * 0.8 / 5, m_screen.height() * 0.7 / 5);
        const qreal titleHeight = 31;
        const int rows = std::clamp((members + 4) / 5, 1, 4);
        const qreal boxHeight = size * rows + titleHeight + 72;
        const qreal left = (m_screen.width() - (size * 5 + 48)) / 2 + 24;
        const qreal top = (m_screen.height() - boxHeight) / 2 + 20 + titleHeight + 16;
        return {left + (cell % 5 + 0.5) * size, top + (cell / 5 + 0.5) * size};
    }
    QPointF rightEdge() const { return {m_screen.width() - 12.0, cell(12).y()}; }
    QSize screen() const { return m_screen; }
    QString log() const
    {
        QFile f(m_env.path(QStringLiteral("launcher.log")));
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }

private:
    XvfbServer m_x;
    QSize m_screen;
    TempEnvironment m_env;
    QProcessEnvironment m_environment;
    QProcess m_wm;
    QProcess m_launcher;
    QString m_apps;
    bool m_ready = false;
};

// Whether an icon is drawn in the upper middle of a cell: enough pixels
// there stand out from the dark backdrop.
bool iconDrawn(const QImage &shot, const QRectF &cell)
{
    const QRect box = QRectF(cell.center().x() - cell.width() * 0.2, cell.top() + cell.height() * 0.15,
                             cell.width() * 0.4, cell.height() * 0.45).toRect();
    int bright = 0, total = 0;
    for (int y = box.top(); y <= box.bottom(); y += 2)
        for (int x = box.left(); x <= box.right(); x += 2) {
            const QColor c = shot.pixelColor(x, y);
            ++total;
            if (std::max({c.red(), c.green(), c.blue()}) > 90)
                ++bright;
        }
    return total > 0 && bright * 20 > total; // more than 5 %
}

// How alike two screenshots are inside a rectangle: the mean difference of
// their channels, 0 (same) to 255.
double difference(const QImage &a, const QImage &b, const QRectF &area)
{
    const QRect r = area.toRect();
    double sum = 0;
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); y += 2)
        for (int x = r.left(); x <= r.right(); x += 2) {
            const QColor p = a.pixelColor(x, y), q = b.pixelColor(x, y);
            sum += std::abs(p.red() - q.red()) + std::abs(p.green() - q.green()) + std::abs(p.blue() - q.blue());
            n += 3;
        }
    return n ? sum / n : 0;
}

#define REQUIRE_SESSION(s)                                                                                             \
    if (!XvfbServer::haveTools() || QStandardPaths::findExecutable(QStringLiteral("import")).isEmpty())               \
        QSKIP("Xvfb, xdotool and ImageMagick are needed");                                                             \
    QVERIFY2((s).ready(), "the launcher did not come up")

}

class RealInputTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void edgeDragHeldLongThenReleasedInTheMiddle_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::newRow("openbox") << true;
        QTest::newRow("no window manager") << false;
    }
    void edgeDragHeldLongThenReleasedInTheMiddle()
    {
        QFETCH(bool, windowManager);
        Session s(windowManager, 52); // 40 on the first page, 12 on the second
        REQUIRE_SESSION(s);
        const QString dragged = s.slots().at(0);
        const int pages = (s.slots().size() + 39) / 40;
        QCOMPARE(pages, 2);

        // To the right edge, held for three seconds, back into the page.
        s.drag(s.cell(0), {s.cell(12), s.rightEdge()}, 3000);
        s.drag(s.rightEdge(), {s.gap(19)}, 800);
        s.screenshot(QStringLiteral("edge-drag-before-release"));
        s.drop();
        QStringList slots = s.slots();
        QCOMPARE(slots.indexOf(dragged), 40 + 19); // where it was released, on the second page
        QCOMPARE(slots.count(dragged), 1);
        QCOMPARE((slots.size() + 39) / 40, 2); // no page was added

        // Nothing turns or grows afterwards, after Esc, or while hidden.
        const qint64 revision = s.layout().value(QStringLiteral("layoutRevision")).toInteger();
        QTest::qWait(2000);
        s.key(QStringLiteral("Escape"));
        QTest::qWait(1500);
        QCOMPARE(s.layout().value(QStringLiteral("layoutRevision")).toInteger(), revision);

        // The pager still turns: the first page comes back with its icons.
        s.tillmora({QStringLiteral("show")});
        QTRY_VERIFY_WITH_TIMEOUT(s.overlayVisible(), 5000);
        const QImage second = s.screenshot(QStringLiteral("edge-drag-after"));
        s.key(QStringLiteral("Prior"));
        QTest::qWait(700);
        const QImage first = s.screenshot(QStringLiteral("edge-drag-first-page"));
        QVERIFY(difference(first, second, s.gridArea()) > 5);
        QVERIFY(iconDrawn(first, s.cellRect(1)));
    }

    // From the last page to the right edge: a new page slides in at once (it
    // did not: the dots moved, the content stayed). Esc then puts the icon
    // back and takes the new page away.
    void aPageMadeByADragSlidesInAndEscUndoesIt()
    {
        Session s(true, 52); // 40 on the first page, 12 on the second
        REQUIRE_SESSION(s);
        const QStringList before = s.slots();
        s.key(QStringLiteral("Next"));
        QTest::qWait(600);
        const QImage second = s.screenshot(QStringLiteral("new-page-second"));
        QVERIFY(iconDrawn(second, s.cellRect(1)));
        s.drag(s.cell(0), {s.cell(3), s.rightEdge()}, 1800);
        s.moveTo(s.gap(19));
        QTest::qWait(800);
        const QImage third = s.screenshot(QStringLiteral("new-page-third"));
        // The second page's icons are gone from view: the new page shows.
        QVERIFY(!iconDrawn(third, s.cellRect(1)));
        QVERIFY(!iconDrawn(third, s.cellRect(5)));
        s.key(QStringLiteral("Escape"));
        s.drop();
        // The same cells as before (the list may end in empty cells now).
        QCOMPARE(s.slotsTrimmedTo(before.size()), before);
        QVERIFY(s.overlayVisible());
        QVERIFY(iconDrawn(s.screenshot(QStringLiteral("new-page-undone")), s.cellRect(0)));
    }

    void dragOutOfAFolderInEveryDirection_data()
    {
        QTest::addColumn<QString>("direction");
        QTest::addColumn<int>("target");
        QTest::newRow("left") << "left" << 16;
        QTest::newRow("right") << "right" << 23;
        QTest::newRow("up") << "up" << 3;
        QTest::newRow("down") << "down" << 36;
    }
    void dragOutOfAFolderInEveryDirection()
    {
        QFETCH(QString, direction);
        QFETCH(int, target);
        Session s(true, 0);
        REQUIRE_SESSION(s);
        const QString id = QString::fromUtf8(
            s.tillmora({"folder", "create", "Work", s.app("calculator"), s.app("calendar"), s.app("camera"), "--slot", "0"})
                .trimmed());
        QVERIFY(!id.isEmpty());
        QTRY_VERIFY(s.slots().contains(QStringLiteral("F:") + id));
        const int folderCell = int(s.slots().indexOf(QStringLiteral("F:") + id));
        s.moveTo(s.cell(folderCell));
        s.xdo({"click", "1"});
        QTest::qWait(600);
        const QImage open = s.screenshot(QStringLiteral("folder-open-") + direction);

        // The folder's first member, at the top left of the panel's grid.
        const QJsonArray members = s.folder(id).value(QStringLiteral("appPaths")).toArray();
        QVERIFY(!members.isEmpty());
        const QString member = members.first().toString();
        const QPointF first = s.folderCell(0, int(members.size()));
        QVERIFY(iconDrawn(open, QRectF(first - QPointF(40, 40), QSizeF(80, 80))));

        const QPointF away = direction == "left"    ? QPointF(s.cell(16).x(), first.y())
                             : direction == "right" ? QPointF(s.cell(23).x(), first.y())
                             : direction == "up"    ? QPointF(first.x(), s.gridArea().top() - 20)
                                                    : QPointF(first.x(), s.screen().height() - 30);
        s.drag(first, {away, s.gap(target)}, 700);
        s.screenshot(QStringLiteral("folder-drag-out-") + direction);
        s.drop();
        const QImage after = s.screenshot(QStringLiteral("folder-drag-out-after-") + direction);

        QVERIFY(!s.folder(id).value(QStringLiteral("appPaths")).toArray().contains(QJsonValue(member)));
        QCOMPARE(s.slots().indexOf(QStringLiteral("A:") + member), target);
        QVERIFY(iconDrawn(after, s.cellRect(target)));
        // Nothing is stuck on screen: Esc reaches the overlay and hides it.
        s.key(QStringLiteral("Escape"));
        QTRY_VERIFY_WITH_TIMEOUT(!s.overlayVisible(), 5000);
    }

    void theKeyboardWorksAfterAMenu_data()
    {
        QTest::addColumn<bool>("byAction");
        QTest::newRow("menu closed with Esc") << false;
        QTest::newRow("menu closed by Hide") << true;
    }
    void theKeyboardWorksAfterAMenu()
    {
        QFETCH(bool, byAction);
        Session s(true, 0);
        REQUIRE_SESSION(s);
        const QString hidden = s.slots().at(2);
        if (byAction) {
            // All by keyboard, so no hovering pointer picks a menu entry:
            // select the third icon, open its menu with the Menu key, Hide.
            s.moveTo(QPointF(5, 5));
            s.key(QStringLiteral("Right Right Right"));
            s.key(QStringLiteral("Menu"));
            QTest::qWait(500);
            s.screenshot(QStringLiteral("menu-open-by-key"));
            s.key(QStringLiteral("Down Down Down Down")); // Open, Rename…, Change icon…, Hide
            s.key(QStringLiteral("Return"));
            QTRY_VERIFY(s.layout().value(QStringLiteral("hiddenApps")).toArray().contains(
                QJsonValue(QString(hidden).remove(QStringLiteral("A:")))));
        } else {
            s.moveTo(s.cell(2));
            s.xdo({"click", "3"});
            QTest::qWait(500);
            s.screenshot(QStringLiteral("menu-open"));
            s.key(QStringLiteral("Escape"));
        }
        QTest::qWait(300);
        QVERIFY(s.overlayVisible());
        // Typing searches and Enter opens the first result, which hides the overlay.
        s.xdo({"type", "--delay", "80", "calcul"});
        QTest::qWait(400);
        s.screenshot(QStringLiteral("menu-then-search"));
        s.key(QStringLiteral("Return"));
        QTRY_VERIFY_WITH_TIMEOUT(!s.overlayVisible(), 5000);
    }

    void thePreviewShowsWhereTheDropLands()
    {
        Session s(true, 0);
        REQUIRE_SESSION(s);
        const QStringList before = s.slots();
        s.drag(s.cell(0), {s.gap(13)}, 900);
        const QImage preview = s.screenshot(QStringLiteral("preview"));
        s.drop();
        s.moveTo(QPointF(5, 5)); // the pointer out of the way
        QTest::qWait(500);
        const QImage dropped = s.screenshot(QStringLiteral("dropped"));
        QVERIFY(s.slots() != before);
        // Every cell away from the pointer shows the same before and after
        // the release (the dragged icon's ghost and the icon under the
        // pointer differ only in transparency).
        const QRectF pointer(s.gap(13) - QPointF(120, 120), QSizeF(240, 240));
        int compared = 0;
        for (int cell = 0; cell < 40; ++cell) {
            if (s.cellRect(cell).intersects(pointer))
                continue;
            QVERIFY2(difference(preview, dropped, s.cellRect(cell)) < 6, qPrintable(QStringLiteral("cell %1").arg(cell)));
            ++compared;
        }
        QVERIFY(compared > 30);
        // And the icons did make room: the preview differs from the grid before the drag.
        QCOMPARE(s.slots().indexOf(before.at(0)), 13);
    }

    // A theme package opened from the file manager while an icon is held:
    // its question comes up over the grid, and the held icon goes back
    // where it was instead of landing behind the sheet at the release.
    void aPackageOpenedMidDragPutsTheIconBack()
    {
        Session s(false, 0);
        REQUIRE_SESSION(s);
        const QString package = QDir(QDir::tempPath()).filePath(QStringLiteral("tillmora-real-input-%1.tillmoratheme")
                                                                    .arg(QCoreApplication::applicationPid()));
        const auto removePackage = qScopeGuard([&] { QFile::remove(package); });
        s.tillmora({"space", "create", "Shared"});
        s.tillmora({"theme", "export", "Shared", package});
        QVERIFY(QFile::exists(package));
        const QStringList before = s.slots();
        s.drag(s.cell(0), {s.gap(13)}, 600);
        s.tillmora({package});
        QTest::qWait(600);
        s.screenshot(QStringLiteral("package-mid-drag"));
        s.key(QStringLiteral("Escape")); // "Later": the Space stays, the overlay too
        s.drop();
        QCOMPARE(s.slotsTrimmedTo(before.size()), before);
        QVERIFY(s.overlayVisible());
        QCOMPARE(s.tillmora({"space", "list"}).count('\n'), 3); // standard, Shared and the imported one
    }

    void twelvePagesPagedThroughTwiceKeepEveryIcon()
    {
        Session s(true, 452);
        REQUIRE_SESSION(s);
        const QStringList slots = s.slots();
        const int pages = int((slots.size() + 39) / 40);
        QCOMPARE(pages, 12);
        for (int round = 0; round < 2; ++round) {
            for (int page = 0; page < pages; ++page) {
                // Icons are decoded off the main thread, so a busy machine may
                // draw one late; the fault was icons that never came back.
                int blank = -1;
                QElapsedTimer waited;
                waited.start();
                do {
                    QTest::qWait(blank < 0 ? 450 : 250);
                    const QImage shot = s.screenshot(QStringLiteral("page-%1-%2").arg(round).arg(page));
                    blank = -1;
                    for (int cell = 0; cell < 40 && blank < 0; ++cell)
                        if (!slots.value(page * 40 + cell).isEmpty() && !iconDrawn(shot, s.cellRect(cell)))
                            blank = cell;
                } while (blank >= 0 && waited.elapsed() < 5000);
                QVERIFY2(blank < 0, qPrintable(QStringLiteral("round %1 page %2 cell %3 is blank").arg(round).arg(page).arg(blank)));
                s.key(page + 1 < pages ? QStringLiteral("Next") : QStringLiteral("Home"));
            }
        }
    }

    void theWheelTurnsPagesOverTheSearchFieldAndTheDots()
    {
        Session s(true, 100); // three pages
        REQUIRE_SESSION(s);
        const QImage first = s.screenshot(QStringLiteral("wheel-first"));
        // Over the search field: wheel down = next page.
        s.moveTo(QPointF(s.screen().width() / 2.0, std::max(24.0, s.screen().height() * 0.04) + 20));
        s.xdo({"click", "5"});
        QTest::qWait(600);
        const QImage second = s.screenshot(QStringLiteral("wheel-second"));
        QVERIFY(difference(first, second, s.gridArea()) > 5);
        // Over the dots, sideways right after a turn: another page at once.
        s.moveTo(QPointF(s.screen().width() / 2.0, s.screen().height() - 37));
        s.xdo({"click", "7"});
        QTest::qWait(600);
        const QImage third = s.screenshot(QStringLiteral("wheel-third"));
        QVERIFY(difference(second, third, s.gridArea()) > 5);
        s.xdo({"click", "6"});
        QTest::qWait(300);
        s.xdo({"click", "4"});
        QTest::qWait(600);
        QVERIFY(difference(first, s.screenshot(QStringLiteral("wheel-back")), s.gridArea()) < 3);
    }

    void typingWithAFolderOpenSearches()
    {
        Session s(true, 0);
        REQUIRE_SESSION(s);
        const QString id = QString::fromUtf8(
            s.tillmora({"folder", "create", "Tools", s.app("dictionary"), s.app("disks"), "--slot", "0"}).trimmed());
        QTRY_VERIFY(s.slots().contains(QStringLiteral("F:") + id));
        s.moveTo(s.cell(int(s.slots().indexOf(QStringLiteral("F:") + id))));
        s.xdo({"click", "1"});
        QTest::qWait(600);
        s.xdo({"type", "--delay", "80", "calcul"});
        QTest::qWait(400);
        s.screenshot(QStringLiteral("folder-typing"));
        s.key(QStringLiteral("Return"));
        QTRY_VERIFY_WITH_TIMEOUT(!s.overlayVisible(), 5000);
    }
};

QTEST_GUILESS_MAIN(RealInputTest)
#include "test_real_input.moc"
