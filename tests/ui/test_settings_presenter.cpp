// The settings window's writes: values out of range or of an unknown kind
// change nothing, and the grid's shape goes to the monitor the overlay is on.
#include "common/TempEnvironment.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeLayoutServices.h"
#include "layout/LaunchpadViewModel.h"
#include "storage/AppNameRepository.h"
#include "foundation/Uuids.h"
#include "storage/AppearanceRepository.h"
#include "storage/FolderIconStyleRepository.h"
#include "storage/UserDefaultsStore.h"
#include "ui/GridPresenter.h"
#include "ui/SettingsPresenter.h"

#include <QSignalSpy>
#include <QTest>

class SettingsPresenterTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void writesAreCheckedAndGoToTheOverlaysMonitor()
    {
        TempEnvironment env;
        FakeLayoutServices fakes;
        const auto store = UserDefaultsStore::standard(env.configDir());
        AppNameRepositoryImpl names(store);
        AppearanceRepositoryImpl appearance(store);
        LaunchpadViewModel layout(fakes.services());
        layout.loadInitial();
        QTRY_VERIFY(!layout.isLoading());
        GridPresenter grid(layout, names, appearance, std::make_shared<FakeAppLauncher>());
        grid.pages()->setDisplayProfile({QStringLiteral("HDMI-1"), 48, 100});
        SettingsPresenter settings({nullptr, nullptr, nullptr, &appearance, &layout, &grid});
        QSignalSpy changed(&settings, &SettingsPresenter::changed);

        const DisplayProfile hdmi{QStringLiteral("HDMI-1"), 48, 100};
        const DisplayProfile other{QStringLiteral("DP-2"), 48, 100};
        QVERIFY(!settings.setValue(QStringLiteral("columns"), 13));
        QVERIFY(!settings.setValue(QStringLiteral("columns"), QStringLiteral("six")));
        QVERIFY(!settings.setValue(QStringLiteral("iconSize"), 120)); // beyond what this monitor allows
        QVERIFY(!settings.setValue(QStringLiteral("theme"), QStringLiteral("purple")));
        QVERIFY(!settings.setValue(QStringLiteral("folderAppsGrid"), QStringLiteral("9x9")));
        QVERIFY(!settings.setValue(QStringLiteral("noSuchSetting"), true));
        QCOMPARE(appearance.columns(hdmi), AppearanceRepositoryImpl::kDefaultColumns);
        QCOMPARE(appearance.theme(), QStringLiteral("auto"));
        QVERIFY(!store->persistedObject(QStringLiteral("columns@HDMI-1")).isValid());

        QVERIFY(settings.setValue(QStringLiteral("columns"), 6));
        QVERIFY(settings.setValue(QStringLiteral("iconSize"), 96));
        QVERIFY(settings.setValue(QStringLiteral("theme"), QStringLiteral("dark")));
        QVERIFY(settings.setValue(QStringLiteral("folderAppsGrid"), QStringLiteral("3x5")));
        QCOMPARE(appearance.columns(hdmi), 6);
        QCOMPARE(appearance.columns(other), AppearanceRepositoryImpl::kDefaultColumns);
        QCOMPARE(appearance.iconSize(hdmi), 96.0);
        QCOMPARE(grid.pages()->columns(), 6); // the open grid takes the new shape at once
        QCOMPARE(settings.value(QStringLiteral("theme")).toString(), QStringLiteral("dark"));
        QCOMPARE(layout.folderAppsGridRawValue(), QStringLiteral("3x5"));
        QVERIFY(changed.size() >= 4);
    }

    void aFolderKeepsTheColourChosenForIt()
    {
        TempEnvironment env;
        FakeLayoutServices fakes;
        fakes.apps->setApps({{QUuid::createUuid(), QStringLiteral("/apps/A.app"), QStringLiteral("A")},
                             {QUuid::createUuid(), QStringLiteral("/apps/B.app"), QStringLiteral("B")}});
        const auto store = UserDefaultsStore::standard(env.configDir());
        AppNameRepositoryImpl names(store);
        AppearanceRepositoryImpl appearance(store);
        auto styles = std::make_shared<FolderIconStyleRepositoryImpl>(store);
        LaunchpadViewModel layout(fakes.services());
        layout.loadInitial();
        QTRY_VERIFY(!layout.isLoading());
        GridPresenter grid(layout, names, appearance, std::make_shared<FakeAppLauncher>());
        grid.attach({nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, styles});
        const auto folder = layout.createFolder(QStringLiteral("Tools"), {QStringLiteral("/apps/A.app"), QStringLiteral("/apps/B.app")});
        QVERIFY(folder);
        const QString id = Uuids::toText(folder->id);
        // Another part of the look, set before, must survive a colour change.
        styles->setStyle(id, FolderIconStyle{QString(), QStringLiteral("/img.png"), QStringLiteral("image")});

        SettingsPresenter settings({nullptr, nullptr, nullptr, &appearance, &layout, &grid});
        settings.setFolderTint(id, QStringLiteral("not a colour"));
        QCOMPARE(styles->style(id)->tint, QString());
        settings.setFolderTint(id, QStringLiteral("#4FAE5A"));
        QCOMPARE(styles->style(id)->tint, QStringLiteral("#4fae5a"));
        QCOMPARE(styles->style(id)->overlayImagePath, QStringLiteral("/img.png"));
        QCOMPARE(grid.cells().cellFor(folder->key()).tint, QStringLiteral("#4fae5a"));
        QCOMPARE(settings.folderTints().value(0).toMap().value(QStringLiteral("tint")).toString(), QStringLiteral("#4fae5a"));
        settings.setFolderTint(id, QString());
        QCOMPARE(styles->style(id)->tint, QString());
    }
};

QTEST_MAIN(SettingsPresenterTest)
#include "test_settings_presenter.moc"
