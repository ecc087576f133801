#include "catalogue/AppMonitor.h"

#include "foundation/Logging.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <memory>

// Lives on the monitor's thread: the watchers (m_folderWatchers) and the
// pending, cancellable reload request (m_debounceWorkItem).
class AppMonitor::Worker : public QObject {
public:
    Worker(AppMonitor *owner, std::chrono::milliseconds interval)
        : m_owner(owner)
        , m_interval(interval)
    {
    }

    QStringList watch(const QStringList &directories, quint64 generation)
    {
        unwatch();
        m_generation = generation;
        if (!m_folderWatchers) {
            m_folderWatchers = std::make_unique<QFileSystemWatcher>();
            QObject::connect(m_folderWatchers.get(), &QFileSystemWatcher::directoryChanged, m_folderWatchers.get(),
                             [this] { m_debounceWorkItem->notify(); });
            m_debounceWorkItem = std::make_unique<Debouncer>(m_interval, makeQtDebounceTimer(), [this] {
                AppMonitor *owner = m_owner;
                const quint64 generation = m_generation;
                QMetaObject::invokeMethod(owner, [owner, generation] { owner->deliver(generation); },
                                          Qt::QueuedConnection);
            });
        }
        QStringList readable;
        for (const QString &directory : directories)
            if (QFileInfo(directory).isDir())
                readable.append(directory);
        readable.removeDuplicates();
        const QStringList failed = readable.isEmpty() ? QStringList() : m_folderWatchers->addPaths(readable);
        for (const QString &path : failed)
            readable.removeAll(path);
        qCDebug(lcServices, "App monitor watching %ld folders", long(readable.size()));
        return readable;
    }

    void unwatch()
    {
        if (m_debounceWorkItem)
            m_debounceWorkItem->cancel();
        if (m_folderWatchers && !m_folderWatchers->directories().isEmpty())
            m_folderWatchers->removePaths(m_folderWatchers->directories());
    }

    QStringList watched() const { return m_folderWatchers ? m_folderWatchers->directories() : QStringList(); }

    // Destroys the thread-bound objects on their own thread.
    void shutdown()
    {
        m_debounceWorkItem.reset();
        m_folderWatchers.reset();
    }

private:
    AppMonitor *m_owner;
    std::chrono::milliseconds m_interval;
    quint64 m_generation = 0;
    std::unique_ptr<QFileSystemWatcher> m_folderWatchers;
    std::unique_ptr<Debouncer> m_debounceWorkItem;
};

AppMonitor::AppMonitor(std::chrono::milliseconds debounceInterval, QObject *parent)
    : QObject(parent)
{
    m_queue.setObjectName(QLatin1String(kQueueLabel));
    m_worker = new Worker(this, debounceInterval);
    m_worker->moveToThread(&m_queue);
    m_queue.start();
}

AppMonitor::~AppMonitor()
{
    stop();
    QMetaObject::invokeMethod(m_worker, [worker = m_worker] { worker->shutdown(); }, Qt::BlockingQueuedConnection);
    m_queue.quit();
    m_queue.wait();
    delete m_worker;
}

void AppMonitor::start(const QStringList &directories, std::function<void()> onChange)
{
    const quint64 generation = ++m_generation;
    m_onChange = std::move(onChange);
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, directories, generation] { worker->watch(directories, generation); },
        Qt::BlockingQueuedConnection);
}

void AppMonitor::stop()
{
    ++m_generation;
    m_onChange = nullptr;
    QMetaObject::invokeMethod(m_worker, [worker = m_worker] { worker->unwatch(); }, Qt::BlockingQueuedConnection);
}

QStringList AppMonitor::watchedDirectories() const
{
    QStringList out;
    QMetaObject::invokeMethod(m_worker, [worker = m_worker, &out] { out = worker->watched(); },
                              Qt::BlockingQueuedConnection);
    return out;
}

void AppMonitor::deliver(quint64 generation)
{
    if (generation != m_generation || !m_onChange)
        return;
    const auto callback = m_onChange; // the callback may restart or stop the monitor
    callback();
}
