#include "spaces/SpacesThemeCatalogService.h"

#include "foundation/Logging.h"
#include "foundation/Uuids.h"
#include "storage/UserDefaultsStoreType.h"

#include <QDir>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QTemporaryFile>
#include <QThread>
#include <atomic>

namespace {
constexpr qint64 kChunk = 64 * 1024;

QString hashKey(const QString &themeId)
{
    return QLatin1String(SpacesThemeCatalogService::kThemeHashKeyPrefix) + themeId;
}

// Lower-case hex SHA-256 of a file read in chunks, or empty when it could
// not be read or `stop` was raised.
QByteArray sha256Of(const QString &path, const std::atomic_bool &stop)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray chunk(kChunk, Qt::Uninitialized);
    for (;;) {
        if (stop)
            return {};
        const qint64 n = file.read(chunk.data(), chunk.size());
        if (n < 0)
            return {};
        if (n == 0)
            break;
        hash.addData(QByteArrayView(chunk.constData(), n));
    }
    return hash.result().toHex();
}
} // namespace

// One install on its way; destroying it stops whatever still runs and
// removes the downloaded file.
struct SpacesThemeCatalogService::Install {
    // Queued answers carry it: one meant for an install that has ended is dropped.
    quint64 serial = 0;
    SpacesCatalogTheme theme;
    Importer importer;
    ProgressHandler progress;
    InstallDone done;
    QPointer<QNetworkReply> reply;
    std::unique_ptr<QTemporaryFile> file;
    qint64 written = 0;
    qint64 limit = 0;
    double reported = 0;
    QThread *hasher = nullptr;
    std::atomic_bool stopHashing = false;
    QByteArray digest;

    ~Install()
    {
        if (hasher) {
            stopHashing = true;
            hasher->wait();
            hasher->deleteLater();
        }
        if (reply) {
            QObject::disconnect(reply, nullptr, nullptr, nullptr);
            reply->abort();
            reply->deleteLater();
        }
    }
};

QString SpacesThemeCatalogService::message(CatalogError error)
{
    switch (error) {
    case CatalogError::invalidCatalog:
        return QStringLiteral("The themes catalog is unavailable. Please try again later.");
    case CatalogError::invalidDownload:
        return QStringLiteral("The theme download could not be verified. Please try again.");
    case CatalogError::incompatible:
        return QStringLiteral("Update Tillmora to install this theme.");
    }
    return {};
}

SpacesThemeCatalogService::SpacesThemeCatalogService(std::shared_ptr<UserDefaultsStoreType> standardStore,
                                                     const QUrl &catalogURL, Timeouts timeouts, QObject *parent)
    : QObject(parent)
    , m_store(std::move(standardStore))
    , m_explicitURL(catalogURL)
    , m_timeouts(timeouts)
{
    m_totalTimer.setSingleShot(true);
    connect(&m_totalTimer, &QTimer::timeout, this,
            [this] { fail(CatalogError::invalidDownload, QStringLiteral("download took too long")); });
}

QNetworkAccessManager *SpacesThemeCatalogService::network()
{
    // Made at the first request: loading TLS takes a third of a second, which
    // the launcher's start should not pay for a catalogue nobody opened.
    if (!m_network) {
        // The previews the panel loads through Qt Quick get the same trust.
        trustEnvironmentCertificates();
        m_network = new QNetworkAccessManager(this);
        m_ssl = withEnvironmentCertificates(QSslConfiguration::defaultConfiguration())
                    .value_or(QSslConfiguration::defaultConfiguration());
    }
    return m_network;
}

std::optional<QSslConfiguration> SpacesThemeCatalogService::withEnvironmentCertificates(QSslConfiguration configuration)
{
    // OpenSSL's own tools take extra trust anchors from SSL_CERT_FILE; a
    // user who set it for a company proxy expects the launcher to as well.
    const QString extra = qEnvironmentVariable("SSL_CERT_FILE");
    if (extra.isEmpty())
        return std::nullopt;
    const QList<QSslCertificate> certificates = QSslCertificate::fromPath(extra, QSsl::Pem);
    if (certificates.isEmpty()) {
        qCWarning(lcSpaces) << "Theme catalog: no certificates read from SSL_CERT_FILE" << extra;
        return std::nullopt;
    }
    configuration.setCaCertificates(QSslConfiguration::systemCaCertificates() + certificates);
    return configuration;
}

void SpacesThemeCatalogService::trustEnvironmentCertificates()
{
    if (qEnvironmentVariableIsEmpty("SSL_CERT_FILE"))
        return; // nothing to add, and TLS is not loaded for nothing
    if (const auto trusted = withEnvironmentCertificates(QSslConfiguration::defaultConfiguration()))
        QSslConfiguration::setDefaultConfiguration(*trusted);
}

SpacesThemeCatalogService::~SpacesThemeCatalogService()
{
    if (m_catalogReply) {
        QObject::disconnect(m_catalogReply, nullptr, nullptr, nullptr);
        m_catalogReply->abort();
    }
    m_install.reset();
}

QUrl SpacesThemeCatalogService::catalogURL() const
{
    if (!m_explicitURL.isEmpty())
        return m_explicitURL;
    if (m_store) {
        const auto configured = m_store->string(QLatin1String(kCatalogURLKey));
        if (configured && !configured->trimmed().isEmpty())
            return QUrl(configured->trimmed());
    }
    return QUrl(QLatin1String(kDefaultCatalogURL));
}

bool SpacesThemeCatalogService::isAllowedPackageURL(const QUrl &url)
{
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty()
           && url.userName().isEmpty() && url.password().isEmpty() && (url.port() == -1 || url.port() == 443);
}

bool SpacesThemeCatalogService::isInstalled(const SpacesCatalogTheme &theme) const
{
    const auto stored = m_store ? m_store->string(hashKey(theme.themeId)) : std::nullopt;
    return stored && stored->compare(theme.sha256, Qt::CaseInsensitive) == 0;
}

QString SpacesThemeCatalogService::originOf(const QUuid &spaceId) const
{
    const auto origins = m_store ? m_store->dictionary(QLatin1String(kSpaceOriginsKey)) : std::nullopt;
    return origins ? origins->value(Uuids::toText(spaceId)).toString() : QString();
}

QNetworkRequest SpacesThemeCatalogService::request(const QUrl &url, std::chrono::milliseconds transferTimeout) const
{
    QNetworkRequest request(url);
    // Every hop is checked here before it is followed.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setTransferTimeout(int(transferTimeout.count()));
    if (m_ssl)
        request.setSslConfiguration(*m_ssl);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Tillmora/" TILLMORA_VERSION));
    return request;
}

// --- Loading ---------------------------------------------------------------

void SpacesThemeCatalogService::load(LoadDone done)
{
    if (m_catalogReply) {
        QObject::disconnect(m_catalogReply, nullptr, nullptr, nullptr);
        m_catalogReply->abort();
        m_catalogReply->deleteLater();
    }
    m_loadDone = std::move(done);
    const QUrl url = catalogURL();
    if (!url.isValid() || url.scheme() != QLatin1String("https")) {
        // Asynchronous like every other answer, so callers need no second path.
        QMetaObject::invokeMethod(
            this, [this, url] { finishLoad(std::nullopt, QStringLiteral("not an https address: ") + url.toString()); },
            Qt::QueuedConnection);
        return;
    }
    QNetworkAccessManager *manager = network(); // before request(): it sets up TLS
    QNetworkReply *reply = manager->get(request(url, m_timeouts.catalogTransfer));
    m_catalogReply = reply;
    connect(reply, &QNetworkReply::redirected, this, [this, reply](const QUrl &target) {
        const QUrl next = reply->url().resolved(target);
        if (next.scheme() == QLatin1String("https"))
            Q_EMIT reply->redirectAllowed();
        else
            finishLoad(std::nullopt, QStringLiteral("redirected away from https: ") + next.toString());
    });
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply->bytesAvailable() > kMaxCatalogBytes)
            finishLoad(std::nullopt, QStringLiteral("larger than %1 bytes").arg(kMaxCatalogBytes));
    });
    connect(reply, &QNetworkReply::finished, this, &SpacesThemeCatalogService::onCatalogFinished);
}

void SpacesThemeCatalogService::onCatalogFinished()
{
    QNetworkReply *reply = m_catalogReply;
    if (!reply)
        return;
    if (reply->error() != QNetworkReply::NoError)
        return finishLoad(std::nullopt, reply->errorString());
    QString why;
    const auto catalog = SpacesThemeCatalog::fromJson(reply->readAll(), &why);
    if (catalog)
        m_documentURL = reply->url(); // after redirects: where the relative addresses live
    finishLoad(catalog, why);
}

void SpacesThemeCatalogService::finishLoad(const std::optional<SpacesThemeCatalog> &catalog, const QString &why)
{
    if (m_catalogReply) {
        QObject::disconnect(m_catalogReply, nullptr, nullptr, nullptr);
        m_catalogReply->abort();
        m_catalogReply->deleteLater();
        m_catalogReply = nullptr;
    }
    if (!catalog)
        qCWarning(lcSpaces).noquote() << "Theme catalog" << catalogURL().toString() << "unusable:" << why;
    const LoadDone done = std::exchange(m_loadDone, {});
    if (done)
        done(catalog, catalog ? QString() : message(CatalogError::invalidCatalog));
}

// --- Installing ------------------------------------------------------------

void SpacesThemeCatalogService::install(const SpacesCatalogTheme &theme, Importer importer, ProgressHandler progress,
                                        InstallDone done)
{
    cancel();
    m_install = std::make_unique<Install>();
    Install &run = *m_install;
    run.theme = theme;
    run.importer = std::move(importer);
    run.progress = std::move(progress);
    run.done = std::move(done);
    run.serial = ++m_serial;

    // Refusals before any download still answer later, like the rest.
    const auto refuseLater = [this, serial = run.serial](CatalogError error, const QString &why) {
        QMetaObject::invokeMethod(
            this, [=, this] { if (isCurrent(serial)) fail(error, why); }, Qt::QueuedConnection);
    };
    if (theme.packageSchemaVersion > kPackageSchemaVersion)
        return refuseLater(CatalogError::incompatible,
                           QStringLiteral("package format %1 is newer than %2")
                               .arg(theme.packageSchemaVersion)
                               .arg(kPackageSchemaVersion));
    const QUrl base = m_documentURL.isEmpty() ? catalogURL() : m_documentURL;
    const QUrl url = base.resolved(QUrl(theme.downloadURL));
    if (!isAllowedPackageURL(url))
        return refuseLater(CatalogError::invalidDownload, QStringLiteral("address not allowed: ") + url.toString());
    if (theme.fileSize > kMaxPackageBytes)
        return refuseLater(CatalogError::invalidDownload, QStringLiteral("announced size too large"));
    run.limit = std::min(theme.fileSize + kSizeMargin, kMaxPackageBytes);

    run.file = std::make_unique<QTemporaryFile>(QDir::tempPath() + QStringLiteral("/tillmora-theme-XXXXXX.tillmoratheme"));
    if (!run.file->open())
        return refuseLater(CatalogError::invalidDownload,
                           QStringLiteral("no temporary file: ") + run.file->errorString());

    QNetworkAccessManager *manager = network(); // before request(): it sets up TLS
    QNetworkReply *reply = manager->get(request(url, m_timeouts.packageTransfer));
    run.reply = reply;
    connect(reply, &QNetworkReply::redirected, this, [this, reply](const QUrl &target) {
        const QUrl next = reply->url().resolved(target);
        if (isAllowedPackageURL(next))
            Q_EMIT reply->redirectAllowed();
        else
            fail(CatalogError::invalidDownload, QStringLiteral("redirect not allowed: ") + next.toString());
    });
    connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] {
        const QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
        if (length.isValid() && length.toLongLong() > m_install->limit)
            fail(CatalogError::invalidDownload, QStringLiteral("announced %1 bytes").arg(length.toLongLong()));
    });
    connect(reply, &QNetworkReply::readyRead, this, &SpacesThemeCatalogService::onPackageData);
    connect(reply, &QNetworkReply::finished, this, &SpacesThemeCatalogService::onPackageFinished);
    m_totalTimer.start(m_timeouts.packageTotal);
}

void SpacesThemeCatalogService::cancel()
{
    if (!m_install)
        return;
    InstallResult result;
    result.cancelled = true;
    finishInstall(result);
}

void SpacesThemeCatalogService::onPackageData()
{
    Install &run = *m_install;
    while (run.reply->bytesAvailable() > 0) {
        const QByteArray chunk = run.reply->read(kChunk);
        if (run.written + chunk.size() > run.limit)
            return fail(CatalogError::invalidDownload, QStringLiteral("more than %1 bytes").arg(run.limit));
        if (run.file->write(chunk) != chunk.size())
            return fail(CatalogError::invalidDownload, QStringLiteral("writing: ") + run.file->errorString());
        run.written += chunk.size();
    }
    reportProgress(double(run.written) / double(run.theme.fileSize));
}

void SpacesThemeCatalogService::onPackageFinished()
{
    Install &run = *m_install;
    if (run.reply->error() != QNetworkReply::NoError)
        return fail(CatalogError::invalidDownload, run.reply->errorString());
    onPackageData(); // whatever arrived with the end
    if (!m_install)
        return;
    m_totalTimer.stop();
    if (!run.file->flush())
        return fail(CatalogError::invalidDownload, QStringLiteral("writing: ") + run.file->errorString());
    reportProgress(1.0);

    // Reading back up to 512 MiB takes a while: off the main thread.
    const QString path = run.file->fileName();
    run.hasher = QThread::create([&run, path] { run.digest = sha256Of(path, run.stopHashing); });
    connect(run.hasher, &QThread::finished, this, [this, serial = run.serial] {
        if (isCurrent(serial))
            verifyAndImport();
    });
    run.hasher->start();
}

void SpacesThemeCatalogService::verifyAndImport()
{
    Install &run = *m_install;
    run.hasher->wait(); // its result is seen whole
    if (run.digest.isEmpty())
        return fail(CatalogError::invalidDownload, QStringLiteral("could not read back ") + run.file->fileName());
    const QString digest = QString::fromLatin1(run.digest);
    if (digest.compare(run.theme.sha256, Qt::CaseInsensitive) != 0)
        return fail(CatalogError::invalidDownload, QStringLiteral("SHA-256 is %1, the catalog says %2")
                                                       .arg(digest, run.theme.sha256));

    QString importError;
    const auto spaceId = run.importer ? run.importer(run.file->fileName(), &importError) : std::nullopt;
    if (!spaceId) {
        qCWarning(lcSpaces).noquote() << "Theme" << run.theme.id << "not imported:" << importError;
        InstallResult result;
        result.message = importError; // the importer's own words
        return finishInstall(result);
    }
    if (m_store) {
        m_store->set(digest, hashKey(run.theme.themeId));
        QVariantMap origins = m_store->dictionary(QLatin1String(kSpaceOriginsKey)).value_or(QVariantMap());
        origins.insert(Uuids::toText(*spaceId), run.theme.id);
        m_store->set(origins, QLatin1String(kSpaceOriginsKey));
        if (!m_store->synchronize())
            qCWarning(lcSpaces).noquote() << "Theme catalog: install not recorded:" << m_store->lastError();
    }
    qCInfo(lcSpaces).noquote() << "Theme" << run.theme.id << "installed as Space" << Uuids::toText(*spaceId);
    InstallResult result;
    result.spaceId = spaceId;
    finishInstall(result);
}

void SpacesThemeCatalogService::reportProgress(double fraction)
{
    fraction = std::clamp(fraction, 0.0, 1.0);
    if (fraction <= m_install->reported)
        return;
    m_install->reported = fraction;
    if (m_install->progress)
        m_install->progress(fraction);
    Q_EMIT downloadProgress(fraction);
}

void SpacesThemeCatalogService::fail(CatalogError error, const QString &why)
{
    qCWarning(lcSpaces).noquote() << "Theme" << m_install->theme.id << "refused:" << why;
    InstallResult result;
    result.error = error;
    result.message = message(error);
    finishInstall(result);
}

void SpacesThemeCatalogService::finishInstall(InstallResult result)
{
    // Taken out first: the callback may well start the next install.
    std::unique_ptr<Install> run = std::move(m_install);
    m_totalTimer.stop();
    const InstallDone done = std::move(run->done);
    run.reset(); // the temporary file goes here
    if (done)
        done(result);
}

bool SpacesThemeCatalogService::isCurrent(quint64 serial) const
{
    return m_install && m_install->serial == serial;
}
