#include "ui/SettingsWindow.h"

#include "foundation/Logging.h"

#include <QQmlEngine>
#include <QQuickView>

SettingsWindow::SettingsWindow(SettingsPresenter::Services services, IconImageProvider::Resolver icons, QObject *parent)
    : QObject(parent)
    , m_presenter(std::make_unique<SettingsPresenter>(std::move(services)))
    , m_view(std::make_unique<QQuickView>())
{
    m_view->engine()->addImageProvider(QStringLiteral("icon"), new IconImageProvider(std::move(icons)));
    m_view->setInitialProperties({{QStringLiteral("settings"), QVariant::fromValue(m_presenter.get())}});
    m_view->setTitle(tr("Tillmora Settings"));
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(QColor(0x17, 0x1a, 0x22));
    m_view->setMinimumSize(QSize(640, 420));
    m_view->resize(860, 600);
    m_view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tillmora/qml/SettingsWindow.qml")));
    for (const auto &error : m_view->errors())
        qCCritical(lcApp, "Settings: %s", qUtf8Printable(error.toString()));
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::show()
{
    m_presenter->reload();
    m_view->show();
    m_view->raise();
    m_view->requestActivate();
}
