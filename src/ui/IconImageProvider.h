#pragma once

#include <QIcon>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <functional>

// "image://icon/<app path>": application icons rendered off the main thread
// and cached. Icon-theme lookups are not made for concurrent use, so all of
// them run on one worker thread.
class IconImageProvider : public QQuickAsyncImageProvider {
public:
    using Resolver = std::function<QIcon(const QString &appPath)>;

    explicit IconImageProvider(Resolver resolver);
    ~IconImageProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

private:
    Resolver m_resolver;
    QThreadPool m_pool;
};
