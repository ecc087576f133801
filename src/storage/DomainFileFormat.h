#pragma once

#include <QSettings>
#include <QString>

// The on-disk form of one preferences domain: a JSON object from key to typed
// value (see PropertyListValue). Registered with QSettings, which supplies the
// lock file, the atomic save and the merge with other processes' writes.
namespace DomainFileFormat {

QSettings::Format format();

// QSettings treats "/" and "\" in keys as group separators and folds them;
// keys are escaped on their way in so that any text round-trips exactly.
QString escapeKey(const QString &key);
QString unescapeKey(const QString &escaped);

}
