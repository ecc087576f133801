#pragma once

#include "foundation/GridRecords.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Application bundles and desktop entries built in temporary folders, for the
// catalogue's tests and benchmark.
namespace CatalogueFixtures {

enum class PlistFormat { Xml, Binary };

struct BundleSpec {
    QString identifier;
    QString name;        // CFBundleName, left out when empty
    QString displayName; // CFBundleDisplayName, left out when empty
    QString iconFile;    // CFBundleIconFile, left out when empty
    PlistFormat format = PlistFormat::Xml;
};

QByteArray plistBytes(const BundleSpec &info);
// Writes bytes to path, creating the parent folders.
void writeFile(const QString &path, const QByteArray &bytes);
// <dir>/<fileName>/Contents/Info.plist; returns the bundle's path.
QString makeBundle(const QString &dir, const QString &fileName, const BundleSpec &info);
// <applicationsDir>/<relativePath> holding "[Desktop Entry]" and the given
// lines; returns the file's path.
QString makeDesktopEntry(const QString &applicationsDir, const QString &relativePath, const QString &lines);

QStringList paths(const QList<AppItem> &items);
QStringList names(const QList<AppItem> &items);

}
