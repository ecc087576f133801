#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// The part of a bundle's information dictionary (Info.plist, XML or binary)
// the catalogue uses.
struct BundleInfo {
    QString identifier;  // CFBundleIdentifier
    QString name;        // CFBundleName
    QString displayName; // CFBundleDisplayName
    QString iconFile;    // CFBundleIconFile

    // Reads <bundle>/Contents/Info.plist, or <bundle>/Info.plist for flat
    // bundles. Nothing when neither exists or neither is a dictionary.
    static std::optional<BundleInfo> read(const QString &bundlePath);
    // The two places an information dictionary may stand, in that order.
    static constexpr const char *kPlistLocations[] = {"/Contents/Info.plist", "/Info.plist"};
    // A pure function of the bytes (XML or binary property list).
    static std::optional<BundleInfo> parse(const QByteArray &plistBytes);

    // The name shown under the icon: CFBundleDisplayName, else CFBundleName,
    // else the file name without ".app".
    QString shownName(const QString &bundlePath) const;
    // The bundle's icon image in Contents/Resources, or empty.
    QString iconPath(const QString &bundlePath) const;
};
