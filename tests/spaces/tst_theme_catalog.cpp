// The themes catalogue against a real HTTPS server on localhost:443, run in
// a private network namespace so the port is ours: what is refused, what
// installs, and what is written to the settings either way.
#include "common/TempEnvironment.h"
#include "foundation/Uuids.h"
#include "spaces/SpacesThemeCatalogService.h"
#include "spaces/SpacesThemeCatalogViewModel.h"
#include "storage/UserDefaultsStore.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

using Service = SpacesThemeCatalogService;

namespace {
const char *const kInNamespace = "TILLMORA_TEST_PRIVATE_NETWORK";
QString g_skipReason; // why the network cases cannot run, empty when they can

const char *const kServer = R"PY(
import http.server, os, socket, socketserver, ssl, sys, time, urllib.parse
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
        if not os.path.isfile(path):
            return self.head(404, 0)
        data = open(path, "rb").read()
        self.head(200, len(data))
        for i in range(0, len(data), 65536):
            self.wfile.write(data[i:i + 65536]); self.wfile.flush(); time.sleep(0.01)

class Server(http.server.ThreadingHTTPServer):
    address_family = socket.AF_INET6
    daemon_threads = True
    def handle_error(self, request, address): pass  # clients that hang up early are the point
    def server_bind(self):
        self.socket.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 0)
        socketserver.TCPServer.server_bind(self)

# Plain http on 80 and TLS on a second port, so that a download the rules
# should refuse would otherwise succeed.
import threading
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(cert, key)
servers = [Server(("::", port), Handler) for port in (443, 8443, 80)]
for server in servers[:2]:
    server.socket = context.wrap_socket(server.socket, server_side=True)
for server in servers:
    threading.Thread(target=server.serve_forever, daemon=True).start()
print("ready", flush=True)
threading.Event().wait()
)PY";

bool bringLoopbackUp()
{
    const int fd = ::socket(AF_INET, SOCK_DGRAM, 0);
    if (fd < 0)
        return false;
    ifreq request{};
    std::strncpy(request.ifr_name, "lo", IFNAMSIZ - 1);
    bool ok = ::ioctl(fd, SIOCGIFFLAGS, &request) == 0;
    request.ifr_flags |= IFF_UP | IFF_RUNNING;
    ok = ok && ::ioctl(fd, SIOCSIFFLAGS, &request) == 0;
    ::close(fd);
    return ok;
}

struct Imported {
    int calls = 0;
    QString path;
    QByteArray bytes;
};
} // namespace

class ThemeCatalogTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_web; // what the server serves, and its certificate
    QProcess m_server;
    QByteArray m_package;
    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<UserDefaultsStore> store;
    const QUuid m_newSpace = QUuid::createUuid();

    static QString sha(const QByteArray &bytes)
    {
        return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    }
    SpacesCatalogTheme entry(const QString &downloadURL) const
    {
        SpacesCatalogTheme theme;
        theme.id = QStringLiteral("ocean-2");
        theme.themeId = QStringLiteral("ocean");
        theme.name = QStringLiteral("Ocean");
        theme.downloadURL = downloadURL;
        theme.fileSize = m_package.size();
        theme.sha256 = sha(m_package);
        theme.author = SpacesCatalogTheme::Credit{"Ada", "https://example.org", "person"};
        theme.wallpaper = SpacesCatalogTheme::Credit{"Sea photo", {}, {}};
        return theme;
    }
    std::unique_ptr<Service> service(const QString &catalog = QStringLiteral("https://localhost/themes/catalog.json"))
    {
        return std::make_unique<Service>(store, QUrl(catalog), Service::Timeouts{std::chrono::seconds(2),
                                         std::chrono::seconds(1), std::chrono::seconds(3)});
    }
    std::optional<SpacesThemeCatalog> load(Service &catalogs, QString *error)
    {
        std::optional<SpacesThemeCatalog> loaded;
        QEventLoop loop;
        catalogs.load([&](const std::optional<SpacesThemeCatalog> &catalog, const QString &why) {
            loaded = catalog;
            *error = why;
            loop.quit();
        });
        loop.exec();
        return loaded;
    }
    // Installs with a fake importer that answers `answer` and records its call.
    Service::InstallResult install(Service &catalogs, const SpacesCatalogTheme &theme, Imported *imported,
                                   QList<double> *progress = nullptr, std::optional<QUuid> answer = {},
                                   const QString &importError = {})
    {
        Service::InstallResult outcome;
        QEventLoop loop;
        catalogs.install(
            theme,
            [&](const QString &file, QString *error) -> std::optional<QUuid> {
                ++imported->calls;
                imported->path = file;
                QFile f(file);
                if (f.open(QIODevice::ReadOnly))
                    imported->bytes = f.readAll();
                *error = importError;
                return answer;
            },
            [&](double fraction) {
                if (progress)
                    progress->append(fraction);
            },
            [&](const Service::InstallResult &result) {
                outcome = result;
                loop.quit();
            });
        loop.exec();
        return outcome;
    }
    bool nothingRecorded() const
    {
        return !store->persistedObject(QStringLiteral("CatalogThemeHash_ocean")).isValid()
               && !store->persistedObject(QLatin1String(Service::kSpaceOriginsKey)).isValid();
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!g_skipReason.isEmpty())
            return;
        const QString python = QFile::exists("/usr/bin/python3") ? QStringLiteral("/usr/bin/python3")
                                                                  : QStringLiteral("python3");
        const QString cert = m_web.filePath("cert.pem"), key = m_web.filePath("key.pem");
        QProcess openssl;
        openssl.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                                  "-nodes", "-days", "2", "-subj", "/CN=localhost", "-addext",
                                  "subjectAltName=DNS:localhost,IP:127.0.0.1,IP:::1", "-keyout", key, "-out", cert});
        QVERIFY2(openssl.waitForFinished() && openssl.exitCode() == 0, openssl.readAllStandardError().constData());
        qputenv("SSL_CERT_FILE", cert.toLocal8Bit());

        m_package.resize(300 * 1024);
        QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(m_package.data()), m_package.size() / 4);
        QVERIFY(QDir(m_web.path()).mkpath("themes"));
        const auto write = [this](const QString &name, const QByteArray &bytes) {
            QFile f(m_web.filePath(name));
            return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
        };
        SpacesThemeCatalog catalog;
        catalog.themes = {entry(QStringLiteral("good.tillmoratheme"))}; // relative to themes/
        SpacesCatalogTheme future = entry(QStringLiteral("good.tillmoratheme"));
        future.id = QStringLiteral("future-1");
        future.packageSchemaVersion = 2;
        catalog.themes.append(future);
        QVERIFY(write("themes/good.tillmoratheme", m_package) && write("themes/catalog.json", catalog.toJson())
                && write("themes/bad.json", "{\"schemaVersion\": 1, \"themes\": [{\"id\": 7}]}"));

        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(python, {"-c", kServer, m_web.path(), cert, key});
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
        env = std::make_unique<TempEnvironment>();
        store = UserDefaultsStore::standard(env->configDir());
    }

    void catalogueEntriesAreReadStrictly()
    {
        SpacesThemeCatalog catalog;
        catalog.themes = {entry("a.tillmoratheme")};
        catalog.themes[0].fileSize = 1; // the package is not made when the server cannot run
        catalog.themes[0].sha256 = sha("x");
        catalog.themes[0].widgets = {{"Clock", {}, "widget"}};
        QString error;
        const auto reread = SpacesThemeCatalog::fromJson(catalog.toJson(), &error);
        QVERIFY2(reread, qPrintable(error));
        QVERIFY(reread->themes == catalog.themes);

        // Credits, screenshot and description may be left out.
        QJsonObject bare = catalog.themes[0].toJson();
        for (const char *key : {"author", "wallpaper", "widgets", "description"})
            bare.remove(QLatin1String(key));
        const auto document = [](const QJsonObject &theme) {
            return QJsonDocument(QJsonObject{{"schemaVersion", 1}, {"themes", QJsonArray{theme}}}).toJson();
        };
        QVERIFY(SpacesThemeCatalog::fromJson(document(bare), &error));

        // What would make installing unsafe fails the document, saying where.
        QJsonObject broken = bare;
        broken["sha256"] = "abc";
        QVERIFY(!SpacesThemeCatalog::fromJson(document(broken), &error));
        QVERIFY2(error.startsWith("theme 0: key \"sha256\""), qPrintable(error));
        broken = bare;
        broken["fileSize"] = 10.5;
        QVERIFY(!SpacesThemeCatalog::fromJson(document(broken), &error) && error.contains("fileSize"));
        broken = bare;
        broken["author"] = QJsonObject{{"url", "https://example.org"}};
        QVERIFY(!SpacesThemeCatalog::fromJson(document(broken), &error) && error.contains("author"));
        QVERIFY(!SpacesThemeCatalog::fromJson("[]", &error));
    }

    void theCatalogueAddressIsConfigured()
    {
        QCOMPARE(Service(store).catalogURL(), QUrl("https://tillmora.app/spaces/catalog.json"));
        store->set(QStringLiteral("https://mirror.example/c.json"), QStringLiteral("themeCatalogURL"));
        QCOMPARE(Service(store).catalogURL(), QUrl("https://mirror.example/c.json"));
        QCOMPARE(Service(store, QUrl("https://cli.example/c.json")).catalogURL(), QUrl("https://cli.example/c.json"));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("downloadURL");
        QTest::addColumn<QString>("sha256");      // empty: the right one
        QTest::addColumn<int>("schemaVersion");
        QTest::addColumn<qint64>("fileSize");     // 0: the right one
        QTest::addColumn<QString>("text");
        const QString bad = Service::message(Service::CatalogError::invalidDownload);
        const QString wrongSum = sha("something else");
        QTest::newRow("plain http") << "http://localhost/themes/good.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("foreign port") << "https://localhost:8443/themes/good.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("credentials") << "https://me:pw@localhost/themes/good.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("redirect to http")
            << "/redirect?to=http%3A%2F%2Flocalhost%2Fthemes%2Fgood.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("not found") << "missing.tillmoratheme" << "" << 1 << 0LL << bad;
        QTest::newRow("wrong checksum") << "good.tillmoratheme" << wrongSum << 1 << 0LL << bad;
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
        QFETCH(int, schemaVersion);
        QFETCH(qint64, fileSize);
        QFETCH(QString, text);
        SpacesCatalogTheme theme = entry(downloadURL);
        theme.packageSchemaVersion = schemaVersion;
        if (!sha256.isEmpty())
            theme.sha256 = sha256;
        if (fileSize)
            theme.fileSize = fileSize;
        auto catalogs = service();
        Imported imported;
        const auto result = install(*catalogs, theme, &imported, nullptr, m_newSpace);
        QVERIFY(!result.spaceId);
        QCOMPARE(result.message, text);
        QCOMPARE(imported.calls, 0);
        QVERIFY(nothingRecorded());
        QVERIFY(!catalogs->isInstalled(theme));
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
        Imported imported;
        QList<double> progress;
        const auto result = install(*catalogs, theme, &imported, &progress, m_newSpace);
        QCOMPARE(result.spaceId, std::optional<QUuid>(m_newSpace));
        QCOMPARE(imported.calls, 1);
        QVERIFY(imported.bytes == m_package);
        QVERIFY(!QFile::exists(imported.path));
        QVERIFY(!progress.isEmpty() && progress.last() == 1.0);
        QVERIFY(std::is_sorted(progress.begin(), progress.end(), std::less_equal<double>()));
        QCOMPARE(*store->string("CatalogThemeHash_ocean"), sha(m_package));
        QCOMPARE(*store->dictionary("CatalogThemeSpaceOrigins_v1"), (QVariantMap{{Uuids::toText(m_newSpace), "ocean-2"}}));
        QVERIFY(catalogs->isInstalled(theme));
    }

    void theImportersErrorIsPassedOn()
    {
        if (!g_skipReason.isEmpty())
            QSKIP(qPrintable(g_skipReason));
        auto catalogs = service();
        Imported imported;
        const auto result = install(*catalogs, entry("good.tillmoratheme"), &imported, nullptr, std::nullopt,
                                    QStringLiteral("The package has no manifest."));
        QCOMPARE(result.message, QStringLiteral("The package has no manifest."));
        QVERIFY(!result.error && imported.calls == 1 && !QFile::exists(imported.path));
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
        std::shared_ptr<Service> catalogs = service();
        SpacesThemeCatalogViewModel model(catalogs, [this](const QString &, QString *) { return m_newSpace; });
        QEventLoop loop;
        connect(&model, &SpacesThemeCatalogViewModel::isLoadingChanged, &loop, [&] {
            if (!model.isLoading())
                loop.quit();
        });
        model.load();
        loop.exec();
        QCOMPARE(model.themes().size(), 2);
        const QVariantMap first = model.themes().first().toMap();
        QCOMPARE(first["author"].toString(), QStringLiteral("Ada"));
        QCOMPARE(first["credits"].toString(), QStringLiteral("Wallpaper: Sea photo"));
        QVERIFY(!first["isInstalled"].toBool());

        QString installed;
        QList<double> progress;
        connect(&model, &SpacesThemeCatalogViewModel::downloadProgressChanged, &loop,
                [&] { progress.append(model.downloadProgress()); });
        connect(&model, &SpacesThemeCatalogViewModel::downloadingIDChanged, &loop, [&] {
            if (model.downloadingID().isEmpty())
                loop.quit();
        });
        connect(&model, &SpacesThemeCatalogViewModel::installed, &loop, [&](const QString &id) { installed = id; });
        model.install("ocean-2");
        QCOMPARE(model.downloadingID(), QStringLiteral("ocean-2"));
        loop.exec();
        QCOMPARE(installed, Uuids::toText(m_newSpace));
        QVERIFY(progress.contains(1.0) && model.downloadProgress() == 0);
        QVERIFY(model.themes().first().toMap()["isInstalled"].toBool());

        model.install("future-1");
        loop.exec();
        QCOMPARE(model.errorMessage(), QStringLiteral("Update Tillmora to install this theme."));
    }
};

int main(int argc, char **argv)
{
    // Port 443 on localhost is only ours in a network namespace of our own.
    if (qEnvironmentVariableIsSet(kInNamespace)) {
        if (!bringLoopbackUp())
            g_skipReason = QStringLiteral("could not bring up lo in the private network namespace");
    } else if (::geteuid() != 0) {
        g_skipReason = QStringLiteral("needs root for a private network namespace (unshare -n)");
    } else if (std::system("unshare -n true >/dev/null 2>&1") != 0) {
        g_skipReason = QStringLiteral("unshare -n is unavailable here");
    } else {
        ::setenv(kInNamespace, "1", 1);
        char self[PATH_MAX] = {};
        if (!::realpath("/proc/self/exe", self))
            std::strncpy(self, argv[0], PATH_MAX - 1);
        std::vector<char *> args{const_cast<char *>("unshare"), const_cast<char *>("-n"), const_cast<char *>("--"), self};
        for (int i = 1; i < argc; ++i)
            args.push_back(argv[i]);
        args.push_back(nullptr);
        ::execvp("unshare", args.data());
        g_skipReason = QStringLiteral("could not run unshare: ") + QString::fromLocal8Bit(std::strerror(errno));
    }
    QCoreApplication app(argc, argv);
    ThemeCatalogTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_theme_catalog.moc"
