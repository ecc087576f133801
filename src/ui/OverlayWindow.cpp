#include "ui/OverlayWindow.h"

#include "app/LaunchpadWindowController.h"
#include "foundation/Logging.h"
#include "spaces/SpacesViewModel.h"
#include "ui/BackdropProvider.h"
#include "ui/GridPresenter.h"
#include "ui/IconImageProvider.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>

OverlayWindow::OverlayWindow(LaunchpadWindowController &controller, GridPresenter &presenter,
                             std::function<QIcon(const QString &)> iconResolver, QObject *parent)
    : QObject(parent)
    , m_controller(controller)
    , m_presenter(presenter)
    , m_view(std::make_unique<QQuickView>())
{
    m_view->engine()->addImageProvider(QStringLiteral("backdrop"), new BackdropProvider(presenter.backdrop()->frame()));
    m_view->engine()->addImageProvider(QStringLiteral("icon"), new IconImageProvider(std::move(iconResolver)));
    m_view->setInitialProperties({{QStringLiteral("presenter"), QVariant::fromValue(&presenter)}});
    m_view->setObjectName(QStringLiteral("LaunchpadMainOverlay"));
    m_view->setTitle(QStringLiteral("Tillmora"));
    m_view->setFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(QColor(21, 27, 43));
    m_view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tillmora/qml/Overlay.qml")));
    if (m_view->status() == QQuickView::Error) {
        for (const auto &error : m_view->errors())
            qCCritical(lcApp, "Overlay: %s", qUtf8Printable(error.toString()));
    }

    connect(&controller, &LaunchpadWindowController::overlayVisibleChanged, this,
            [this](bool visible) { visible ? show() : hide(); });
    // Pages are cut as the display will show them from the start, so a
    // command answered before the first show acts on the user's grid.
    m_presenter.setDisplay(targetScreen());
    connect(&controller, &LaunchpadWindowController::settingsChangedElsewhere, this,
            [this](const QStringList &keys) {
                m_presenter.pages()->reloadAppearance();
                const auto &look = BackdropPresenter::kSettingsKeys;
                if (std::any_of(keys.cbegin(), keys.cend(), [&](const QString &key) { return look.contains(key); }))
                    m_presenter.backdrop()->refresh();
            });
    connect(&controller, &LaunchpadWindowController::appearanceChanged, this, [this] {
        m_presenter.pages()->reloadAppearance();
        m_presenter.backdrop()->refresh();
    });
    connect(&controller, &LaunchpadWindowController::appsCustomized, &m_presenter, &GridPresenter::refreshApps);
    connect(&controller, &LaunchpadWindowController::saveStatusChanged, this,
            [this](bool saved, const QString &error) {
                m_presenter.showNotice(saved ? tr("Your changes are saved.")
                                             : tr("Your changes could not be saved: %1. Tillmora keeps them and tries "
                                                  "again.")
                                                   .arg(error));
            });
    connect(&presenter, &GridPresenter::hideRequested, &controller, &LaunchpadWindowController::hideOverlay);
    connect(&controller.spaces(), &SpacesViewModel::switchStarted, this, [this] {
        m_switchTimer.start();
        m_waitingForSwitchFrame = true;
    });
    connect(m_view.get(), &QQuickWindow::frameSwapped, this, [this] {
        if (m_waitingForSwitchFrame && m_view->isVisible()) {
            m_waitingForSwitchFrame = false;
            qCInfo(lcApp, "Space switched: first frame after %.1f ms", m_switchTimer.nsecsElapsed() / 1e6);
        }
        if (m_waitingForFrame) {
            m_waitingForFrame = false;
            qCInfo(lcApp, "Overlay shown: first frame after %.1f ms", m_showTimer.nsecsElapsed() / 1e6);
            Q_EMIT shownFrameSwapped();
        }
    });
    // A gesture never outlives the keyboard and pointer focus of the window.
    connect(m_view.get(), &QWindow::activeChanged, this, [this] {
        if (!m_view->isActive())
            m_presenter.drag()->cancel();
    });
    // Closing the window by the window manager only hides the overlay.
    connect(m_view.get(), &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible && m_controller.overlayVisible())
            m_controller.hideOverlay();
    });
}

OverlayWindow::~OverlayWindow() = default;

QScreen *OverlayWindow::targetScreen()
{
    // The overlay opens where the pointer is.
    QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : QGuiApplication::primaryScreen();
}

void OverlayWindow::setShowInTaskbar(bool show)
{
    m_view->setFlag(Qt::Tool, !show);
}

void OverlayWindow::show()
{
    m_showTimer.start();
    QScreen *screen = targetScreen();
    m_presenter.setDisplay(screen);
    // Only notices what changed unseen (a chosen file that went); the image
    // itself was made beforehand, or is made now on a worker thread while
    // the overlay opens over what is ready.
    m_presenter.backdrop()->refresh();
    m_view->setScreen(screen);
    m_view->setGeometry(screen->geometry());
    m_waitingForFrame = true;
    m_view->show();
    m_view->raise();
    m_view->requestActivate();
    m_presenter.notifyShown();
}

void OverlayWindow::hide()
{
    m_presenter.notifyHidden();
    m_view->hide();
}
