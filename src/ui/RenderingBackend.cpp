#include "ui/RenderingBackend.h"

#include <QDir>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace RenderingBackend {

void chooseBeforeApplication()
{
    if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND"))
        return;
    const bool haveGpu = !QDir(QStringLiteral("/dev/dri")).entryList({QStringLiteral("renderD*")}, QDir::System).isEmpty();
    if (!haveGpu)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

}
