#pragma once

#include <QElapsedTimer>
#include <QIcon>
#include <QObject>
#include <functional>
#include <memory>

class GridPresenter;
class LaunchpadWindowController;
class QQuickView;
class QScreen;

// The overlay window: created once, shown on the screen under the pointer
// when the controller asks for the overlay and hidden again, never rebuilt.
class OverlayWindow : public QObject {
    Q_OBJECT
public:
    OverlayWindow(LaunchpadWindowController &controller, GridPresenter &presenter,
                  std::function<QIcon(const QString &)> iconResolver, QObject *parent = nullptr);
    ~OverlayWindow() override;

    QQuickView *view() const { return m_view.get(); }
    // Whether the window appears in the desktop's taskbar (the dock icon).
    void setShowInTaskbar(bool show);

Q_SIGNALS:
    // The first frame after a show has been put on screen.
    void shownFrameSwapped();

private:
    static QScreen *targetScreen();
    void show();
    void hide();

    LaunchpadWindowController &m_controller;
    GridPresenter &m_presenter;
    std::unique_ptr<QQuickView> m_view;
    bool m_waitingForFrame = false;
    QElapsedTimer m_showTimer;
    // From a Space switch's start to the first frame of the new grid.
    bool m_waitingForSwitchFrame = false;
    QElapsedTimer m_switchTimer;
};
