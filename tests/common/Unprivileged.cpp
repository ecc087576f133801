#include "common/Unprivileged.h"

#include <QFile>
#include <fcntl.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

// Only the effective set changes, so the powers can be taken back.
static bool setDacPowers(bool on)
{
    constexpr quint32 kDac = (1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH);
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};
    if (::syscall(SYS_capget, &header, data) != 0)
        return false;
    data[0].effective = on ? data[0].effective | (data[0].permitted & kDac) : data[0].effective & ~kDac;
    return ::syscall(SYS_capset, &header, data) == 0;
}

Unprivileged::Unprivileged() : m_dropped(setDacPowers(false)) {}

Unprivileged::~Unprivileged()
{
    if (m_dropped)
        setDacPowers(true);
}

bool Unprivileged::lockedOut(const QString &path)
{
    // Not access(): for root it answers with every permitted capability.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd >= 0)
        ::close(fd);
    return fd < 0;
}
