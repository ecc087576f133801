#include "ui/SettingsWindow.h"

#include "input/HotCornersManager.h"
#include "input/HotKeyManager.h"
#include "ui/ShortcutCapture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QPushButton>

SettingsWindow::SettingsWindow(HotKeyManager &hotKeys, HotCornersManager &corners, StartAtLogin startAtLogin,
                               QWidget *parent)
    : QWidget(parent)
    , m_hotKeys(hotKeys)
{
    setWindowTitle(tr("Tillmora Settings"));
    auto *form = new QFormLayout(this);

    auto *shortcutOn = new QCheckBox(tr("Show and hide Tillmora with"), this);
    shortcutOn->setChecked(hotKeys.isEnabled());
    connect(shortcutOn, &QCheckBox::toggled, &hotKeys, [&hotKeys](bool on) { hotKeys.setEnabled(on); });
    m_shortcut = new QPushButton(this);
    m_shortcut->setAccessibleName(tr("Shortcut; press to record a new one"));
    m_shortcut->installEventFilter(this);
    connect(m_shortcut, &QPushButton::clicked, this, [this] {
        m_capturing = true;
        m_shortcut->setText(tr("Press the new shortcut…"));
        m_shortcut->grabKeyboard();
    });
    connect(&hotKeys, &HotKeyManager::shortcutChanged, this, &SettingsWindow::refreshShortcut);
    form->addRow(shortcutOn, m_shortcut);
    refreshShortcut();

    auto *corner = new QComboBox(this);
    const std::pair<HotCorner, QString> corners_[] = {{HotCorner::none, tr("None")},
                                                      {HotCorner::topLeft, tr("Top left")},
                                                      {HotCorner::topRight, tr("Top right")},
                                                      {HotCorner::bottomLeft, tr("Bottom left")},
                                                      {HotCorner::bottomRight, tr("Bottom right")}};
    for (const auto &[value, label] : corners_)
        corner->addItem(label, int(value));
    corner->setCurrentIndex(corner->findData(int(corners.isEnabled() ? corners.selectedCorner() : HotCorner::none)));
    connect(corner, &QComboBox::currentIndexChanged, &corners, [&corners, corner](int) {
        const auto value = HotCorner(corner->currentData().toInt());
        corners.setSelectedCorner(value);
        corners.setEnabled(value != HotCorner::none);
    });
    form->addRow(tr("Hot corner"), corner);

    auto *login = new QCheckBox(tr("Start Tillmora when I log in"), this);
    login->setChecked(startAtLogin.isEnabled && startAtLogin.isEnabled());
    connect(login, &QCheckBox::toggled, this, [login, startAtLogin](bool on) {
        if (!startAtLogin.setEnabled || !startAtLogin.setEnabled(on)) {
            const QSignalBlocker block(login);
            login->setChecked(!on);
        }
    });
    form->addRow(login);
}

void SettingsWindow::refreshShortcut()
{
    m_shortcut->setText(m_hotKeys.displayText());
}

bool SettingsWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_shortcut || !m_capturing || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier) {
        m_capturing = false; // cancelled
    } else if (const auto shortcut = ShortcutCapture::fromKeyPress(key->key(), key->modifiers())) {
        m_capturing = false;
        m_hotKeys.updateHotKey(shortcut->modifierFlags, shortcut->keyCode);
    } else {
        return true; // a lone modifier, or a key without a name: keep listening
    }
    m_shortcut->releaseKeyboard();
    refreshShortcut();
    return true;
}
