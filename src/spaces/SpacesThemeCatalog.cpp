#include "spaces/SpacesThemeCatalog.h"

#include "foundation/JsonFields.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <cmath>

namespace {

// A whole number within [minimum, maximum]; JSON numbers arrive as doubles.
std::optional<qint64> wholeNumber(const QJsonValue &value, qint64 minimum, qint64 maximum)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (std::floor(number) != number || number < double(minimum) || number > double(maximum))
        return std::nullopt;
    return qint64(number);
}

bool fail(QString *error, const QString &message)
{
    if (error)
        *error = message;
    return false;
}

std::nullopt_t refuse(QString *error, const QString &message)
{
    fail(error, message);
    return std::nullopt;
}

// An absent or null credit is no credit; a present one must be well formed.
bool readCredit(const QJsonObject &json, const char *key, std::optional<SpacesCatalogTheme::Credit> *out,
                QString *error)
{
    const QJsonValue value = json.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull())
        return true;
    QString why;
    if (!value.isObject())
        return fail(error, QStringLiteral("key \"%1\": expected an object").arg(QLatin1String(key)));
    *out = SpacesCatalogTheme::Credit::fromJson(value.toObject(), &why);
    return *out ? true : fail(error, QStringLiteral("key \"%1\": %2").arg(QLatin1String(key), why));
}

bool readCredits(const QJsonObject &json, const char *key, QList<SpacesCatalogTheme::Credit> *out, QString *error)
{
    const QJsonValue value = json.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull())
        return true;
    if (!value.isArray())
        return fail(error, QStringLiteral("key \"%1\": expected a list").arg(QLatin1String(key)));
    for (const QJsonValue &entry : value.toArray()) {
        QString why;
        const auto credit = entry.isObject() ? SpacesCatalogTheme::Credit::fromJson(entry.toObject(), &why)
                                             : std::nullopt;
        if (!credit)
            return fail(error, QStringLiteral("key \"%1\": %2")
                                   .arg(QLatin1String(key), why.isEmpty() ? QStringLiteral("expected objects") : why));
        out->append(*credit);
    }
    return true;
}

QJsonArray creditsToJson(const QList<SpacesCatalogTheme::Credit> &credits)
{
    QJsonArray out;
    for (const auto &credit : credits)
        out.append(credit.toJson());
    return out;
}

} // namespace

std::optional<SpacesCatalogTheme::Credit> SpacesCatalogTheme::Credit::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    Credit credit;
    credit.name = f.string("name");
    credit.url = f.optionalString("url");
    credit.type = f.optionalString("type");
    return f.result(credit, error);
}

QJsonObject SpacesCatalogTheme::Credit::toJson() const
{
    QJsonObject json{{"name", name}};
    if (!url.isEmpty())
        json.insert(QLatin1String("url"), url);
    if (!type.isEmpty())
        json.insert(QLatin1String("type"), type);
    return json;
}

std::optional<SpacesCatalogTheme> SpacesCatalogTheme::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    SpacesCatalogTheme theme;
    theme.id = f.string("id");
    theme.themeId = f.string("themeId");
    theme.name = f.string("name");
    theme.description = f.optionalString("description");
    theme.screenshotURL = f.optionalString("screenshotURL");
    theme.downloadURL = f.string("downloadURL");
    theme.sha256 = f.string("sha256");
    if (!f.ok())
        return f.result(theme, error);
    // The ids name settings keys and the download is checked against these,
    // so an entry without them cannot be installed safely.
    if (theme.id.isEmpty() || theme.themeId.isEmpty())
        return refuse(error, QStringLiteral("key \"id\"/\"themeId\": empty"));
    if (theme.downloadURL.isEmpty())
        return refuse(error, QStringLiteral("key \"downloadURL\": empty"));
    static const QRegularExpression hex(QStringLiteral("^[0-9A-Fa-f]{64}$"));
    if (!hex.match(theme.sha256).hasMatch())
        return refuse(error, QStringLiteral("key \"sha256\": expected 64 hex digits"));
    const auto size = wholeNumber(json.value(QLatin1String("fileSize")), 1, qint64(1) << 52);
    if (!size)
        return refuse(error, QStringLiteral("key \"fileSize\": expected a positive whole number"));
    theme.fileSize = *size;
    const auto schema = wholeNumber(json.value(QLatin1String("packageSchemaVersion")), 1, 1 << 30);
    if (!schema)
        return refuse(error, QStringLiteral("key \"packageSchemaVersion\": expected a positive whole number"));
    theme.packageSchemaVersion = int(*schema);
    if (!readCredit(json, "author", &theme.author, error) || !readCredit(json, "wallpaper", &theme.wallpaper, error)
        || !readCredits(json, "widgets", &theme.widgets, error) || !readCredits(json, "icons", &theme.icons, error))
        return std::nullopt;
    return theme;
}

QJsonObject SpacesCatalogTheme::toJson() const
{
    QJsonObject json{{"id", id},
                     {"themeId", themeId},
                     {"name", name},
                     {"downloadURL", downloadURL},
                     {"fileSize", double(fileSize)},
                     {"sha256", sha256},
                     {"packageSchemaVersion", packageSchemaVersion}};
    if (!description.isEmpty())
        json.insert(QLatin1String("description"), description);
    if (!screenshotURL.isEmpty())
        json.insert(QLatin1String("screenshotURL"), screenshotURL);
    if (author)
        json.insert(QLatin1String("author"), author->toJson());
    if (wallpaper)
        json.insert(QLatin1String("wallpaper"), wallpaper->toJson());
    if (!widgets.isEmpty())
        json.insert(QLatin1String("widgets"), creditsToJson(widgets));
    if (!icons.isEmpty())
        json.insert(QLatin1String("icons"), creditsToJson(icons));
    return json;
}

std::optional<SpacesThemeCatalog> SpacesThemeCatalog::fromJson(const QByteArray &document, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(document, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return refuse(error, QStringLiteral("not JSON: %1").arg(parseError.errorString()));
    if (!json.isObject())
        return refuse(error, QStringLiteral("expected an object"));
    const QJsonObject root = json.object();
    SpacesThemeCatalog catalog;
    // A newer catalogue is still read: each entry says itself which package
    // format it needs, and installing refuses what this build cannot import.
    const auto schema = wholeNumber(root.value(QLatin1String("schemaVersion")), 1, 1 << 30);
    if (!schema)
        return refuse(error, QStringLiteral("key \"schemaVersion\": expected a positive whole number"));
    catalog.schemaVersion = int(*schema);
    const QJsonValue themes = root.value(QLatin1String("themes"));
    if (!themes.isArray())
        return refuse(error, QStringLiteral("key \"themes\": expected a list"));
    for (const QJsonValue &entry : themes.toArray()) {
        const qsizetype index = catalog.themes.size();
        QString why = QStringLiteral("expected an object");
        const auto theme = entry.isObject() ? SpacesCatalogTheme::fromJson(entry.toObject(), &why) : std::nullopt;
        if (!theme)
            return refuse(error, QStringLiteral("theme %1: %2").arg(index).arg(why));
        if (catalog.theme(theme->id))
            return refuse(error, QStringLiteral("theme %1: id \"%2\" listed twice").arg(index).arg(theme->id));
        catalog.themes.append(*theme);
    }
    return catalog;
}

QByteArray SpacesThemeCatalog::toJson() const
{
    QJsonArray list;
    for (const auto &theme : themes)
        list.append(theme.toJson());
    return QJsonDocument(QJsonObject{{"schemaVersion", schemaVersion}, {"themes", list}}).toJson();
}

const SpacesCatalogTheme *SpacesThemeCatalog::theme(const QString &id) const
{
    for (const auto &theme : themes)
        if (theme.id == id)
            return &theme;
    return nullptr;
}
