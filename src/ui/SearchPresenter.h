#pragma once

#include "ui/PagesModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

class ActivationPresenter;
class CellFactory;
class LaunchpadViewModel;

// Typing filters the installed apps (hidden ones excepted) by name.
class SearchPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(bool active READ isActive NOTIFY textChanged)
    Q_PROPERTY(AppListModel *results READ results CONSTANT)
public:
    SearchPresenter(LaunchpadViewModel &layout, const CellFactory &cells, ActivationPresenter &activation,
                    QObject *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    bool isActive() const { return !m_text.isEmpty(); }
    AppListModel *results() { return &m_results; }
    Q_INVOKABLE void append(const QString &typed) { setText(m_text + typed); }
    Q_INVOKABLE void backspace() { setText(m_text.left(m_text.size() - 1)); }
    Q_INVOKABLE void clear() { setText(QString()); }
    Q_INVOKABLE void activateResult(int index);
    void rebuild();

Q_SIGNALS:
    void textChanged();

private:
    LaunchpadViewModel &m_layout;
    const CellFactory &m_cells;
    ActivationPresenter &m_activation;
    AppListModel m_results;
    QString m_text;
};
