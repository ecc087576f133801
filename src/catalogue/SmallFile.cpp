#include "catalogue/SmallFile.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace SmallFile {

static Status statusOf(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR: return Status::Missing;
    case ELOOP: // a link loop never leads to a file
    case ENXIO: // a socket or a FIFO without a writer
        return Status::Refused;
    default: return Status::Unreadable;
    }
}

Result read(const QString &path, qint64 maxBytes)
{
    // Non-blocking: opening a FIFO must not wait for a writer.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return {statusOf(errno), {}};
    Result result;
    struct stat st;
    if (::fstat(fd, &st) != 0) {
        result.status = Status::Unreadable;
    } else if (!S_ISREG(st.st_mode) || st.st_size > maxBytes) {
        result.status = Status::Refused;
    } else {
        result.status = Status::Read;
        result.bytes.reserve(qsizetype(st.st_size));
        char buffer[16384];
        for (;;) {
            const ssize_t n = ::read(fd, buffer, sizeof buffer);
            if (n == 0)
                break;
            if (n < 0) {
                if (errno == EINTR)
                    continue;
                result = {Status::Unreadable, {}};
                break;
            }
            result.bytes.append(buffer, n);
            if (result.bytes.size() > maxBytes) { // grew since the fstat
                result = {Status::Refused, {}};
                break;
            }
        }
    }
    ::close(fd);
    return result;
}

}
