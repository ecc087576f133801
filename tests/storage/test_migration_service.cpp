#include "app/RegisteredDefaults.h"
#include "common/TempEnvironment.h"
#include "storage/FileSystemStore.h"
#include "storage/MigrationService.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

// Forwards to a real store and counts what was written.
class RecordingStore final : public UserDefaultsStoreType {
public:
    explicit RecordingStore(std::shared_ptr<UserDefaultsStore> inner) : inner(std::move(inner)) {}

    std::shared_ptr<UserDefaultsStore> inner;
    QStringList writes;
    int flushes = 0;

    void set(const QVariant &value, const QString &key) override
    {
        writes.append(key);
        inner->set(value, key);
    }
    void removeObject(const QString &key) override
    {
        writes.append("-" + key);
        inner->removeObject(key);
    }
    bool synchronize() override
    {
        ++flushes;
        return inner->synchronize();
    }
    QVariant object(const QString &key) const override { return inner->object(key); }
    QVariant persistedObject(const QString &key) const override { return inner->persistedObject(key); }
    std::optional<QByteArray> data(const QString &key) const override { return inner->data(key); }
    std::optional<QString> string(const QString &key) const override { return inner->string(key); }
    bool boolValue(const QString &key) const override { return inner->boolValue(key); }
    std::optional<QVariantList> array(const QString &key) const override { return inner->array(key); }
    std::optional<QVariantMap> dictionary(const QString &key) const override { return inner->dictionary(key); }
};

QByteArray pngBytes()
{
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(Qt::magenta);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

}

class TestMigrationService : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TempEnvironment> m_env;
    std::shared_ptr<UserDefaultsStore> m_store;
    std::shared_ptr<RecordingStore> m_recording;
    std::shared_ptr<FileSystemStore> m_fs;

    void run() { MigrationService(m_recording, m_fs).runAll(); }
    QVariant stored(const QString &key) const { return m_store->persistedObject(key); }

private Q_SLOTS:
    // Start-up registers its defaults before the migrations run; they must
    // not count as stored values.
    void initTestCase() { RegisteredDefaults::registerAll(); }

    void init()
    {
        m_env = std::make_unique<TempEnvironment>();
        m_store = UserDefaultsStore::standard(m_env->configDir());
        m_recording = std::make_shared<RecordingStore>(m_store);
        m_fs = std::make_shared<FileSystemStore>(m_env->dataDir());
    }

    void cleanup()
    {
        m_recording.reset();
        m_store.reset();
        m_env.reset();
    }

    // Every step fills its setting and marks itself done. The values are the
    // steps' own constants; what matters is that none is left out.
    void freshInstallationFillsEveryStep()
    {
        run();
        QStringList expected{"gesture.pinch.enabled", "gesture.pinch.fingerCount", "liquidGlassEnabled",
                             "liquidGlassMaterialStyle", "ShowHideButtonEnabled", "ShowOverFullscreenEnabled",
                             "sunBackgroundAutoEnabled", "sunBackgroundEnabled", "sunBackgroundManualTime", "theme",
                             "titleColorOverride", "weatherBackgroundAutoEnabled", "weatherBackgroundCity",
                             "weatherBackgroundEnabled", "weatherBackgroundManualTime", "weatherBackgroundManualType",
                             MigrationService::kGesturePinchDoneFlag, MigrationService::kHideButtonDoneFlag,
                             MigrationService::kLiquidGlassDoneFlag, MigrationService::kShowOverFullscreenDoneFlag};
        QStringList keys = m_store->persistedKeys();
        expected.sort();
        keys.sort();
        QCOMPARE(keys, expected);
        QCOMPARE(stored("liquidGlassEnabled"), QVariant(true)); // the user never turned it off
        QVERIFY(m_recording->flushes >= 1); // the theme is flushed at once
    }

    void secondLaunchWritesNothing_data()
    {
        QTest::addColumn<bool>("olderData");
        QTest::newRow("fresh installation") << false;
        QTest::newRow("folders, background bytes and a Space from an older version") << true;
    }
    void secondLaunchWritesNothing()
    {
        QFETCH(bool, olderData);
        if (olderData) {
            m_store->set(QByteArray(R"([{"id":"0B8F1C3E-8F1E-4C59-9D6B-2E8A4C1F7A10","name":"Old","appPaths":["/a.app"]}])"),
                         SettingsKeys::kFolders);
            m_store->set(pngBytes(), SettingsKeys::kLegacyCustomBackgroundImageData);
            m_store->set(QStringLiteral("X"), "Spaces_ActiveSpaceId");
        }
        run();
        QVERIFY(!m_recording->writes.isEmpty());

        m_recording->writes.clear();
        m_recording->flushes = 0;
        run();
        QCOMPARE(m_recording->writes, QStringList());
        QCOMPARE(m_recording->flushes, 0);
    }

    // What an older version stored survives, a glass turned off on purpose
    // among it; only the pinch step overrides, once.
    void keepsWhatAnOlderVersionStored()
    {
        const QVariantMap older{{"theme", "dark"}, {"titleColorOverride", "light"}, {"liquidGlassMaterialStyle", "clear"},
                                {"liquidGlassExplicitlyDisabledByUser", true}, {"liquidGlassEnabled", false},
                                {"gesture.pinch.fingerCount", 3}, {"sunBackgroundEnabled", true},
                                {"sunBackgroundAutoEnabled", false}, {"sunBackgroundManualTime", 7.5},
                                {"weatherBackgroundCity", "Oslo"}};
        for (auto it = older.cbegin(); it != older.cend(); ++it)
            m_store->set(it.value(), it.key());
        m_store->set(false, "gesture.pinch.enabled");
        run();

        for (auto it = older.cbegin(); it != older.cend(); ++it)
            QVERIFY2(stored(it.key()) == it.value(), qPrintable(it.key()));
        QCOMPARE(stored(MigrationService::kLiquidGlassDoneFlag), QVariant(true));
        QCOMPARE(stored("gesture.pinch.enabled"), QVariant(true));
        QCOMPARE(stored("weatherBackgroundManualType"), QVariant("clear")); // the absent ones are still filled
        QCOMPARE(m_recording->flushes, 0); // the theme was not written
    }

    void flaggedStepsOverrideOnceOnly()
    {
        m_store->set(false, "ShowOverFullscreenEnabled");
        m_store->set(true, "ShowHideButtonEnabled");
        m_store->set(true, "liquidGlassExplicitlyDisabledByUser");
        run();
        QCOMPARE(stored("ShowOverFullscreenEnabled"), QVariant(true));
        QCOMPARE(stored("ShowHideButtonEnabled"), QVariant(false));

        // What the user chooses afterwards stays.
        const QVariantMap chosen{{"ShowOverFullscreenEnabled", false}, {"ShowHideButtonEnabled", true},
                                 {"gesture.pinch.enabled", false}, {"liquidGlassExplicitlyDisabledByUser", false},
                                 {"liquidGlassEnabled", false}};
        for (auto it = chosen.cbegin(); it != chosen.cend(); ++it)
            m_store->set(it.value(), it.key());
        run();
        for (auto it = chosen.cbegin(); it != chosen.cend(); ++it)
            QVERIFY2(stored(it.key()) == it.value(), qPrintable(it.key()));
    }

    void foldersGainSlotsInMembershipOrder()
    {
        const QByteArray old = R"([
            {"id":"0B8F1C3E-8F1E-4C59-9D6B-2E8A4C1F7A10","name":"Old","appPaths":["/b.app","/a.app","/c.app"]},
            {"id":"1C9F2D4F-9F2F-4D6A-8E7C-3F9B5D2A8B21","name":"New","appPaths":["/d.app"],"slots":["","/d.app"]}
        ])";
        m_store->set(old, SettingsKeys::kFolders);
        run();

        const QJsonArray folders = QJsonDocument::fromJson(*m_store->data(SettingsKeys::kFolders)).array();
        QCOMPARE(folders.size(), 2);
        QCOMPARE(folders[0].toObject().value("slots").toArray(), QJsonArray({"/b.app", "/a.app", "/c.app"}));
        QCOMPARE(folders[1].toObject().value("slots").toArray(), QJsonArray({"", "/d.app"}));
        QCOMPARE(folders[0].toObject().value("name").toString(), QString("Old"));
    }

    void undecodableFoldersStayUntouched()
    {
        const QByteArray broken = R"([{"name":"No id","appPaths":[]}])";
        m_store->set(broken, SettingsKeys::kFolders);
        run();
        QCOMPARE(*m_store->data(SettingsKeys::kFolders), broken);
        QVERIFY(!m_recording->writes.contains(SettingsKeys::kFolders));
    }

    void backgroundImageBytesBecomeAFile()
    {
        const QByteArray png = pngBytes();
        m_store->set(png, SettingsKeys::kLegacyCustomBackgroundImageData);
        run();

        const QString path = stored(SettingsKeys::kCustomBackgroundImagePath).toString();
        QCOMPARE(QFileInfo(path).dir().path(), m_env->dataDir() + "/Wallpapers");
        QVERIFY2(QUuid::fromString(QFileInfo(path).completeBaseName()).isNull() == false, qPrintable(path));
        QCOMPARE(QFileInfo(path).suffix(), QString("png"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), png);
        QVERIFY(!stored(SettingsKeys::kLegacyCustomBackgroundImageData).isValid());
        // The legacy bytes are removed only after the file and its path are stored.
        QVERIFY(m_recording->writes.indexOf(SettingsKeys::kCustomBackgroundImagePath)
                < m_recording->writes.indexOf(QString("-") + SettingsKeys::kLegacyCustomBackgroundImageData));
    }

    void backgroundImageFailureKeepsTheBytes()
    {
        // "Wallpapers" cannot be created: a file stands in its place.
        QDir().mkpath(m_env->dataDir());
        QFile blocker(m_env->dataDir() + "/Wallpapers");
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        m_store->set(pngBytes(), SettingsKeys::kLegacyCustomBackgroundImageData);
        run();
        QVERIFY(stored(SettingsKeys::kLegacyCustomBackgroundImageData).isValid());
        QVERIFY(!stored(SettingsKeys::kCustomBackgroundImagePath).isValid());

        // Bytes that are no image are kept as well.
        QFile::remove(m_env->dataDir() + "/Wallpapers");
        m_store->set(QByteArray("not an image"), SettingsKeys::kLegacyCustomBackgroundImageData);
        run();
        QCOMPARE(*m_store->data(SettingsKeys::kLegacyCustomBackgroundImageData), QByteArray("not an image"));
    }

    void danglingActiveSpaceIsCleared()
    {
        m_store->set(QStringLiteral("7D0E1A2B-3C4D-4E5F-8A9B-0C1D2E3F4A5B"), "Spaces_ActiveSpaceId");
        run();
        QVERIFY(!stored("Spaces_ActiveSpaceId").isValid());

        // With a list of Spaces the id is the active Space and stays.
        m_store->set(QByteArray("[]"), "Spaces_Items_v1");
        m_store->set(QStringLiteral("7D0E1A2B-3C4D-4E5F-8A9B-0C1D2E3F4A5B"), "Spaces_ActiveSpaceId");
        run();
        QVERIFY(stored("Spaces_ActiveSpaceId").isValid());
    }
};

QTEST_GUILESS_MAIN(TestMigrationService)
#include "test_migration_service.moc"
