#include "catalogue/AppSource.h"

namespace AppItems {

AppItem make(const QString &path, const QString &displayName, const QString &identity)
{
    // A fixed namespace: ids are name-based (version 5) UUIDs of the path.
    static const QUuid kNamespace(QStringLiteral("{6f1d3a52-8c0e-4f7b-9a41-2b5e7d9c0a13}"));
    return {QUuid::createUuidV5(kNamespace, path), path, displayName, identity};
}

}
