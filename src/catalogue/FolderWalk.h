#pragma once

#include <QSet>
#include <QString>
#include <functional>

// Walks an application folder and the folders below it for a scan. Bounded
// twice over: by a depth limit, and by never entering a folder that is already
// on the way down (told by device and inode), so a link back up ("a -> .") is
// looked at once instead of for ever.
namespace FolderWalk {

struct Entry {
    QString path;     // the entry's full path
    QString relative; // its path below the root
    QString name;
    bool isFolder = false; // a folder, or a link to one when links are followed
};

struct Options {
    int maxDepth = 0;         // how many folder levels below the root are entered
    bool followLinks = false; // whether a link to a folder is entered
    // Told of every folder listed in full, with the names of its entries that
    // are folders or links (optional).
    std::function<void(const QString &folder, const QSet<QString> &subfolders)> listed;
};

// visit sees every entry in DirectoryListing order; for a folder it answers
// whether to enter it. A root that cannot be listed is skipped silently.
void walk(const QString &root, const Options &options, const std::function<bool(const Entry &)> &visit);

}
