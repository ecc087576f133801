#include "foundation/SlotKey.h"

#include "foundation/Uuids.h"

namespace SlotKey {

QString app(const QString &path) { return kAppPrefix + path; }
QString folder(const QUuid &id) { return kFolderPrefix + Uuids::toText(id); }
QString widgetAnchor(const QUuid &id) { return kWidgetPrefix + Uuids::toText(id); }
QString widgetBlock(const QUuid &id) { return kWidgetBlockPrefix + Uuids::toText(id); }
QString workflow(const QUuid &id) { return kWorkflowPrefix + Uuids::toText(id); }

Kind kindOf(const QString &key)
{
    if (key.isEmpty())
        return Kind::Empty;
    if (key.startsWith(kAppPrefix))
        return Kind::App;
    if (key.startsWith(kFolderPrefix))
        return Kind::Folder;
    if (key.startsWith(kWidgetPrefix))
        return Kind::WidgetAnchor;
    if (key.startsWith(kWidgetBlockPrefix))
        return Kind::WidgetBlock;
    if (key.startsWith(kWorkflowPrefix))
        return Kind::Workflow;
    return Kind::App;
}

static qsizetype prefixLength(Kind kind, const QString &key)
{
    switch (kind) {
    case Kind::Empty: return 0;
    case Kind::App: return key.startsWith(kAppPrefix) ? 2 : 0;
    case Kind::Folder:
    case Kind::WidgetAnchor: return 2;
    case Kind::WidgetBlock:
    case Kind::Workflow: return 3;
    }
    return 0;
}

QString payload(const QString &key)
{
    const Kind kind = kindOf(key);
    return key.mid(prefixLength(kind, key)).trimmed();
}

QString appPath(const QString &key)
{
    return kindOf(key) == Kind::App ? payload(key) : QString();
}

QString idText(const QString &key)
{
    switch (kindOf(key)) {
    case Kind::Folder:
    case Kind::WidgetAnchor:
    case Kind::WidgetBlock:
    case Kind::Workflow: return payload(key);
    default: return {};
    }
}

bool isWidgetMarker(const QString &key)
{
    const Kind kind = kindOf(key);
    return kind == Kind::WidgetAnchor || kind == Kind::WidgetBlock;
}

bool isMalformedAppOrFolder(const QString &key)
{
    if (!key.startsWith(kAppPrefix) && !key.startsWith(kFolderPrefix))
        return false;
    return key.mid(2).trimmed().isEmpty();
}

bool isEmptyOrMalformed(const QString &key)
{
    const Kind kind = kindOf(key);
    if (kind == Kind::Empty)
        return true;
    if (prefixLength(kind, key) == 0)
        return false; // a bare path
    return payload(key).isEmpty();
}

QStringList appPathsIn(const QStringList &slots)
{
    QStringList out;
    for (const QString &key : slots) {
        const QString path = appPath(key);
        if (!path.isEmpty())
            out.append(path);
    }
    return out;
}

}
