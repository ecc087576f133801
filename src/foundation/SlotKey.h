#pragma once

#include <QString>
#include <QStringList>
#include <QUuid>

// The text key of one grid cell: empty, "A:" + app path, "F:" + folder id,
// "W:"/"WB:" + widget id (anchor / covered cell), "WF:" + workflow id. A key
// with no known prefix is an older bare app path.
namespace SlotKey {

enum class Kind { Empty, App, Folder, WidgetAnchor, WidgetBlock, Workflow };

inline const QString kAppPrefix = QStringLiteral("A:");
inline const QString kFolderPrefix = QStringLiteral("F:");
inline const QString kWidgetPrefix = QStringLiteral("W:");
inline const QString kWidgetBlockPrefix = QStringLiteral("WB:");
inline const QString kWorkflowPrefix = QStringLiteral("WF:");

QString app(const QString &path);
QString folder(const QUuid &id);
QString widgetAnchor(const QUuid &id);
QString widgetBlock(const QUuid &id);
QString workflow(const QUuid &id);

// Prefixes are tested in the order "A:", "F:", "W:", "WB:", "WF:".
Kind kindOf(const QString &key);
// The payload after the prefix, trimmed of white space and line breaks. For a
// bare path, the path itself; for the empty key, empty.
QString payload(const QString &key);
// The app path of an app key ("A:" or bare), or empty for any other kind.
QString appPath(const QString &key);
// The id text of a folder, widget or workflow key, or empty.
QString idText(const QString &key);

bool isWidgetMarker(const QString &key);
// Removed by the load-time sanitize pass: exactly "A:" or "F:", or an "A:"
// or "F:" key whose payload is blank.
bool isMalformedAppOrFolder(const QString &key);
// Treated like an empty cell by a move: malformed as above, or any prefixed
// key whose payload is blank.
bool isEmptyOrMalformed(const QString &key);

// The apps a layout references: bare and "A:" keys as paths, other kinds skipped.
QStringList appPathsIn(const QStringList &slots);

}
