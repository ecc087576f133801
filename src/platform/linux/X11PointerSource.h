#pragma once

#include "input/PointerSource.h"

#include <QByteArray>
#include <memory>

class XcbEventConnection;

// The pointer as Qt sees it (QCursor over the X server), and XInput 2 raw
// motion as the movement listener: raw events reach every client,
// whichever window the pointer is over.
class X11PointerSource final : public PointerSource {
public:
    explicit X11PointerSource(const QByteArray &displayName = {});
    ~X11PointerSource() override;

    QPoint cursorPosition() const override;
    QList<QRect> screenGeometries() const override;
    bool isMotionListenerAllowed() override;
    bool startMotionListener(std::function<void()> onMotion) override;
    void stopMotionListener() override;

private:
    bool selectRawMotion(bool on);

    QByteArray m_displayName;
    std::unique_ptr<XcbEventConnection> m_x;
    quint8 m_xinputOpcode = 0;
    bool m_xinputChecked = false;
    bool m_motionPending = false;
    std::function<void()> m_onMotion;
};
