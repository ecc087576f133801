#pragma once

#include "app/ApplicationPlatform.h"

#include <QStringList>

class InstanceChannel;

// Start-up's platform questions answered on a Linux desktop: the login-item
// launch is a launch with --login-item (what the autostart entry passes), the
// other running copy is whoever owns the per-user instance channel.
class LinuxApplicationPlatform final : public ApplicationPlatform {
public:
    static constexpr const char *kLoginItemFlag = "--login-item";

    LinuxApplicationPlatform(InstanceChannel &channel, QStringList arguments);

    bool launchedAsLoginItem() const override;
    qint64 ownProcessId() const override;
    QList<RunningInstance> runningInstances() override;
    void activate(qint64 processId) override;
    void terminate() override;
    void setDockIconVisible(bool visible) override;
    void registerFonts() override;

    bool dockIconVisible() const { return m_dockIconVisible; }

private:
    InstanceChannel &m_channel;
    QStringList m_arguments;
    bool m_dockIconVisible = true;
};
