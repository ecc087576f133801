#include "input/ApplicationActivity.h"

#include <QGuiApplication>

QtApplicationActivity::QtApplicationActivity(QObject *parent)
    : ApplicationActivity(parent)
{
    if (qGuiApp)
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                Q_EMIT becameActive();
        });
}

bool QtApplicationActivity::isActive() const
{
    return qGuiApp && QGuiApplication::applicationState() == Qt::ApplicationActive;
}
