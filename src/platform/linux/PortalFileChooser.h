#pragma once

#include "platform/FileChooser.h"

#include <QObject>

// The XDG desktop portal's file chooser (org.freedesktop.portal.FileChooser)
// over the session bus: the desktop's own dialog, whatever toolkit it uses.
class PortalFileChooser final : public QObject, public FileChooser {
    Q_OBJECT
public:
    bool choose(Kind kind, const QString &title, Chosen chosen) override;
};
