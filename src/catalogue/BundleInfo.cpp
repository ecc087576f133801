#include "catalogue/BundleInfo.h"

#include "catalogue/SmallFile.h"

#include <QFileInfo>
#include <plist/plist.h>

namespace {

QString stringValue(plist_t dict, const char *key)
{
    plist_t node = plist_dict_get_item(dict, key);
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return {};
    uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return text ? QString::fromUtf8(text, qsizetype(length)) : QString();
}

std::optional<QByteArray> readFile(const QString &path)
{
    auto file = SmallFile::read(path);
    if (file.status != SmallFile::Status::Read)
        return std::nullopt;
    return std::move(file.bytes);
}

}


std::optional<BundleInfo> BundleInfo::parse(const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return std::nullopt;
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
    if (!root)
        return std::nullopt;
    std::optional<BundleInfo> info;
    if (plist_get_node_type(root) == PLIST_DICT) {
        info = BundleInfo{stringValue(root, "CFBundleIdentifier"), stringValue(root, "CFBundleName"),
                          stringValue(root, "CFBundleDisplayName"), stringValue(root, "CFBundleIconFile")};
    }
    plist_free(root);
    return info;
}

std::optional<BundleInfo> BundleInfo::read(const QString &bundlePath)
{
    for (const char *relative : kPlistLocations) {
        if (const auto bytes = readFile(bundlePath + QLatin1String(relative)))
            return parse(*bytes);
    }
    return std::nullopt;
}

QString BundleInfo::shownName(const QString &bundlePath) const
{
    if (!displayName.isEmpty())
        return displayName;
    if (!name.isEmpty())
        return name;
    QString fileName = QFileInfo(bundlePath).fileName();
    if (fileName.endsWith(QLatin1String(".app")))
        fileName.chop(4);
    return fileName;
}

QString BundleInfo::iconPath(const QString &bundlePath) const
{
    if (iconFile.isEmpty())
        return {};
    const QString resources = bundlePath + QStringLiteral("/Contents/Resources/");
    for (const QString &candidate : {iconFile, iconFile + QStringLiteral(".icns")}) {
        if (QFileInfo(resources + candidate).isFile())
            return resources + candidate;
    }
    return {};
}
