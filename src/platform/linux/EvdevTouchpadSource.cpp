#include "platform/linux/EvdevTouchpadSource.h"

#include "foundation/Logging.h"
#include "platform/linux/EvdevFrameAssembler.h"

#include <QDir>
#include <QSocketNotifier>
#include <cerrno>
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

// One open touchpad: its fd, libevdev state and frame assembly.
class EvdevTouchpadSource::Device {
public:
    Device(int fd, libevdev *dev, const FrameHandler &handler)
        : m_fd(fd)
        , m_dev(dev)
        , m_handler(handler)
        , m_assembler(libevdev_get_num_slots(dev), axis(dev, ABS_MT_POSITION_X), axis(dev, ABS_MT_POSITION_Y),
                      libevdev_get_current_slot(dev))
        , m_notifier(fd, QSocketNotifier::Read)
    {
        // Fingers already down when the device is opened.
        for (int slot = 0; slot < libevdev_get_num_slots(dev); ++slot)
            m_assembler.setSlot(slot, libevdev_get_slot_value(dev, slot, ABS_MT_TRACKING_ID),
                                libevdev_get_slot_value(dev, slot, ABS_MT_POSITION_X),
                                libevdev_get_slot_value(dev, slot, ABS_MT_POSITION_Y));
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { read(); });
    }

    ~Device()
    {
        m_notifier.setEnabled(false);
        libevdev_free(m_dev);
        close(m_fd);
    }

private:
    static EvdevFrameAssembler::Axis axis(libevdev *dev, unsigned code)
    {
        const input_absinfo *info = libevdev_get_abs_info(dev, code);
        return info ? EvdevFrameAssembler::Axis{info->minimum, info->maximum} : EvdevFrameAssembler::Axis{};
    }

    void read()
    {
        unsigned flags = LIBEVDEV_READ_FLAG_NORMAL;
        for (;;) {
            input_event ev;
            const int rc = libevdev_next_event(m_dev, flags, &ev);
            if (rc == LIBEVDEV_READ_STATUS_SYNC) {
                // Events were dropped: replay the device's current state.
                flags = LIBEVDEV_READ_FLAG_SYNC;
            } else if (rc == -EAGAIN && flags == LIBEVDEV_READ_FLAG_SYNC) {
                flags = LIBEVDEV_READ_FLAG_NORMAL;
                continue;
            } else if (rc != LIBEVDEV_READ_STATUS_SUCCESS) {
                if (rc == -ENODEV) // unplugged
                    m_notifier.setEnabled(false);
                return;
            }
            const double t = double(ev.input_event_sec) + double(ev.input_event_usec) / 1e6;
            if (auto frame = m_assembler.feed(ev.type, ev.code, ev.value, t))
                m_handler(*frame);
        }
    }

    int m_fd;
    libevdev *m_dev;
    FrameHandler m_handler;
    EvdevFrameAssembler m_assembler;
    QSocketNotifier m_notifier;
};

namespace {
// A touchpad reports multitouch slots and moves the pointer indirectly; a
// touchscreen (direct) is no trackpad.
bool isTouchpad(libevdev *dev)
{
    return libevdev_has_event_code(dev, EV_ABS, ABS_MT_SLOT) && libevdev_has_event_code(dev, EV_ABS, ABS_MT_TRACKING_ID)
        && libevdev_has_event_code(dev, EV_ABS, ABS_MT_POSITION_X)
        && libevdev_has_event_code(dev, EV_ABS, ABS_MT_POSITION_Y) && libevdev_has_property(dev, INPUT_PROP_POINTER)
        && !libevdev_has_property(dev, INPUT_PROP_DIRECT);
}
}

EvdevTouchpadSource::EvdevTouchpadSource(QString directory)
    : m_directory(std::move(directory))
{
}

EvdevTouchpadSource::~EvdevTouchpadSource() = default;

ContactFrameSource::StartResult EvdevTouchpadSource::start(FrameHandler handler)
{
    stop();
    int denied = 0;
    const QDir dir(m_directory);
    for (const QString &name : dir.entryList({QStringLiteral("event*")}, QDir::System | QDir::Files)) {
        const QByteArray path = QFile::encodeName(dir.filePath(name));
        const int fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0) {
            if (errno == EACCES || errno == EPERM)
                ++denied;
            continue;
        }
        libevdev *dev = nullptr;
        if (libevdev_new_from_fd(fd, &dev) != 0 || !isTouchpad(dev)) {
            if (dev)
                libevdev_free(dev);
            close(fd);
            continue;
        }
        qCDebug(lcServices, "[Gestures] Touchpad %s: %s", path.constData(), libevdev_get_name(dev));
        m_devices.push_back(std::make_unique<Device>(fd, dev, handler));
    }
    if (!m_devices.empty())
        return {Status::Started, int(m_devices.size())};
    return {denied > 0 ? Status::Unavailable : Status::NoDevices, 0};
}

void EvdevTouchpadSource::stop()
{
    m_devices.clear();
}
