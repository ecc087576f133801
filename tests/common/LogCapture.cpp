#include "common/LogCapture.h"

#include <QMutex>

namespace {
QMutex g_mutex;
QStringList g_messages;
QtMessageHandler g_previous = nullptr;
bool g_quiet = qEnvironmentVariableIsEmpty("TILLMORA_TEST_VERBOSE");

void handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    {
        QMutexLocker lock(&g_mutex);
        g_messages.append(message);
    }
    if (g_previous && (!g_quiet || type >= QtWarningMsg))
        g_previous(type, context, message);
}
}

LogCapture::LogCapture()
{
    m_previous = qInstallMessageHandler(handler);
    g_previous = m_previous;
    clear();
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
}

QStringList LogCapture::messages() const
{
    QMutexLocker lock(&g_mutex);
    return g_messages;
}

bool LogCapture::contains(const QString &message) const
{
    return messages().contains(message);
}

QStringList LogCapture::matching(const QString &prefix) const
{
    QStringList out;
    for (const QString &m : messages())
        if (m.startsWith(prefix))
            out.append(m);
    return out;
}

int LogCapture::count(const QString &message) const
{
    return int(messages().count(message));
}

void LogCapture::clear()
{
    QMutexLocker lock(&g_mutex);
    g_messages.clear();
}
