#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <functional>

// One run of the command-line program, as a script sees it.
struct CommandRun {
    int exitCode = -1; // -1: it did not finish within a minute
    QString out;
    QString err;
};

// A headless command line over the fixture's applications only: no display,
// the given bundle folder and desktop-entry data folders instead of the
// machine's.
inline QProcessEnvironment commandEnvironment(const QString &bundleDirs, const QString &dataDirs)
{
    QProcessEnvironment pe = QProcessEnvironment::systemEnvironment();
    pe.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    pe.insert(QStringLiteral("TILLMORA_APP_DIRS"), bundleDirs);
    pe.insert(QStringLiteral("XDG_DATA_DIRS"), dataDirs);
    pe.remove(QStringLiteral("DISPLAY"));
    return pe;
}

// workDir: the caller's folder (relative files are the caller's); childSetup
// runs in the child before it starts (limits, signals).
inline CommandRun runCommand(const QString &binary, const QStringList &args, const QProcessEnvironment &environment,
                             const QString &workDir = {}, std::function<void()> childSetup = {})
{
    QProcess p;
    p.setProcessEnvironment(environment);
    if (!workDir.isEmpty())
        p.setWorkingDirectory(workDir);
    if (childSetup)
        p.setChildProcessModifier(std::move(childSetup));
    p.start(binary, args);
    if (!p.waitForFinished(60000))
        return {};
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}
