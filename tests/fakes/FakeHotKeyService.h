#pragma once

#include "input/HotKeyService.h"

#include <QList>
#include <QMap>

// Records registrations like the system facility would hold them: a
// combination already held by a registration (or listed in takenElsewhere)
// fails with kHotKeyExistsErr. press() delivers like a real key press.
class FakeHotKeyService final : public HotKeyService {
public:
    struct Live {
        quint32 keyCode;
        quint32 modifiers;
        HotKeyId id;
    };

    QList<QPair<quint32, quint32>> takenElsewhere;
    int handlersInstalled = 0;
    int registerCalls = 0;
    int unregisterCalls = 0;

    Handle installHandler(PressHandler handler) override
    {
        ++handlersInstalled;
        m_handler = std::move(handler);
        return 0x1000 + Handle(handlersInstalled);
    }

    Registration registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id) override
    {
        ++registerCalls;
        if (takenElsewhere.contains(qMakePair(keyCode, modifiers)))
            return {kHotKeyExistsErr, 0};
        for (const Live &l : std::as_const(m_live))
            if (l.keyCode == keyCode && l.modifiers == modifiers)
                return {kHotKeyExistsErr, 0};
        const Handle handle = ++m_nextHandle;
        m_live.insert(handle, {keyCode, modifiers, id});
        return {kNoErr, handle};
    }

    qint32 unregisterHotKey(Handle handle) override
    {
        ++unregisterCalls;
        return m_live.remove(handle) ? kNoErr : kHotKeyInvalidErr;
    }

    QList<Live> live() const { return m_live.values(); }
    // The live registration carrying this identity, if any.
    std::optional<Live> find(HotKeyId id) const
    {
        for (const Live &l : m_live)
            if (l.id == id)
                return l;
        return std::nullopt;
    }
    // A press of a registered combination, reported by its identity.
    bool pressCombination(quint32 keyCode, quint32 modifiers)
    {
        for (const Live &l : std::as_const(m_live))
            if (l.keyCode == keyCode && l.modifiers == modifiers) {
                press(l.id);
                return true;
            }
        return false;
    }
    // Delivers an identity as the facility would, registered or not.
    void press(HotKeyId id)
    {
        if (m_handler)
            m_handler(id);
    }

private:
    PressHandler m_handler;
    QMap<Handle, Live> m_live;
    Handle m_nextHandle = 0;
};
