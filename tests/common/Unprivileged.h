#pragma once

#include <QString>

// While it lives, the calling thread loses root's power to read and enter
// what permissions forbid (CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH), so a test
// can make a file or folder unreadable with chmod even when the suite runs as
// root. Threads started meanwhile by this thread inherit the loss.
class Unprivileged {
public:
    Unprivileged();
    ~Unprivileged();
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

    // Whether mode 000 really keeps this thread out of path (false when the
    // capabilities could not be dropped).
    static bool lockedOut(const QString &path);

private:
    bool m_dropped = false;
};
