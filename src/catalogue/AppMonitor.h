#pragma once

#include "catalogue/Debouncer.h"

#include <QObject>
#include <QStringList>
#include <QThread>
#include <atomic>
#include <chrono>
#include <functional>

// Watches the application folders for changes to their entry lists on its own
// thread ("appmonitor.fs.queue"). Every change restarts the debounce; only a
// quiet interval (1.0 s unless told otherwise) runs the change callback, once,
// on the thread that owns the monitor. Installing a large application writes
// many times and so causes one reload.
class AppMonitor : public QObject {
    Q_OBJECT
public:
    static constexpr const char *kQueueLabel = "appmonitor.fs.queue";

    explicit AppMonitor(std::chrono::milliseconds debounceInterval = Debouncer::kDefaultInterval,
                        QObject *parent = nullptr);
    ~AppMonitor() override;

    // Watches the folders; one that cannot be watched (missing, not a folder)
    // is skipped. Starting again replaces the folders and the callback.
    void start(const QStringList &directories, std::function<void()> onChange);
    // Cancels every watcher and any pending callback, including one already
    // on its way to this thread.
    void stop();

    bool isRunning() const { return bool(m_onChange); }
    // The folders really being watched.
    QStringList watchedDirectories() const;
    const QThread *queue() const { return &m_queue; }

private:
    class Worker;
    void deliver(quint64 generation);

    QThread m_queue;
    Worker *m_worker = nullptr;
    std::function<void()> m_onChange;
    std::atomic<quint64> m_generation{0};
};
