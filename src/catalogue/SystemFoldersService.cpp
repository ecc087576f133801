#include "catalogue/SystemFoldersService.h"

#include "foundation/Clock.h"
#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "storage/UserDefaultsStoreType.h"

#include <QFileInfo>
#include <QPointer>
#include <QRunnable>
#include <QThreadPool>
#include <QUrl>

namespace {
// The scan proper. Suggestions are off on purpose: the user picks folders
// with the desktop's chooser, so the picker offers nothing of its own.
QList<SystemFolderCategory> scanCategories()
{
    qCDebug(lcServices, LogTexts::kSystemFoldersScanEmpty);
    return {};
}
}

QString SystemFoldersServiceImpl::bookmarkKey(const QString &path)
{
    return QStringLiteral("folder_bookmark_") + path;
}

SystemFoldersServiceImpl::SystemFoldersServiceImpl(std::shared_ptr<UserDefaultsStoreType> standard,
                                                   std::shared_ptr<AppLauncher> launcher, std::shared_ptr<Clock> clock,
                                                   QObject *parent)
    : QObject(parent)
    , m_logger(lcServices())
    , m_standard(std::move(standard))
    , m_launcher(std::move(launcher))
    , m_clock(std::move(clock))
{
}

SystemFoldersServiceImpl::~SystemFoldersServiceImpl() = default;

void SystemFoldersServiceImpl::categories(CategoriesReady ready)
{
    // An empty list is never served from the cache: the scan runs again.
    if (m_lastScanAt && !m_cachedCategories.isEmpty()
        && double(m_clock->now() - *m_lastScanAt) / 1e9 < kCacheTTL) {
        qCDebug(m_logger, LogTexts::kSystemFoldersCached, long(m_cachedCategories.size()));
        const auto cached = m_cachedCategories;
        QMetaObject::invokeMethod(this, [ready, cached] { ready(cached); }, Qt::QueuedConnection);
        return;
    }
    if (m_categoriesInFlight) {
        qCDebug(m_logger, LogTexts::kSystemFoldersInFlight);
        m_categoriesInFlight->append(std::move(ready));
        return;
    }
    m_categoriesInFlight = QList<CategoriesReady>{std::move(ready)};
    QPointer<SystemFoldersServiceImpl> self(this);
    // Behind any other queued work of the pool: nobody is waiting on suggestions.
    QThreadPool::globalInstance()->start(
        [self] {
            const auto found = scanCategories();
            // The pool may outlive the service; the queued call is dropped then.
            if (self)
                QMetaObject::invokeMethod(self.data(), [self, found] {
                    if (self)
                        self->scanFinished(found);
                }, Qt::QueuedConnection);
        },
        -1);
}

void SystemFoldersServiceImpl::scanFinished(const QList<SystemFolderCategory> &categories)
{
    m_cachedCategories = categories;
    m_lastScanAt = m_clock->now();
    const QList<CategoriesReady> waiting = m_categoriesInFlight.value_or(QList<CategoriesReady>());
    m_categoriesInFlight.reset();
    for (const CategoriesReady &ready : waiting)
        ready(categories);
}

void SystemFoldersServiceImpl::preWarm()
{
    qCDebug(m_logger, LogTexts::kSystemFoldersPreWarm);
}

bool SystemFoldersServiceImpl::isValidPath(const QString &path)
{
    const auto known = m_validPathCache.constFind(path);
    if (known != m_validPathCache.cend())
        return *known;
    const bool valid = !path.isEmpty() && QFileInfo(path).isDir();
    m_validPathCache.insert(path, valid);
    return valid;
}

void SystemFoldersServiceImpl::clearValidPathCache()
{
    m_validPathCache.clear();
}

void SystemFoldersServiceImpl::rememberFolder(const QString &path)
{
    const QByteArray uri = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded).toUtf8();
    if (m_standard->data(bookmarkKey(path)) != uri)
        m_standard->set(uri, bookmarkKey(path));
}

AppLauncher::Result SystemFoldersServiceImpl::openFolder(const QString &path)
{
    QUrl target = QUrl::fromLocalFile(path);
    if (const auto bookmark = m_standard->data(bookmarkKey(path))) {
        // There are no security-scoped bookmarks here: the bookmark is the
        // folder's URI, and resolving it means it still names a folder.
        const QUrl resolved(QString::fromUtf8(*bookmark), QUrl::StrictMode);
        if (resolved.isValid() && resolved.isLocalFile() && QFileInfo(resolved.toLocalFile()).isDir()) {
            target = resolved;
        } else {
            const QString why = !resolved.isValid() || !resolved.isLocalFile()
                                    ? QStringLiteral("not a file URI: %1").arg(QString::fromUtf8(*bookmark))
                                    : QStringLiteral("%1 is not a folder").arg(resolved.toLocalFile());
            qCWarning(m_logger, LogTexts::kSystemFolderBookmarkFailed, qUtf8Printable(why));
        }
    }
    if (!QFileInfo(target.toLocalFile()).isDir()) {
        m_validPathCache.insert(path, false);
        return AppLauncher::Result::failure(QStringLiteral("the folder %1 no longer exists").arg(path));
    }
    if (!m_launcher)
        return AppLauncher::Result::failure(QStringLiteral("no way to open folders here"));
    return m_launcher->openLocation(target);
}
