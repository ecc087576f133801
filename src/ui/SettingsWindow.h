#pragma once

#include "ui/IconImageProvider.h"
#include "ui/SettingsPresenter.h"

#include <QObject>
#include <memory>

class QQuickView;

// The settings window: an ordinary window of its own (it shows in the
// taskbar and stays when the overlay goes), drawn by SettingsWindow.qml.
class SettingsWindow : public QObject {
    Q_OBJECT
public:
    SettingsWindow(SettingsPresenter::Services services, IconImageProvider::Resolver icons, QObject *parent = nullptr);
    ~SettingsWindow() override;

    void show();
    SettingsPresenter *presenter() { return m_presenter.get(); }
    QQuickView *view() { return m_view.get(); }

private:
    std::unique_ptr<SettingsPresenter> m_presenter;
    std::unique_ptr<QQuickView> m_view;
};
