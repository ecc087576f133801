#pragma once

#include "spaces/SpaceItem.h"

#include <QObject>
#include <QVariantList>

// The Space editor's state: what the user typed, kept as typed (a time range
// holds its "HH:mm" texts until it is saved), and the checks before saving.
class SpaceEditViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QString emoji READ emoji WRITE setEmoji NOTIFY changed)
    Q_PROPERTY(QString iconBackgroundColor READ iconBackgroundColor WRITE setIconBackgroundColor NOTIFY changed)
    Q_PROPERTY(bool autoSwitchEnabled READ autoSwitchEnabled WRITE setAutoSwitchEnabled NOTIFY changed)
    Q_PROPERTY(bool hasHotKey READ hasHotKey NOTIFY changed)
    Q_PROPERTY(qint64 hotKeyKeyCode READ hotKeyKeyCode NOTIFY changed)
    Q_PROPERTY(quint64 hotKeyModifiers READ hotKeyModifiers NOTIFY changed)
    // Each: {kind: "timeOfDay"|"daysOfWeek"|"focusMode", startText, endText,
    // hasTime, weekdays: [1..7]}.
    Q_PROPERTY(QVariantList triggers READ triggers NOTIFY changed)
    // A message id, empty when the last check passed.
    Q_PROPERTY(QString errorKey READ errorKey NOTIFY changed)
public:
    explicit SpaceEditViewModel(QObject *parent = nullptr);

    // "HH:mm" (or "H:mm"), 00:00 ... 24:00; nothing for anything else.
    static std::optional<double> parseTime(const QString &text);
    static QString formatTime(double hours);
    // The message id of what is wrong with a time range, or empty.
    static QString rangeError(const QString &startText, const QString &endText);

    void load(const SpaceItem &space);
    // The edited Space; only meaningful after validate() passed.
    SpaceItem edited() const;

    QString name() const { return m_space.name; }
    void setName(const QString &name);
    QString emoji() const { return m_space.emoji; }
    void setEmoji(const QString &emoji);
    QString iconBackgroundColor() const { return m_space.iconBackgroundColor; }
    void setIconBackgroundColor(const QString &color);
    bool autoSwitchEnabled() const { return m_space.autoSwitchEnabled; }
    void setAutoSwitchEnabled(bool enabled);
    bool hasHotKey() const { return m_space.hasHotKey(); }
    qint64 hotKeyKeyCode() const { return m_space.hotKeyKeyCode.value_or(0); }
    quint64 hotKeyModifiers() const { return m_space.hotKeyModifiers.value_or(0); }
    QVariantList triggers() const;
    QString errorKey() const { return m_errorKey; }

    Q_INVOKABLE void setHotKey(qint64 keyCode, quint64 modifiers);
    Q_INVOKABLE void clearHotKey();
    // A new time range starts as 09:00-17:00; days as Monday to Friday.
    Q_INVOKABLE void addTimeRange();
    Q_INVOKABLE void addDays();
    // Kept and shown, but never switches: nothing tells us the focus mode.
    Q_INVOKABLE void addFocus();
    Q_INVOKABLE void removeTrigger(int index);
    // Committing a start at or after the end moves the end an hour past it
    // (at most 24:00).
    Q_INVOKABLE void setStartText(int index, const QString &text);
    Q_INVOKABLE void setEndText(int index, const QString &text);
    Q_INVOKABLE void setTimed(int index, bool timed);
    Q_INVOKABLE void toggleWeekday(int index, int weekday);
    void setWeekdays(int index, const QList<int> &weekdays);
    // Checks every time range in order; false with errorKey set on the first
    // that is wrong.
    Q_INVOKABLE bool validate();

Q_SIGNALS:
    void changed();

private:
    struct Row {
        SpaceTrigger::Kind kind = SpaceTrigger::Kind::timeOfDay;
        QString startText;
        QString endText;
        bool hasTime = true;
        QList<int> weekdays;
    };
    bool valid(int index) const { return index >= 0 && index < m_rows.size(); }

    SpaceItem m_space;
    QList<Row> m_rows;
    QString m_errorKey;
};
