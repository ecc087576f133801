#pragma once

#include "layout/PageGeometry.h"

#include <QStringList>

// A slot list being edited, counting every cell write so the model can
// advance layoutRevision by exactly that many steps.
class SlotEdit {
public:
    explicit SlotEdit(QStringList &slots) : m_slots(slots) {}

    const QStringList &slots() const { return m_slots; }
    qsizetype size() const { return m_slots.size(); }
    QString at(qsizetype index) const { return SlotList::at(m_slots, index); }
    bool isEmptyAt(qsizetype index) const { return at(index).isEmpty(); }
    qsizetype indexOf(const QString &key, qsizetype from = 0) const { return m_slots.indexOf(key, from); }

    // Writes a cell, first padding the list with empty keys up to it.
    void set(qsizetype index, const QString &key)
    {
        SlotList::write(m_slots, index, key);
        ++m_writes;
    }
    void clear(qsizetype index) { set(index, QString()); }
    // Extending the list is a write of its own (new empty cells appear).
    void padTo(qsizetype length)
    {
        if (m_slots.size() >= length)
            return;
        SlotList::padTo(m_slots, length);
        ++m_writes;
    }
    void append(const QString &key) { set(m_slots.size(), key); }

    qint64 writes() const { return m_writes; }

private:
    QStringList &m_slots;
    qint64 m_writes = 0;
};
