// The import questions as the overlay walks them: a package met before, the
// answers that make it a Space, a refusal in words, and switching to it.
#include "app/CompositionRoot.h"
#include "common/TempEnvironment.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpacesViewModel.h"
#include "spaces/ThemeExporter.h"
#include "ui/ThemesPresenter.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

class ThemesPresenterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void importQuestionsLeadToASpace()
    {
        TempEnvironment env;
        CompositionRoot root = CompositionRoot::build({env.configDir(), env.dataDir()});
        LaunchpadViewModel layout(root.layoutServices());
        SpacesViewModel &spaces = *root.spacesViewModel;
        const SpaceItem work = spaces.createSpace(QStringLiteral("Work"), QStringLiteral("💼"), QStringLiteral("#224466"), false);
        const QString package = env.path(QStringLiteral("Work.tillmoratheme"));
        QString error;
        QVERIFY2(ThemeExporter(root.fileSystemStore, root.spacesSnapshotService, root.spaceStorageProvider)
                     .exportSpace(work, package, {}, &error),
                 qPrintable(error));

        ThemesPresenter themes;
        themes.attach(&spaces, &layout, &root);
        // Opened from the file manager: with nothing to ask, it becomes a
        // Space, and switching is offered.
        Q_EMIT spaces.themeFileOpened(package);
        QCOMPARE(themes.stage(), QStringLiteral("imported"));
        QCOMPARE(themes.package().value("name").toString(), QStringLiteral("Work"));
        QCOMPARE(spaces.spaceItems().size(), 2);
        const QUuid imported = spaces.spaceItems().last().id;

        // The same theme again is a question of its own; answering it goes on.
        themes.openPackage(package);
        QCOMPARE(themes.stage(), QStringLiteral("duplicate"));
        themes.closeImport();
        QCOMPARE(spaces.spaceItems().size(), 2);

        themes.openPackage(package);
        themes.importAgain();
        QCOMPARE(themes.stage(), QStringLiteral("imported"));
        themes.switchToImported();
        QCOMPARE(themes.stage(), QString());
        QVERIFY(spaces.activeSpaceId() && *spaces.activeSpaceId() != imported);
        QCOMPARE(spaces.spaceItems().size(), 3);

        QFile junk(env.path(QStringLiteral("junk.tillmoratheme")));
        QVERIFY(junk.open(QIODevice::WriteOnly));
        junk.write("nothing like a zip");
        junk.close();
        themes.openPackage(junk.fileName());
        QCOMPARE(themes.stage(), QStringLiteral("invalidPackage"));
        QCOMPARE(themes.package().value("error").toString(),
                 QStringLiteral("The file is damaged or is not a Tillmora theme."));
        QCOMPARE(spaces.spaceItems().size(), 3);

        // Export asks first, then never writes over an earlier package.
        QSignalSpy notices(&themes, &ThemesPresenter::notice);
        for (int i = 0; i < 2; ++i) {
            themes.exportSpace(Uuids::toText(work.id));
            QCOMPARE(themes.stage(), QStringLiteral("exportConfirm"));
            themes.confirmExport();
            QCOMPARE(themes.stage(), QString());
        }
        QCOMPARE(notices.size(), 2);
        QVERIFY(QFile::exists(env.path(QStringLiteral("home/Documents/Work.tillmoratheme"))));
        QVERIFY(QFile::exists(env.path(QStringLiteral("home/Documents/Work 2.tillmoratheme"))));
    }
};

QTEST_MAIN(ThemesPresenterTest)
#include "test_themes_presenter.moc"
