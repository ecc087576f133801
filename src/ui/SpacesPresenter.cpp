#include "ui/SpacesPresenter.h"

#include "foundation/Uuids.h"
#include "input/ShortcutNames.h"
#include "spaces/SpaceTexts.h"
#include "spaces/SpacesViewModel.h"
#include "ui/ShortcutCapture.h"

SpacesPresenter::SpacesPresenter(QObject *parent) : QObject(parent) {}

void SpacesPresenter::setModel(SpacesViewModel *model)
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    if (model) {
        connect(model, &SpacesViewModel::spacesChanged, this, &SpacesPresenter::spacesChanged);
        connect(model, &SpacesViewModel::activeSpaceChanged, this, &SpacesPresenter::activeSpaceChanged);
        connect(model, &SpacesViewModel::themeImported, this, &SpacesPresenter::notice);
    }
    Q_EMIT spacesChanged();
    Q_EMIT activeSpaceChanged();
}

QVariantList SpacesPresenter::spaces() const
{
    return m_model ? m_model->spacesForView() : QVariantList();
}

QString SpacesPresenter::activeSpaceId() const
{
    return m_model ? m_model->activeSpaceIdText() : QString();
}

void SpacesPresenter::switchTo(const QString &id)
{
    if (m_model)
        m_model->switchToSpace(id);
}

void SpacesPresenter::beginCreate()
{
    SpaceItem fresh;
    fresh.emoji = QStringLiteral("✨");
    fresh.iconBackgroundColor = QStringLiteral("#5B7FFF");
    m_editor.load(fresh);
    m_editingId.clear();
    setError({});
    Q_EMIT editingChanged();
}

void SpacesPresenter::beginEdit(const QString &id)
{
    const auto uuid = Uuids::fromText(id);
    const auto space = m_model && uuid ? m_model->space(*uuid) : std::nullopt;
    if (!space)
        return;
    m_editor.load(*space);
    m_editingId = id;
    setError({});
    Q_EMIT editingChanged();
}

bool SpacesPresenter::save(bool withCurrentSettings)
{
    if (!m_model)
        return false;
    if (m_editor.name().trimmed().isEmpty()) {
        setError(tr("A Space needs a name."));
        return false;
    }
    if (!m_editor.validate()) {
        setError(text(m_editor.errorKey()));
        return false;
    }
    SpaceItem edited = m_editor.edited();
    edited.name = edited.name.trimmed();
    if (m_editingId.isEmpty()) {
        // Refused before anything is made, so a conflict leaves no half Space.
        if (edited.hasHotKey() && m_model->hotKeyOwner(*edited.hotKeyKeyCode, *edited.hotKeyModifiers, {})) {
            setError(text(QLatin1String(SpaceTexts::kConflictAlert)));
            return false;
        }
        const SpaceItem made =
            m_model->createSpace(edited.name, edited.emoji, edited.iconBackgroundColor, withCurrentSettings);
        edited.id = made.id;
        edited.snapshotId = made.snapshotId;
        edited.createdAt = made.createdAt;
    }
    QString errorKey;
    if (!m_model->updateSpace(edited, &errorKey)) {
        setError(text(errorKey));
        return false;
    }
    setError({});
    return true;
}

void SpacesPresenter::deleteEditing()
{
    const auto uuid = Uuids::fromText(m_editingId);
    if (!m_model || !uuid)
        return;
    QString error;
    if (!m_model->deleteSpace(*uuid, &error))
        setError(error);
    m_editingId.clear();
    Q_EMIT editingChanged();
}

bool SpacesPresenter::captureHotKey(int qtKey, int modifiers)
{
    const auto shortcut = ShortcutCapture::fromKeyPress(qtKey, Qt::KeyboardModifiers(modifiers));
    if (!shortcut)
        return false;
    m_editor.setHotKey(shortcut->keyCode, shortcut->modifierFlags);
    return true;
}

QString SpacesPresenter::hotKeyText() const
{
    if (!m_editor.hasHotKey())
        return {};
    return ShortcutNames::format(quint32(m_editor.hotKeyKeyCode()), m_editor.hotKeyModifiers());
}

QString SpacesPresenter::text(const QString &messageId) const
{
    return SpaceTexts::text(messageId.toLatin1().constData());
}

QString SpacesPresenter::weekdayLabel(int weekday) const
{
    return weekday >= 1 && weekday <= 7 ? SpaceTexts::text(SpaceTexts::kWeekdays[weekday - 1]) : QString();
}

void SpacesPresenter::setError(const QString &error)
{
    if (m_error == error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}
