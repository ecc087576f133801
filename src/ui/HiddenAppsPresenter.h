#pragma once

#include "ui/PagesModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

class CellFactory;
class LaunchpadViewModel;

// The apps the user hid, by name, and bringing them back.
class HiddenAppsPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    Q_PROPERTY(AppListModel *apps READ apps CONSTANT)
public:
    HiddenAppsPresenter(LaunchpadViewModel &layout, const CellFactory &cells, QObject *parent = nullptr);

    AppListModel *apps() { return &m_apps; }
    Q_INVOKABLE void hide(const QString &key);
    Q_INVOKABLE void unhide(const QString &key);
    void rebuild();

private:
    LaunchpadViewModel &m_layout;
    const CellFactory &m_cells;
    AppListModel m_apps;
};
