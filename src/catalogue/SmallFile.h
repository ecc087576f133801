#pragma once

#include <QByteArray>
#include <QString>

// Reading the small files a catalogue is made of (Info.plist files, desktop
// entries) without trusting what stands at the path: the file is opened
// without blocking, must be a regular file and is read only up to a cap. A
// FIFO, a link to /dev/zero or a file of gigabytes costs one open and one
// fstat, never a hang or a read.
namespace SmallFile {

inline constexpr qint64 kMaxBytes = 1024 * 1024;

enum class Status {
    Read,       // bytes holds the whole file
    Missing,    // nothing there (or a dangling link)
    Unreadable, // there, but this run may not read it (permissions, I/O error)
    Refused,    // not a regular file, or larger than the cap: never an application
};

struct Result {
    Status status = Status::Missing;
    QByteArray bytes;
};

Result read(const QString &path, qint64 maxBytes = kMaxBytes);

}
