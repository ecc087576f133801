#pragma once

#include <QString>
#include <functional>

// The desktop's own file chooser, for picking a folder to place or an image
// for an icon.
class FileChooser {
public:
    enum class Kind { Folder, Image };
    // The chosen path; empty when the user cancelled.
    using Chosen = std::function<void(const QString &path)>;

    virtual ~FileChooser() = default;
    // Asks and returns at once; chosen runs later on the main thread. False
    // when there is no chooser to ask (chosen is then never called).
    virtual bool choose(Kind kind, const QString &title, Chosen chosen) = 0;
};
