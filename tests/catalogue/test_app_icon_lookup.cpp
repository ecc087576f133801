#include "CatalogueFixtures.h"
#include "catalogue/AppIconLookup.h"
#include "common/TempEnvironment.h"
#include "platform/linux/DesktopEntrySource.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

using namespace CatalogueFixtures;

namespace {

void writeImage(const QString &path, Qt::GlobalColor color)
{
    QDir().mkpath(QFileInfo(path).path());
    QImage image(48, 48, QImage::Format_ARGB32);
    image.fill(color);
    QVERIFY(image.save(path, "PNG"));
}

QColor colorOf(const QIcon &icon)
{
    return icon.pixmap(48, 48).toImage().pixelColor(24, 24);
}

}

// Qt keeps one set of icon search paths per process, set on first use; so
// does this test's environment.
class TestAppIconLookup : public QObject {
    Q_OBJECT

private:
    TempEnvironment m_env;
    std::unique_ptr<AppIconLookupImpl> m_lookup;
    QString applications() const { return m_env.path("share/applications"); }
    QString entryWithIcon(const QString &fileName, const QString &icon)
    {
        return makeDesktopEntry(applications(), fileName, "Type=Application\nName=X\nExec=true\nIcon=" + icon);
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_DATA_DIRS", m_env.path("share").toLocal8Bit());
        writeFile(m_env.path("share/icons/hicolor/index.theme"),
                  "[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps\n\n"
                  "[48x48/apps]\nSize=48\nContext=Applications\nType=Threshold\n");
        writeImage(m_env.path("share/icons/hicolor/48x48/apps/red-app.png"), Qt::red);
        writeImage(m_env.path("share/pixmaps/blue-app.png"), Qt::blue);
        writeImage(m_env.path("images/green.png"), Qt::green);
        m_lookup = std::make_unique<AppIconLookupImpl>(
            QList<std::shared_ptr<AppSource>>{std::make_shared<DesktopEntrySource>(QStringList())});
    }

    // The XDG_DATA_DIRS folders are proven by the lookups below.
    void searchPathsComeFromTheXdgFolders()
    {
        QCOMPARE(AppIconLookupImpl::themeSearchPaths().first(), QDir::homePath() + "/.icons");
        QVERIFY(AppIconLookupImpl::themeSearchPaths().contains(m_env.path("data/icons")));
    }

    void resolvesDesktopEntryIcons()
    {
        QCOMPARE(colorOf(m_lookup->icon(entryWithIcon("themed.desktop", "red-app"))), QColor(Qt::red));
        // Names with an extension are common and meant as theme names.
        QCOMPARE(colorOf(m_lookup->icon(entryWithIcon("suffixed.desktop", "red-app.png"))), QColor(Qt::red));
        QCOMPARE(colorOf(m_lookup->icon(entryWithIcon("pixmap.desktop", "blue-app"))), QColor(Qt::blue));
        QCOMPARE(colorOf(m_lookup->icon(entryWithIcon("absolute.desktop", m_env.path("images/green.png")))),
                 QColor(Qt::green));
        QVERIFY(m_lookup->icon(entryWithIcon("unknown.desktop", "no-such-icon-anywhere")).isNull());
        QVERIFY(m_lookup->icon(entryWithIcon("gone.desktop", m_env.path("images/gone.png"))).isNull());
    }

    void readsTheBundleIconFile()
    {
        const QString bundle =
            makeBundle(m_env.path("Applications"), "Paint.app", {"com.example.paint", {}, {}, "AppIcon.png"});
        writeImage(bundle + "/Contents/Resources/AppIcon.png", Qt::green);
        QCOMPARE(colorOf(m_lookup->icon(bundle)), QColor(Qt::green));
        const QString bare = makeBundle(m_env.path("Applications"), "Bare.app", {"com.example.bare", {}, {}, {}});
        QVERIFY(m_lookup->icon(bare).isNull());
    }
};

QTEST_MAIN(TestAppIconLookup)
#include "test_app_icon_lookup.moc"
