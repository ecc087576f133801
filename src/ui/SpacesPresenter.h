#pragma once

#include "spaces/SpaceEditViewModel.h"
#include "spaces/SpacesViewModel.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>
#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>


// The editor's model lives below the UI, which registers it for QML.
struct SpaceEditViewModelForeign {
    Q_GADGET
    QML_FOREIGN(SpaceEditViewModel)
    QML_NAMED_ELEMENT(SpaceEditViewModel)
    QML_UNCREATABLE("Held by the SpacesPresenter")
};

// The Space strip and the Space editor: the Spaces as chips, switching, and
// one Space at a time in the editor (a new one, or one being changed).
class SpacesPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of the GridPresenter")
    Q_PROPERTY(bool available READ available NOTIFY spacesChanged)
    Q_PROPERTY(QVariantList spaces READ spaces NOTIFY spacesChanged)
    Q_PROPERTY(QString activeSpaceId READ activeSpaceId NOTIFY activeSpaceChanged)
    Q_PROPERTY(SpaceEditViewModel *editor READ editor CONSTANT)
    // The Space in the editor; empty while a new one is being made.
    Q_PROPERTY(QString editingId READ editingId NOTIFY editingChanged)
    // Why the last save was refused, in words; empty when it was not.
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
public:
    explicit SpacesPresenter(QObject *parent = nullptr);

    void setModel(SpacesViewModel *model);

    bool available() const { return m_model != nullptr; }
    QVariantList spaces() const;
    QString activeSpaceId() const;
    SpaceEditViewModel *editor() { return &m_editor; }
    QString editingId() const { return m_editingId; }
    QString error() const { return m_error; }

    Q_INVOKABLE void switchTo(const QString &id); // "" = the standard profile
    Q_INVOKABLE void beginCreate();
    Q_INVOKABLE void beginEdit(const QString &id);
    // Saves what the editor holds; false (with error set) when refused.
    // A new Space starts from the current profile or the default layout.
    Q_INVOKABLE bool save(bool withCurrentSettings);
    Q_INVOKABLE void deleteEditing();
    // A pressed key combination for the editor's shortcut; false when it is
    // not one (no modifier, or a key we cannot register).
    Q_INVOKABLE bool captureHotKey(int qtKey, int modifiers);
    // "Ctrl+Super+1", as the keys are printed on a PC keyboard.
    Q_INVOKABLE QString hotKeyText() const;
    Q_INVOKABLE QString text(const QString &messageId) const;
    Q_INVOKABLE QString weekdayLabel(int weekday) const;

Q_SIGNALS:
    void spacesChanged();
    void activeSpaceChanged();
    void editingChanged();
    void errorChanged();
    void notice(const QString &text);

private:
    void setError(const QString &error);

    QPointer<SpacesViewModel> m_model;
    SpaceEditViewModel m_editor;
    QString m_editingId;
    QString m_error;
};
