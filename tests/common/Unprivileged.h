#pragma once

#include <QString>

// While it lives, the calling thread loses root's power to read what
// permissions forbid (CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH), so a test can
// make a file or folder unreadable with chmod even when it runs as root.
class Unprivileged {
public:
    Unprivileged();
    ~Unprivileged();
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

    // Whether this thread really cannot open path (false when the powers
    // could not be dropped).
    static bool lockedOut(const QString &path);

private:
    bool m_dropped = false;
};
