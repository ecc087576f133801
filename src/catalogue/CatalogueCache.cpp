#include "catalogue/CatalogueCache.h"

#include "foundation/Logging.h"
#include "foundation/RecordList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace CatalogueCache {

QList<AppItem> load(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString error;
    const auto apps = RecordList::decode<AppItem>(file.readAll(), &error);
    if (!apps) {
        qCWarning(lcServices, "Ignoring the catalogue cache %s: %s", qUtf8Printable(path), qUtf8Printable(error));
        return {};
    }
    return *apps;
}

bool save(const QString &path, const QList<AppItem> &apps)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(RecordList::encode(apps));
    return file.commit();
}

}
