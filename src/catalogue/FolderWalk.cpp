#include "catalogue/FolderWalk.h"

#include "catalogue/DirectoryListing.h"

#include <QFile>
#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace FolderWalk {

namespace {

struct FolderId {
    dev_t device;
    ino_t inode;
    bool operator==(const FolderId &) const = default;
};

class Walker {
public:
    Walker(const Options &options, const std::function<bool(const Entry &)> &visit)
        : m_options(options)
        , m_visit(visit)
    {
    }

    void enter(const QString &folder, const QString &relative, int depth)
    {
        const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
        if (fd < 0)
            return; // missing or unreadable: nothing below it is vouched for
        struct stat st;
        if (::fstat(fd, &st) != 0 || std::ranges::find(m_onPath, FolderId{st.st_dev, st.st_ino}) != m_onPath.end()) {
            ::close(fd);
            return;
        }
        const auto entries = DirectoryListing::list(fd);
        if (!entries)
            return;
        if (m_options.listed) {
            QSet<QString> subfolders;
            for (const auto &e : *entries)
                if (e.type != DirectoryListing::Entry::Type::Other)
                    subfolders.insert(e.name);
            m_options.listed(folder, subfolders);
        }

        m_onPath.push_back({st.st_dev, st.st_ino});
        for (const auto &e : *entries) {
            Entry entry{folder + u'/' + e.name, relative.isEmpty() ? e.name : relative + u'/' + e.name, e.name,
                        isFolder(folder, e)};
            const bool wanted = m_visit(entry);
            if (entry.isFolder && wanted && depth < m_options.maxDepth)
                enter(entry.path, entry.relative, depth + 1);
        }
        m_onPath.pop_back();
    }

private:
    bool isFolder(const QString &folder, const DirectoryListing::Entry &e) const
    {
        if (e.type == DirectoryListing::Entry::Type::Directory)
            return true;
        if (e.type != DirectoryListing::Entry::Type::Symlink || !m_options.followLinks)
            return false;
        struct stat st;
        return ::stat(QFile::encodeName(folder + u'/' + e.name).constData(), &st) == 0 && S_ISDIR(st.st_mode);
    }

    const Options &m_options;
    const std::function<bool(const Entry &)> &m_visit;
    std::vector<FolderId> m_onPath; // the folders from the root down to the one being listed
};

}

void walk(const QString &root, const Options &options, const std::function<bool(const Entry &)> &visit)
{
    Walker(options, visit).enter(root, QString(), 0);
}

}
