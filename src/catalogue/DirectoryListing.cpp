#include "catalogue/DirectoryListing.h"

#include <QFile>
#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>

namespace DirectoryListing {

static Entry::Type typeOf(const dirent *entry, const QByteArray &folder)
{
    switch (entry->d_type) {
    case DT_DIR: return Entry::Type::Directory;
    case DT_LNK: return Entry::Type::Symlink;
    case DT_UNKNOWN: break; // some file systems do not tell; ask the inode
    default: return Entry::Type::Other;
    }
    struct stat st;
    if (::lstat((folder + '/' + entry->d_name).constData(), &st) != 0)
        return Entry::Type::Other;
    if (S_ISLNK(st.st_mode))
        return Entry::Type::Symlink;
    return S_ISDIR(st.st_mode) ? Entry::Type::Directory : Entry::Type::Other;
}

std::optional<QList<Entry>> list(const QString &path)
{
    const QByteArray folder = QFile::encodeName(path);
    DIR *dir = ::opendir(folder.constData());
    if (!dir)
        return std::nullopt;
    QList<Entry> entries;
    while (const dirent *entry = ::readdir(dir)) {
        const char *name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        entries.append({QFile::decodeName(name), typeOf(entry, folder)});
    }
    ::closedir(dir);
    std::sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        const int folded = a.name.compare(b.name, Qt::CaseInsensitive);
        return folded != 0 ? folded < 0 : a.name < b.name;
    });
    return entries;
}

}
