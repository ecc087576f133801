#include "spaces/SpacesThemeCatalogViewModel.h"

#include "foundation/Uuids.h"

#include <QPointer>

SpacesThemeCatalogViewModel::SpacesThemeCatalogViewModel(std::shared_ptr<SpacesThemeCatalogService> service,
                                                         SpacesThemeCatalogService::Importer importer,
                                                         QObject *parent)
    : QObject(parent), m_service(std::move(service)), m_importer(std::move(importer))
{
}

QString SpacesThemeCatalogViewModel::creditsText(const SpacesCatalogTheme &theme)
{
    const auto names = [](const QList<SpacesCatalogTheme::Credit> &credits) {
        QStringList out;
        for (const auto &credit : credits)
            out.append(credit.name);
        return out.join(QStringLiteral(", "));
    };
    QStringList parts;
    if (theme.wallpaper)
        parts.append(QStringLiteral("Wallpaper: ") + theme.wallpaper->name);
    if (!theme.widgets.isEmpty())
        parts.append(QStringLiteral("Widgets: ") + names(theme.widgets));
    if (!theme.icons.isEmpty())
        parts.append(QStringLiteral("Icons: ") + names(theme.icons));
    return parts.join(QStringLiteral(" · "));
}

QVariantList SpacesThemeCatalogViewModel::themes() const
{
    QVariantList out;
    for (const SpacesCatalogTheme &theme : m_catalog.themes) {
        // Previews come from where the catalogue lives, and over HTTPS only.
        const QUrl screenshot = m_service->catalogURL().resolved(QUrl(theme.screenshotURL));
        const bool showable = !theme.screenshotURL.isEmpty() && screenshot.scheme() == QLatin1String("https");
        out.append(QVariantMap{{"id", theme.id},
                               {"name", theme.name},
                               {"description", theme.description},
                               {"screenshotURL", showable ? screenshot.toString() : QString()},
                               {"fileSize", theme.fileSize},
                               {"author", theme.author ? theme.author->name : QString()},
                               {"credits", creditsText(theme)},
                               {"isInstalled", m_service->isInstalled(theme)}});
    }
    return out;
}

void SpacesThemeCatalogViewModel::load()
{
    if (m_isLoading)
        return;
    m_isLoading = true;
    Q_EMIT isLoadingChanged();
    setErrorMessage({});
    QPointer<SpacesThemeCatalogViewModel> self(this);
    m_service->load([self](const std::optional<SpacesThemeCatalog> &catalog, const QString &error) {
        if (!self)
            return;
        self->m_isLoading = false;
        Q_EMIT self->isLoadingChanged();
        if (!catalog)
            return self->setErrorMessage(error);
        self->m_catalog = *catalog;
        Q_EMIT self->themesChanged();
    });
}

void SpacesThemeCatalogViewModel::install(const QString &id)
{
    const SpacesCatalogTheme *theme = m_catalog.theme(id);
    if (!theme || !m_downloadingID.isEmpty())
        return;
    setErrorMessage({});
    setProgress(0);
    setDownloading(id);
    QPointer<SpacesThemeCatalogViewModel> self(this);
    m_service->install(
        *theme, m_importer,
        [self](double fraction) {
            if (self)
                self->setProgress(fraction);
        },
        [self](const SpacesThemeCatalogService::InstallResult &result) {
            if (!self)
                return;
            self->setDownloading({});
            self->setProgress(0);
            if (!result.spaceId)
                return self->setErrorMessage(result.message);
            Q_EMIT self->themesChanged(); // isInstalled changed
            Q_EMIT self->installed(Uuids::toText(*result.spaceId));
        });
}

void SpacesThemeCatalogViewModel::cancel()
{
    m_service->cancel();
}

void SpacesThemeCatalogViewModel::setErrorMessage(const QString &message)
{
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

void SpacesThemeCatalogViewModel::setDownloading(const QString &id)
{
    if (m_downloadingID == id)
        return;
    m_downloadingID = id;
    Q_EMIT downloadingIDChanged();
}

void SpacesThemeCatalogViewModel::setProgress(double fraction)
{
    if (qFuzzyCompare(m_downloadProgress + 1, fraction + 1))
        return;
    m_downloadProgress = fraction;
    Q_EMIT downloadProgressChanged();
}
