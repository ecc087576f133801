#include "spaces/ThemePathRewriter.h"

#include "foundation/Logging.h"
#include "spaces/ThemePackage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>

#include <sys/stat.h>

namespace {

namespace P = ThemePackageLayout;

struct PlainField {
    const char *name;
    const char *folder;
};
const PlainField kPlainFields[] = {{"customBackgroundImagePath", P::kWallpaperFolder},
                                   {"notchBackgroundImage", P::kNotchBackgroundFolder}};
const PlainField kDataFields[] = {{"customAppIconsData", P::kCustomIconsFolder},
                                  {"workflowsData", P::kWorkflowIconsFolder},
                                  {"widgetsData", P::kWidgetsFolder},
                                  {"notchWidgetsData", P::kWidgetsFolder},
                                  {"folderIconStylesData", P::kFolderIconsFolder}};

// Inside the encoded records an image is any string under a key that names
// one ("imagePath", "overlayImagePath", "backgroundImagePath", "image").
bool isImageKey(const QString &key)
{
    return key.endsWith(QLatin1String("imagePath"), Qt::CaseInsensitive) || key == QLatin1String("image");
}

QJsonValue rewriteValue(const QJsonValue &value, const QString &key, const char *folder,
                        const std::function<std::optional<QString>(const QString &, const char *)> &rewrite)
{
    if (value.isObject()) {
        QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it)
            it.value() = rewriteValue(it.value(), it.key(), folder, rewrite);
        return object;
    }
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (qsizetype i = 0; i < array.size(); ++i)
            array[i] = rewriteValue(array.at(i), key, folder, rewrite);
        return array;
    }
    if (value.isString() && isImageKey(key) && !value.toString().isEmpty())
        return rewrite(value.toString(), folder).value_or(QString());
    return value;
}

bool isRegularFile(const QString &path)
{
    struct stat st {};
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0 && S_ISREG(st.st_mode);
}

}

bool ThemePathRewriter::isPackageReference(const QString &value)
{
    return value.startsWith(QLatin1String(kAssetPrefix)) && value.contains(u'/');
}

QJsonDocument ThemePathRewriter::dataField(const QJsonObject &snapshot, const char *field)
{
    const QJsonValue value = snapshot.value(QLatin1String(field));
    return value.isString() ? QJsonDocument::fromJson(QByteArray::fromBase64(value.toString().toLatin1()))
                            : QJsonDocument();
}

void ThemePathRewriter::setDataField(QJsonObject &snapshot, const char *field, const QJsonDocument &document)
{
    snapshot.insert(QLatin1String(field), QString::fromLatin1(document.toJson(QJsonDocument::Compact).toBase64()));
}

QJsonObject ThemePathRewriter::rewriteAll(const QJsonObject &snapshot, const Rewrite &rewrite)
{
    QJsonObject result = snapshot;
    for (const auto &[name, folder] : kPlainFields) {
        const QString path = snapshot.value(QLatin1String(name)).toString();
        if (path.isEmpty())
            continue;
        if (const auto replaced = rewrite(path, folder))
            result.insert(QLatin1String(name), *replaced);
        else
            result.remove(QLatin1String(name));
    }
    for (const auto &[name, folder] : kDataFields) {
        const QJsonDocument document = dataField(snapshot, name);
        if (document.isNull())
            continue;
        const QJsonValue root = document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
        const QJsonValue rewritten = rewriteValue(root, QString(), folder, rewrite);
        if (rewritten == root)
            continue;
        setDataField(result, name, rewritten.isObject() ? QJsonDocument(rewritten.toObject())
                                                        : QJsonDocument(rewritten.toArray()));
    }
    return result;
}

std::optional<ThemePathRewriter::ExportResult> ThemePathRewriter::exportAssets(const QJsonObject &snapshot,
                                                                               const QString &stagingFolder,
                                                                               QString *error)
{
    ExportResult result;
    QHash<QString, QString> copied; // package folder + source path -> reference
    QString failure;
    result.snapshot = rewriteAll(snapshot, [&](const QString &path, const char *folder) -> std::optional<QString> {
        if (path.startsWith(QLatin1String(kAssetPrefix)))
            return path; // a built-in icon travels by name
        const QString copyKey = QLatin1String(folder) + u'\n' + path;
        if (const auto it = copied.constFind(copyKey); it != copied.constEnd())
            return *it;
        const QFileInfo source(path);
        // A file that is gone here cannot travel; the path means nothing on
        // another machine either.
        if (!source.isFile())
            return std::nullopt;
        const QString folderPath = QDir(stagingFolder).filePath(QLatin1String(folder));
        QDir().mkpath(folderPath);
        QString name = source.fileName();
        for (int n = 2; QFileInfo::exists(QDir(folderPath).filePath(name)); ++n)
            name = source.completeBaseName() + u'-' + QString::number(n)
                   + (source.suffix().isEmpty() ? QString() : u'.' + source.suffix());
        if (!QFile::copy(path, QDir(folderPath).filePath(name))) {
            if (failure.isEmpty())
                failure = QStringLiteral("could not copy %1").arg(path);
            return std::nullopt;
        }
        result.assetBytes += source.size();
        const QString reference = QLatin1String(kAssetPrefix) + QLatin1String(folder) + u'/' + name;
        copied.insert(copyKey, reference);
        return reference;
    });
    if (!failure.isEmpty()) {
        if (error)
            *error = failure;
        return std::nullopt;
    }
    return result;
}

std::optional<QJsonObject> ThemePathRewriter::importAssets(const QJsonObject &snapshot, const QString &packageRoot,
                                                           const QString &assetFolder, int *missing, QString *error)
{
    QHash<QString, QString> copied; // reference -> copy
    QString failure;
    int missingCount = 0;
    const QJsonObject result = rewriteAll(snapshot, [&](const QString &value, const char *) -> std::optional<QString> {
        if (!isPackageReference(value)) {
            // A path of the machine that made the package: it cannot name a
            // file the package brought, and must not name one of ours.
            if (value.startsWith(QLatin1String(kAssetPrefix)))
                return value;
            return std::nullopt;
        }
        if (const auto it = copied.constFind(value); it != copied.constEnd())
            return *it;
        const QString relative = value.mid(qsizetype(qstrlen(kAssetPrefix)));
        const QStringList parts = relative.split(u'/');
        const bool wellFormed = parts.size() == 2 && P::knownTopLevelNames().contains(parts.first())
                                && !parts.last().isEmpty() && parts.last() != QLatin1String("..")
                                && parts.last() != QLatin1String(".");
        const QString source = QDir(packageRoot).filePath(relative);
        if (!wellFormed || !isRegularFile(source)) {
            ++missingCount;
            qCWarning(lcSpaces, "Theme asset %s is not in the package", qUtf8Printable(value));
            return std::nullopt;
        }
        const QString folder = QDir(assetFolder).filePath(parts.first());
        const QString target = QDir(folder).filePath(parts.last());
        if (!QDir().mkpath(folder) || (QFileInfo::exists(target) && !QFile::remove(target))
            || !QFile::copy(source, target)) {
            if (failure.isEmpty())
                failure = QStringLiteral("could not copy %1 to %2").arg(relative, folder);
            return std::nullopt;
        }
        copied.insert(value, target);
        return target;
    });
    if (!failure.isEmpty()) {
        if (error)
            *error = failure;
        return std::nullopt;
    }
    if (missing)
        *missing = missingCount;
    return result;
}
