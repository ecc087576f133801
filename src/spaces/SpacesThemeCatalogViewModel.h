#pragma once

#include "spaces/SpacesThemeCatalogService.h"

#include <QObject>
#include <QVariantList>
#include <memory>

// The themes catalogue as the Spaces settings show it: the list of themes,
// which one is downloading and how far, and the last error.
class SpacesThemeCatalogViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList themes READ themes NOTIFY themesChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString downloadingID READ downloadingID NOTIFY downloadingIDChanged)
    Q_PROPERTY(double downloadProgress READ downloadProgress NOTIFY downloadProgressChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString emptyText READ emptyText CONSTANT)
    Q_PROPERTY(QString installingText READ installingText CONSTANT)
public:
    static constexpr const char *kEmptyText = "No themes available yet.";
    static constexpr const char *kInstallingText = "Installing theme…";

    SpacesThemeCatalogViewModel(std::shared_ptr<SpacesThemeCatalogService> service,
                                SpacesThemeCatalogService::Importer importer, QObject *parent = nullptr);

    QVariantList themes() const;
    bool isLoading() const { return m_isLoading; }
    QString downloadingID() const { return m_downloadingID; }
    double downloadProgress() const { return m_downloadProgress; }
    QString errorMessage() const { return m_errorMessage; }
    static QString emptyText() { return QString::fromUtf8(kEmptyText); }
    static QString installingText() { return QString::fromUtf8(kInstallingText); }

    Q_INVOKABLE void load();
    Q_INVOKABLE void install(const QString &id);
    Q_INVOKABLE void cancel();

    // "Wallpaper by …" and the like, for one line under the theme's name.
    static QString creditsText(const SpacesCatalogTheme &theme);

Q_SIGNALS:
    void themesChanged();
    void isLoadingChanged();
    void downloadingIDChanged();
    void downloadProgressChanged();
    void errorMessageChanged();
    void installed(const QString &spaceId);

private:
    void setErrorMessage(const QString &message);
    void setDownloading(const QString &id);
    void setProgress(double fraction);

    std::shared_ptr<SpacesThemeCatalogService> m_service;
    SpacesThemeCatalogService::Importer m_importer;
    SpacesThemeCatalog m_catalog;
    bool m_isLoading = false;
    QString m_downloadingID;
    double m_downloadProgress = 0;
    QString m_errorMessage;
};
