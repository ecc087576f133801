#include "layout/FolderNames.h"

#include <QCoreApplication>
#include <QSet>

namespace {
struct Main {
    const char *category;
    const char *name;
};
// Specific before general: two games that are also utilities make "Games".
constexpr Main kMain[] = {
    {"Game", QT_TRANSLATE_NOOP("FolderNames", "Games")},
    {"Development", QT_TRANSLATE_NOOP("FolderNames", "Development")},
    {"Graphics", QT_TRANSLATE_NOOP("FolderNames", "Graphics")},
    {"Office", QT_TRANSLATE_NOOP("FolderNames", "Office")},
    {"Education", QT_TRANSLATE_NOOP("FolderNames", "Education")},
    {"Science", QT_TRANSLATE_NOOP("FolderNames", "Science")},
    {"AudioVideo", QT_TRANSLATE_NOOP("FolderNames", "Sound & Video")},
    {"Audio", QT_TRANSLATE_NOOP("FolderNames", "Sound & Video")},
    {"Video", QT_TRANSLATE_NOOP("FolderNames", "Sound & Video")},
    {"Network", QT_TRANSLATE_NOOP("FolderNames", "Internet")},
    {"Settings", QT_TRANSLATE_NOOP("FolderNames", "Settings")},
    {"System", QT_TRANSLATE_NOOP("FolderNames", "System")},
    {"Utility", QT_TRANSLATE_NOOP("FolderNames", "Utilities")},
};
}

QString FolderNames::fromCategories(const QList<QStringList> &categoriesOfEachApp)
{
    if (!categoriesOfEachApp.isEmpty()) {
        for (const Main &main : kMain) {
            // Audio, Video and AudioVideo are one group: any of them counts.
            const QString name = QString::fromLatin1(main.name);
            bool shared = true;
            for (const QStringList &categories : categoriesOfEachApp) {
                bool has = false;
                for (const Main &other : kMain)
                    if (QString::fromLatin1(other.name) == name && categories.contains(QLatin1String(other.category)))
                        has = true;
                shared = shared && has;
            }
            if (shared)
                return QCoreApplication::translate("FolderNames", main.name);
        }
    }
    return QCoreApplication::translate("FolderNames", "Folder");
}
