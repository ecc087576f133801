#pragma once

#include <QImage>
#include <QMutex>
#include <QQuickImageProvider>
#include <memory>

// The backdrop image the overlay shows, handed from the main thread to the
// QML engine's image loading.
class BackdropFrame {
public:
    void set(QImage image);
    QImage image() const;

private:
    mutable QMutex m_mutex;
    QImage m_image;
};

// "image://backdrop/<revision>": the prepared backdrop (BackdropPresenter
// prepares it off the show path), so showing the overlay only draws.
class BackdropProvider : public QQuickImageProvider {
public:
    explicit BackdropProvider(std::shared_ptr<const BackdropFrame> frame);
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    std::shared_ptr<const BackdropFrame> m_frame;
};
