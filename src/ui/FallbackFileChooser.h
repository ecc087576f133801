#pragma once

#include "platform/FileChooser.h"

// Qt's own file dialog, for when the desktop offers no chooser of its own
// (no portal running). It stacks above the overlay, which would hide it.
class FallbackFileChooser final : public FileChooser {
public:
    bool choose(Kind kind, const QString &title, Chosen chosen) override;
    // The desktop's chooser when it answers, else this one.
    static void chooseWith(FileChooser *preferred, Kind kind, const QString &title, Chosen chosen);
};
