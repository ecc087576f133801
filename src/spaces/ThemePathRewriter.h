#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <functional>
#include <optional>

// Turns the file paths a snapshot holds into package references
// ("asset:" + folder + "/" + file name) and back. The paths are the
// wallpaper, the notch background, and every image path inside the encoded
// custom icons, workflows, widgets, folder icon styles and notch widgets.
class ThemePathRewriter {
public:
    static constexpr const char *kAssetPrefix = "asset:";

    struct ExportResult {
        QJsonObject snapshot;
        qint64 assetBytes = 0;
    };

    // Copies each referenced file that exists into its folder under
    // stagingFolder and points the snapshot at the copy.
    static std::optional<ExportResult> exportAssets(const QJsonObject &snapshot, const QString &stagingFolder,
                                                    QString *error);
    // Copies each referenced file of the package into assetFolder and points
    // the snapshot at it. A reference whose file the package lacks is
    // dropped (the image falls back to none); *missing counts them.
    static std::optional<QJsonObject> importAssets(const QJsonObject &snapshot, const QString &packageRoot,
                                                   const QString &assetFolder, int *missing, QString *error);

    // The snapshot's encoded fields (base64 of JSON) as JSON and back.
    static QJsonDocument dataField(const QJsonObject &snapshot, const char *field);
    static void setDataField(QJsonObject &snapshot, const char *field, const QJsonDocument &document);

    // A package reference (and not the name of a built-in icon, "asset:name").
    static bool isPackageReference(const QString &value);

private:
    // Calls rewrite on every file path the snapshot holds with the package
    // folder it belongs in; rewrite returns the replacement, or nothing to
    // drop the path.
    using Rewrite = std::function<std::optional<QString>(const QString &path, const char *folder)>;
    static QJsonObject rewriteAll(const QJsonObject &snapshot, const Rewrite &rewrite);
};
