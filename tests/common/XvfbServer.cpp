#include "common/XvfbServer.h"

#include <QStandardPaths>

XvfbServer::XvfbServer(QSize screen)
{
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty())
        return;
    // Xvfb picks a free display and writes its number to the given fd.
    m_process.start(xvfb, {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                           QStringLiteral("tcp"), QStringLiteral("-noreset"), QStringLiteral("-screen"), QStringLiteral("0"),
                           QStringLiteral("%1x%2x24").arg(screen.width()).arg(screen.height())});
    if (!m_process.waitForStarted(5000))
        return;
    QByteArray out;
    while (!out.contains('\n') && m_process.waitForReadyRead(10000))
        out += m_process.readAllStandardOutput();
    const QByteArray number = out.trimmed();
    if (!number.isEmpty())
        m_display = ':' + number;
}

XvfbServer::~XvfbServer()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished(2000);
    }
}

bool XvfbServer::haveTools()
{
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()
        && !QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty();
}

bool XvfbServer::xdotool(const QStringList &arguments) const
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral("xdotool"), arguments);
    return p.waitForFinished(10000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}
