#include "catalogue/FileStamp.h"

#include <QFile>
#include <sys/stat.h>

std::optional<FileStamp> FileStamp::of(const QString &path)
{
    struct stat st;
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return std::nullopt;
    return FileStamp{qint64(st.st_ino), qint64(st.st_size), qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec,
                     qint64(st.st_ctim.tv_sec) * 1000000000 + st.st_ctim.tv_nsec};
}
