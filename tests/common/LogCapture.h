#pragma once

#include <QStringList>
#include <QtGlobal>

// Captures every log message while alive, so tests can assert the exact
// lines a branch writes. Messages still reach the previous handler.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();

    QStringList messages() const;
    bool contains(const QString &message) const;
    // Messages that start with the given text.
    QStringList matching(const QString &prefix) const;
    int count(const QString &message) const;
    void clear();

private:
    QtMessageHandler m_previous;
};
