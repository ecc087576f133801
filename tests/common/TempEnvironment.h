#pragma once

#include <QTemporaryDir>

// A private home for one test: XDG config, data and runtime folders in a
// temporary directory, set in the environment for this process and the
// processes it starts.
class TempEnvironment {
public:
    TempEnvironment();
    ~TempEnvironment();

    QString root() const { return m_dir.path(); }
    QString configDir() const;  // $XDG_CONFIG_HOME/tillmora
    QString dataDir() const;    // $XDG_DATA_HOME/tillmora
    QString runtimeDir() const; // $XDG_RUNTIME_DIR
    QString path(const QString &relative) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_saved[4];
};
