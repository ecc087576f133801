#include "catalogue/DirectoryListing.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace DirectoryListing {

static Entry::Type typeOf(const dirent *entry, int folderFd)
{
    switch (entry->d_type) {
    case DT_DIR: return Entry::Type::Directory;
    case DT_LNK: return Entry::Type::Symlink;
    case DT_UNKNOWN: break; // some file systems do not tell; ask the inode
    default: return Entry::Type::Other;
    }
    struct stat st;
    if (::fstatat(folderFd, entry->d_name, &st, AT_SYMLINK_NOFOLLOW) != 0)
        return Entry::Type::Other;
    if (S_ISLNK(st.st_mode))
        return Entry::Type::Symlink;
    return S_ISDIR(st.st_mode) ? Entry::Type::Directory : Entry::Type::Other;
}

std::optional<QList<Entry>> list(const QString &path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return std::nullopt;
    return list(fd);
}

std::optional<QList<Entry>> list(int directoryFd)
{
    DIR *dir = ::fdopendir(directoryFd);
    if (!dir) {
        ::close(directoryFd);
        return std::nullopt;
    }
    QList<Entry> entries;
    for (;;) {
        errno = 0;
        const dirent *entry = ::readdir(dir);
        if (!entry)
            break;
        const char *name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        entries.append({QFile::decodeName(name), typeOf(entry, ::dirfd(dir))});
    }
    const bool complete = errno == 0;
    ::closedir(dir);
    if (!complete)
        return std::nullopt;
    std::sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        const int folded = a.name.compare(b.name, Qt::CaseInsensitive);
        return folded != 0 ? folded < 0 : a.name < b.name;
    });
    return entries;
}

}
