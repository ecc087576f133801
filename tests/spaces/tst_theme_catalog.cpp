// The themes catalogue against a real HTTPS server on localhost:443, run in
// a private network namespace so the ports are ours: what is refused, what
// installs, and what is written to the settings either way.
#include "common/TempEnvironment.h"
#include "foundation/Uuids.h"
#include "spaces/SpacesThemeCatalogService.h"
#include "spaces/SpacesThemeCatalogViewModel.h"
#include "storage/UserDefaultsStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <climits>
#include <unistd.h>

using Service = SpacesThemeCatalogService;

namespace {
const char *const kInNamespace = "TILLMORA_TEST_PRIVATE_NETWORK";
QString g_skipReason; // why the network cases cannot run

// TLS on 443 and 8443 and plain http on 80: a download the rules should
// refuse would otherwise succeed.
const char *const kServer = R"PY(
import http.server, os, socket, socketserver, ssl, sys, threading, time, urllib.parse
root, cert, key = sys.argv[1:4]
class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    def log_message(self, *args): pass
    def head(self, status, length, extra={}):
        self.send_response(status)
        self.send_header("Content-Length", str(length))
        for k, v in extra.items(): self.send_header(k, v)
        self.end_headers()
    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        if url.path == "/redirect":
            return self.head(302, 0, {"Location": urllib.parse.parse_qs(url.query)["to"][0]})
        if url.path in ("/stall", "/trickle"):
            self.head(200, 100000)
            for _ in range(150):
                self.wfile.write(b"x"); self.wfile.flush()
                time.sleep(0.2 if url.path == "/trickle" else 60)
            return
        path = os.path.join(root, url.path.lstrip("/"))
        if not os.path.isfile(path): return self.head(404, 0)
        data = open(path, "rb").read()
        self.head(200, len(data))
        for i in range(0, len(data), 65536):
            self.wfile.write(data[i:i + 65536]); self.wfile.flush(); time.sleep(0.01)
class Server(http.server.ThreadingHTTPServer):
    address_family, daemon_threads = socket.AF_INET6, True
    def server_bind(self):
        self.socket.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 0)
        socketserver.TCPServer.server_bind(self)
    def handle_error(self, request, address): pass  # clients hanging up early is the point
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(cert, key)
servers = [Server(("::", port), Handler) for port in (443, 8443, 80)]
for server in servers[:2]: server.socket = context.wrap_socket(server.socket, server_side=True)
for server in servers: threading.Thread(target=server.serve_forever, daemon=True).start()
print("ready", flush=True)
threading.Event().wait()
)PY";

QString sha(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}
} // namespace

class ThemeCatalogTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_web; // what the server serves, and its certificate
    QProcess m_server;
    QByteArray m_package;
    std::unique_ptr<TempEnvironment> m_env;
    std::shared_ptr<UserDefaultsStore> m_store;
    const QUuid m_newSpace = QUuid::createUuid();
    // What the fake importer was given.
    int m_importCalls = 0;
    QString m_importedPath;
    QByteArray m_importedBytes;

    SpacesCatalogTheme entry(const QString &downloadURL) const
    {
        SpacesCatalogTheme theme;
        theme.id = "ocean-2", theme.themeId = "ocean", theme.name = "Ocean", theme.downloadURL = downloadURL;
        theme.fileSize = m_package.size();
        theme.sha256 = sha(m_package);
        theme.author = SpacesCatalogTheme::Credit{"Ada", "https://example.org", "person"};
        theme.wallpaper = SpacesCatalogTheme::Credit{"Sea photo", {}, {}};
        return theme;
    }
    std::unique_ptr<Service> service(const QString &catalog = "https://localhost/themes/catalog.json")
    {
        using std::chrono::seconds;
        return std::make_unique<Service>(m_store, QUrl(catalog), Service::Timeouts{seconds(2), seconds(1), seconds(3)});
    }
    Service::Importer importer(std::optional<QUuid> answer, const QString &failure = {})
    {
        return [=, this](const QString &file, QString *error) {
            ++m_importCalls;
            m_importedPath = file;
            QFile f(file);
            m_importedBytes = f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
            *error = failure;
            return answer;
        };
    }
    std::optional<SpacesThemeCatalog> load(Service &catalogs, QString *error)
    {
        std::optional<SpacesThemeCatalog> loaded;
        QEventLoop loop;
        catalogs.load([&](const std::optional<SpacesThemeCatalog> &catalog, const QString &why) {
            loaded = catalog, *error = why, loop.quit();
        });
        loop.exec();
        return loaded;
    }
    Service::InstallResult install(Service &catalogs, const SpacesCatalogTheme &theme, Service::Importer importer,
                                   QList<double> *progress = nullptr)
    {
        Service::InstallResult outcome;
        QEventLoop loop;
        catalogs.install(
            theme, importer, [&](double fraction) { progress ? progress->append(fraction) : void(); },
            [&](const Service::InstallResult &result) { outcome = result, loop.quit(); });
        loop.exec();
        return outcome;
    }
    bool nothingRecorded() const
    {
        return !m_store->persistedObject("CatalogThemeHash_ocean").isValid()
               && !m_store->persistedObject("CatalogThemeSpaceOrigins_v1").isValid();
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!g_skipReason.isEmpty())
            return;
        const QString cert = m_web.filePath("cert.pem"), key = m_web.filePath("key.pem");
        QProcess openssl;
        openssl.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                                  "-nodes", "-days", "2", "-subj", "/CN=localhost", "-addext",
                                  "subjectAltName=DNS:localhost,IP:127.0.0.1,IP:::1", "-keyout", key, "-out", cert});
        QVERIFY2(openssl.waitForFinished() && openssl.exitCode() == 0, openssl.readAllStandardError().constData());
        qputenv("SSL_CERT_FILE", cert.toLocal8Bit()); // the only way the server is trusted

        m_package.resize(300 * 1024);
        QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(m_package.data()), m_package.size() / 4);
        SpacesThemeCatalog catalog{1, {entry("good.tillmoratheme")}}; // relative to themes/
        catalog.themes.append(entry("good.tillmoratheme"));
        catalog.themes[1].id = "future-1";
        catalog.themes[1].packageSchemaVersion = 2;
        const auto write = [this](const QString &name, const QByteArray &bytes) {
            QFile f(m_web.filePath(name));
            return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
        };
        QVERIFY(QDir(m_web.path()).mkpath("themes"));
        QVERIFY(write("themes/good.tillmoratheme", m_package) && write("themes/catalog.json", catalog.toJson())
                && write("themes/bad.json", R"({"schemaVersion": 1, "themes": [{"id": 7}]})"));

        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(QFile::exists("/usr/bin/python3") ? "/usr/bin/python3" : "python3",
                       {"-c", kServer, m_web.path(), cert, key});
        QVERIFY(m_server.waitForReadyRead(30000));
        QCOMPARE(m_server.readLine().trimmed(), QByteArray("ready"));
    }
    void cleanupTestCase()
    {
        m_server.kill();
        m_server.waitForFinished();
    }
    void init()
    {
        m_env = std::make_unique<TempEnvironment>();
        m_store = UserDefaultsStore::standard(m_env->configDir());
        m_importCalls = 0;
    }

    void catalogueEntriesAreReadStrictly()
    {
        SpacesCatalogTheme theme = entry("a.tillmoratheme");
        theme.fileSize = 1; // no package is made when the server cannot run
        theme.sha256 = sha("x");
        theme.widgets = {{"Clock", {}, "widget"}};
        QString error;
        const auto reread = SpacesThemeCatalog::fromJson(SpacesThemeCatalog{1, {theme}}.toJson(), &error);
        QVERIFY2(reread && reread->themes == QList{theme}, qPrintable(error));

        const auto document = [](const QJsonObject &json) {
            return QJsonDocument(QJsonObject{{"schemaVersion", 1}, {"themes", QJsonArray{json}}}).toJson();
        };
        QJsonObject bare = theme.toJson(); // credits and description may be left out
        for (const char *key : {"author", "wallpaper", "widgets", "description"})
            bare.remove(QLatin1String(key));
        QVERIFY(SpacesThemeCatalog::fromJson(document(bare), &error));
        // What would make installing unsafe fails the document, saying where.
        const QList<std::pair<const char *, QJsonValue>> broken{
            {"sha256", "abc"}, {"fileSize", 10.5}, {"author", QJsonObject{{"url", "https://example.org"}}}};
        for (const auto &[key, value] : broken) {
            QJsonObject json = bare;
            json[QLatin1String(key)] = value;
            QVERIFY(!SpacesThemeCatalog::fromJson(document(json), &error));
            QVERIFY2(error.startsWith(QStringLiteral("theme 0: key \"%1\"").arg(key)), qPrintable(error));
        }
    }

    void theCatalogueAddressIsConfigured()
    {
        QCOMPARE(Service(m_store).catalogURL(), QUrl("https://tillmora.app/spaces/catalog.json"));
        m_store->set(QStringLiteral("https://mirror.example/c.json"), QStringLiteral("themeCatalogURL"));
        QCOMPARE(Service(m_store).catalogURL(), QUrl("https://mirror.example/c.json"));
        QCOMPARE(Service(m_store, QUrl("https://cli.example/c.json")).catalogURL(), QUrl("https://cli.example/c.json"));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("downloadURL");
        QTest::addColumn<QString>("sha256"); // empty: the right one
        QTest::addColumn<int>("schemaVersion");
        QTest::addColumn<qint64>("fileSize"); // 0: the right one
        QTest::addColumn<QString>("text");
        const QString bad = QStringLiteral("The theme download could not be verified. Please try again.");
        QTest::newRow("plain http") << "http://localhost/themes/good.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("foreign port") << "https://localhost:8443/themes/good.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("credentials") << "https://me:pw@localhost/themes/good.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("redirect to http")
            << "/redirect?to=http%3A%2F%2Flocalhost%2Fthemes%2Fgood.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("not found") << "missing.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("wrong checksum") << "good.tillmoratheme" << sha("other") << 1 << 0LL << bad;
        QTest::newRow("larger than announced") << "good.tillmoratheme" << "" << 1 << 1000LL << bad;
        QTest::newRow("stalled") << "/stall" << "" << 1 << 0LL << bad;
        QTest::newRow("trickling past the total time") << "/trickle" << "" << 1 << 0LL << bad;
        QTest::newRow("package too new") << "good.tillmoratheme" << "" << 2 << 0LL
                                         << QStringLiteral("Update Tillmora to install this theme.");
    }
    void refusals()
    {
        if (!g_skipReason.isEmpty())
            QSKIP(qPrintable(g_skipReason));
        QFETCH(QString, downloadURL);
        QFETCH(QString, sha256);
        QFETCH(qint64, fileSize);
        QFETCH(int, schemaVersion);
        SpacesCatalogTheme theme = entry(downloadURL);
        theme.packageSchemaVersion = schemaVersion;
        theme.sha256 = sha256.isEmpty() ? theme.sha256 : sha256;
        theme.fileSize = fileSize ? fileSize : theme.fileSize;
        auto catalogs = service();
        const auto result = install(*catalogs, theme, importer(m_newSpace));
        QVERIFY(!result.spaceId);
        QTEST(result.message, "text");
        QCOMPARE(m_importCalls, 0);
        QVERIFY(nothingRecorded() && !catalogs->isInstalled(theme));
    }

    void aGoodPackageInstalls_data()
    {
        QTest::addColumn<bool>("redirectedAndUpperCase");
        QTest::newRow("relative to the catalogue") << false;
        QTest::newRow("upper-case checksum through a redirect") << true;
    }
    void aGoodPackageInstalls()
    {
        if (!g_skipReason.isEmpty())
            QSKIP(qPrintable(g_skipReason));
        QFETCH(bool, redirectedAndUpperCase);
        auto catalogs = service();
        QString error;
        const auto catalog = load(*catalogs, &error);
        QVERIFY2(catalog, qPrintable(error));
        SpacesCatalogTheme theme = catalog->themes.first();
        if (redirectedAndUpperCase) {
            theme.downloadURL = "/redirect?to=https%3A%2F%2Flocalhost%2Fthemes%2Fgood.tillmoratheme";
            theme.sha256 = theme.sha256.toUpper();
        }
        QList<double> progress;
        const auto result = install(*catalogs, theme, importer(m_newSpace), &progress);
        QCOMPARE(result.spaceId, std::optional<QUuid>(m_newSpace));
        QVERIFY(m_importCalls == 1 && m_importedBytes == m_package);
        QVERIFY(!QFile::exists(m_importedPath));
        QVERIFY(!progress.isEmpty() && progress.last() == 1.0);
        QVERIFY(std::is_sorted(progress.begin(), progress.end(), std::less_equal<double>()));
        QCOMPARE(*m_store->string("CatalogThemeHash_ocean"), sha(m_package));
        QCOMPARE(*m_store->dictionary("CatalogThemeSpaceOrigins_v1"), (QVariantMap{{Uuids::toText(m_newSpace), "ocean-2"}}));
        QVERIFY(catalogs->isInstalled(theme));
    }

    void theImportersErrorIsPassedOn()
    {
        if (!g_skipReason.isEmpty())
            QSKIP(qPrintable(g_skipReason));
        const QString failure = QStringLiteral("The package has no manifest.");
        const auto result = install(*service(), entry("good.tillmoratheme"), importer(std::nullopt, failure));
        QCOMPARE(result.message, failure);
        QVERIFY(!result.error && m_importCalls == 1 && !QFile::exists(m_importedPath));
        QVERIFY(nothingRecorded());
    }

    void unusableCatalogues_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("undecodable") << "https://localhost/themes/bad.json";
        QTest::newRow("plain http") << "http://localhost/themes/catalog.json";
        QTest::newRow("nobody listening") << "https://localhost:9443/themes/catalog.json";
        QTest::newRow("redirect to http") << "https://localhost/redirect?to=http%3A%2F%2Flocalhost%2Fthemes%2Fcatalog.json";
    }
    void unusableCatalogues()
    {
        if (!g_skipReason.isEmpty())
            QSKIP(qPrintable(g_skipReason));
        QFETCH(QString, address);
        QString error;
        QVERIFY(!load(*service(address), &error));
        QCOMPARE(error, QStringLiteral("The themes catalog is unavailable. Please try again later."));
    }

    void theViewModelFollowsAnInstall()
    {
        if (!g_skipReason.isEmpty())
            QSKIP(qPrintable(g_skipReason));
        SpacesThemeCatalogViewModel model(service(), importer(m_newSpace));
        QEventLoop loop;
        QString installed;
        connect(&model, &SpacesThemeCatalogViewModel::isLoadingChanged, &loop, [&] { model.isLoading() ? void() : loop.quit(); });
        connect(&model, &SpacesThemeCatalogViewModel::downloadingIDChanged, &loop,
                [&] { model.downloadingID().isEmpty() ? loop.quit() : void(); });
        connect(&model, &SpacesThemeCatalogViewModel::installed, &loop, [&](const QString &id) { installed = id; });
        model.load();
        loop.exec();
        QCOMPARE(model.themes().size(), 2);
        const QVariantMap first = model.themes().first().toMap();
        QVERIFY(first["author"] == "Ada" && first["credits"] == "Wallpaper: Sea photo" && !first["isInstalled"].toBool());

        model.install("ocean-2");
        QCOMPARE(model.downloadingID(), QStringLiteral("ocean-2"));
        loop.exec();
        QCOMPARE(installed, Uuids::toText(m_newSpace));
        QVERIFY(model.themes().first().toMap()["isInstalled"].toBool());
        model.install("future-1");
        loop.exec();
        QCOMPARE(model.errorMessage(), QStringLiteral("Update Tillmora to install this theme."));
    }
};

int main(int argc, char **argv)
{
    // Ports 80 and 443 of localhost are only ours in a network namespace of our own.
    if (qEnvironmentVariableIsSet(kInNamespace)) {
        if (std::system("ip link set lo up || /usr/sbin/ip link set lo up") != 0)
            g_skipReason = QStringLiteral("could not bring up lo in the private network namespace");
    } else if (::geteuid() != 0) {
        g_skipReason = QStringLiteral("needs root for a private network namespace (unshare -n)");
    } else if (std::system("unshare -n true >/dev/null 2>&1") != 0) {
        g_skipReason = QStringLiteral("unshare -n is unavailable here");
    } else {
        ::setenv(kInNamespace, "1", 1);
        char self[PATH_MAX] = {};
        std::vector<char *> args{const_cast<char *>("unshare"), const_cast<char *>("-n"), const_cast<char *>("--"),
                                 ::realpath("/proc/self/exe", self) ? self : argv[0]};
        args.insert(args.end(), argv + 1, argv + argc + 1); // with the closing null
        ::execvp("unshare", args.data());
        g_skipReason = QStringLiteral("could not run unshare");
    }
    QCoreApplication app(argc, argv);
    ThemeCatalogTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_theme_catalog.moc"
