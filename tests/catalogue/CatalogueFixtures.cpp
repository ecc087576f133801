#include "CatalogueFixtures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <plist/plist.h>
#include <stdexcept>

namespace CatalogueFixtures {

QByteArray plistBytes(const BundleSpec &info)
{
    plist_t dict = plist_new_dict();
    const auto put = [dict](const char *key, const QString &value) {
        if (!value.isEmpty())
            plist_dict_set_item(dict, key, plist_new_string(value.toUtf8().constData()));
    };
    put("CFBundleIdentifier", info.identifier);
    put("CFBundleName", info.name);
    put("CFBundleDisplayName", info.displayName);
    put("CFBundleIconFile", info.iconFile);
    put("CFBundlePackageType", QStringLiteral("APPL"));
    char *data = nullptr;
    uint32_t length = 0;
    if (info.format == PlistFormat::Binary)
        plist_to_bin(dict, &data, &length);
    else
        plist_to_xml(dict, &data, &length);
    const QByteArray bytes(data, qsizetype(length));
    if (info.format == PlistFormat::Binary)
        plist_to_bin_free(data);
    else
        plist_to_xml_free(data);
    plist_free(dict);
    return bytes;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write fixture " + path.toStdString());
}

QString makeBundle(const QString &dir, const QString &fileName, const BundleSpec &info)
{
    const QString bundle = dir + u'/' + fileName;
    writeFile(bundle + QStringLiteral("/Contents/Info.plist"), plistBytes(info));
    return bundle;
}

QString makeDesktopEntry(const QString &applicationsDir, const QString &relativePath, const QString &lines)
{
    const QString path = applicationsDir + u'/' + relativePath;
    writeFile(path, ("[Desktop Entry]\n" + lines + u'\n').toUtf8());
    return path;
}

QStringList paths(const QList<AppItem> &items)
{
    QStringList out;
    for (const AppItem &item : items)
        out.append(item.path);
    return out;
}

QStringList names(const QList<AppItem> &items)
{
    QStringList out;
    for (const AppItem &item : items)
        out.append(item.displayName);
    return out;
}

}
