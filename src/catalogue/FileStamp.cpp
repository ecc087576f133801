#include "catalogue/FileStamp.h"

#include <QFile>
#include <cerrno>
#include <sys/stat.h>

std::optional<FileStamp> FileStamp::of(const QString &path, int *error)
{
    struct stat st;
    const QByteArray name = QFile::encodeName(path);
    if (::stat(name.constData(), &st) != 0) {
        if (error)
            *error = errno;
        return std::nullopt;
    }
    return FileStamp{qint64(st.st_ino), qint64(st.st_size), qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec,
                     qint64(st.st_ctim.tv_sec) * 1000000000 + st.st_ctim.tv_nsec};
}
