#pragma once

#include "spaces/SpacesThemeCatalog.h"

#include <QCryptographicHash>
#include <QObject>
#include <QPointer>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>
#include <QUuid>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;
class QTemporaryFile;
class UserDefaultsStoreType;

// How long the network may take; tests shorten them.
struct SpacesThemeCatalogTimeouts {
    std::chrono::milliseconds catalogTransfer{60000};
    std::chrono::milliseconds packageTransfer{30000}; // without a byte arriving
    std::chrono::milliseconds packageTotal{600000};
};

// Reads the themes catalogue from the web and installs its packages: a
// package is downloaded over HTTPS into a temporary file, checked against
// the size and SHA-256 the catalogue gives, and handed to the importer,
// which makes a new Space of it. Main thread only; nothing here waits for
// the network, every result arrives through a callback.
class SpacesThemeCatalogService : public QObject {
    Q_OBJECT
public:
    enum class CatalogError { invalidCatalog, invalidDownload, incompatible };
    Q_ENUM(CatalogError)
    // The text shown for an error.
    static QString message(CatalogError error);

    static constexpr const char *kDefaultCatalogURL = "https://tillmora.app/spaces/catalog.json";
    static constexpr const char *kCatalogURLKey = "themeCatalogURL";
    static constexpr const char *kThemeHashKeyPrefix = "CatalogThemeHash_";
    static constexpr const char *kSpaceOriginsKey = "CatalogThemeSpaceOrigins_v1";
    // The newest package format this build imports.
    static constexpr int kPackageSchemaVersion = 1;
    static constexpr qint64 kMaxPackageBytes = qint64(512) * 1024 * 1024;
    // What a server may send beyond the size the catalogue announced.
    static constexpr qint64 kSizeMargin = 64 * 1024;
    static constexpr qint64 kMaxCatalogBytes = 8 * 1024 * 1024;

    using Timeouts = SpacesThemeCatalogTimeouts;

    // Returns the new Space's id, or nothing with the reason in *error.
    using Importer = std::function<std::optional<QUuid>(const QString &packageFile, QString *error)>;
    using ProgressHandler = std::function<void(double fraction)>;
    using LoadDone = std::function<void(const std::optional<SpacesThemeCatalog> &catalog, const QString &error)>;

    struct InstallResult {
        std::optional<QUuid> spaceId;
        // Unset when the importer failed (message is its own text) or the
        // install was cancelled (message empty).
        std::optional<CatalogError> error;
        QString message;
        bool cancelled = false;
    };
    using InstallDone = std::function<void(const InstallResult &result)>;

    // catalogURL empty = the one configured in the standard store, else the default.
    SpacesThemeCatalogService(std::shared_ptr<UserDefaultsStoreType> standardStore, const QUrl &catalogURL = {},
                              Timeouts timeouts = {}, QObject *parent = nullptr);
    ~SpacesThemeCatalogService() override;

    QUrl catalogURL() const;
    static bool isAllowedPackageURL(const QUrl &url);
    // Makes the certificates of SSL_CERT_FILE trusted by every connection of
    // the process (the panel's previews load through Qt Quick's own access).
    static void trustEnvironmentCertificates();
    // Whether this exact package (same checksum) was installed before.
    bool isInstalled(const SpacesCatalogTheme &theme) const;
    // The catalogue entry a Space was installed from, if any.
    QString originOf(const QUuid &spaceId) const;

    // Fetches the catalogue; a load already running is dropped.
    void load(LoadDone done);
    // Downloads, verifies and imports one entry; an install already running
    // is cancelled. Relative addresses resolve against the last loaded
    // catalogue document.
    void install(const SpacesCatalogTheme &theme, Importer importer, ProgressHandler progress, InstallDone done);
    void cancel();
    bool isInstalling() const { return m_install != nullptr; }

Q_SIGNALS:
    void downloadProgress(double fraction);

private:
    QNetworkAccessManager *network();
    struct Install;
    // The configuration with SSL_CERT_FILE's certificates trusted too; none
    // when the variable names no certificates.
    static std::optional<QSslConfiguration> withEnvironmentCertificates(QSslConfiguration configuration);
    QNetworkRequest request(const QUrl &url, std::chrono::milliseconds transferTimeout) const;
    void finishLoad(const std::optional<SpacesThemeCatalog> &catalog, const QString &why);
    void onCatalogFinished();
    void onPackageData();
    void onPackageFinished();
    void verifyAndImport();
    void finishInstall(InstallResult result);
    void fail(CatalogError error, const QString &why);
    void reportProgress(double fraction);
    bool isCurrent(quint64 serial) const;

    std::shared_ptr<UserDefaultsStoreType> m_store;
    QUrl m_explicitURL;
    Timeouts m_timeouts;
    QNetworkAccessManager *m_network = nullptr;
    std::optional<QSslConfiguration> m_ssl; // with the network, at the first request
    QPointer<QNetworkReply> m_catalogReply;
    LoadDone m_loadDone;
    QUrl m_documentURL;
    std::unique_ptr<Install> m_install;
    quint64 m_serial = 0;
    QTimer m_totalTimer; // the whole download, however slowly it trickles
};
