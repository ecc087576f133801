#include "catalogue/AppSourceFoldersStore.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestAppSourceFoldersStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void roundTripsThroughTheStoredJson()
    {
        TempEnvironment env;
        UserDefaultsStore store("test.folders", std::nullopt, env.configDir());
        QVERIFY(AppSourceFoldersStore::loadAll(store).isEmpty());

        const QList<FolderEntry> entries{{"/opt/apps", QByteArray::fromHex("0001") + "bookmark"}, {"/srv/tools", {}}};
        AppSourceFoldersStore::saveAll(store, entries);

        // The stored form: a JSON list whose keys are the field names, bytes as base64.
        const auto json = QJsonDocument::fromJson(*store.data(SettingsKeys::kAdditionalAppSourceFolders)).array();
        QCOMPARE(json.size(), 2);
        QCOMPARE(json[0].toObject().value("path").toString(), QString("/opt/apps"));
        QCOMPARE(json[0].toObject().value("bookmarkData").toString(), QString("AAFib29rbWFyaw=="));

        UserDefaultsStore reopened("test.folders", std::nullopt, env.configDir());
        QCOMPARE(AppSourceFoldersStore::loadAll(reopened), entries);
        QCOMPARE(AppSourceFoldersStore::paths(entries), QStringList({"/opt/apps", "/srv/tools"}));
    }

    void undecodableReadsAsEmpty()
    {
        TempEnvironment env;
        UserDefaultsStore store("test.folders", std::nullopt, env.configDir());
        LogCapture log;
        for (const QByteArray &bad : {QByteArray("{\"path\": 1}"), QByteArray("[{\"path\": \"/a\"}]"),
                                      QByteArray("[{\"path\": \"/a\", \"bookmarkData\": \"***\"}]")}) {
            store.set(bad, SettingsKeys::kAdditionalAppSourceFolders);
            QVERIFY(AppSourceFoldersStore::loadAll(store).isEmpty());
        }
        QCOMPARE(log.matching("Failed to decode app source folders").size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestAppSourceFoldersStore)
#include "test_app_source_folders_store.moc"
