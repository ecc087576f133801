#include "common/TempEnvironment.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {
const char *const kVariables[] = {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "HOME"};
}

TempEnvironment::TempEnvironment()
{
    for (int i = 0; i < 4; ++i)
        m_saved[i] = qgetenv(kVariables[i]);
    const QString base = m_dir.path();
    for (const char *sub : {"config", "data", "runtime", "home"})
        QDir().mkpath(base + u'/' + QLatin1String(sub));
    QFile::setPermissions(base + QStringLiteral("/runtime"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("XDG_CONFIG_HOME", (base + QStringLiteral("/config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (base + QStringLiteral("/data")).toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", (base + QStringLiteral("/runtime")).toLocal8Bit());
    qputenv("HOME", (base + QStringLiteral("/home")).toLocal8Bit());
}

TempEnvironment::~TempEnvironment()
{
    for (int i = 0; i < 4; ++i) {
        // A newer environment made before this one ended owns the variables now.
        if (!qgetenv(kVariables[i]).startsWith(m_dir.path().toLocal8Bit()))
            continue;
        if (m_saved[i].isNull())
            qunsetenv(kVariables[i]);
        else
            qputenv(kVariables[i], m_saved[i]);
    }
}

QString TempEnvironment::configDir() const { return m_dir.path() + QStringLiteral("/config/tillmora"); }
QString TempEnvironment::dataDir() const { return m_dir.path() + QStringLiteral("/data/tillmora"); }
QString TempEnvironment::runtimeDir() const { return m_dir.path() + QStringLiteral("/runtime"); }
QString TempEnvironment::path(const QString &relative) const { return m_dir.path() + u'/' + relative; }
