#include "platform/x11/settings/XSettings.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/connection/XcbReply.h"

#include <QSocketNotifier>
#include <QtEndian>

#include <array>
#include <cstring>
#include <utility>

namespace kelpa::x11 {

namespace {

/// In words of four bytes; desktops publish a few thousand bytes.
constexpr std::uint32_t longestSettings = 64 * 1024;

/// Reads values from bytes that may end anywhere; values beyond the end are absent.
class ByteReader
{
public:
    ByteReader(QByteArrayView bytes, bool isBigEndian) : m_bytes(bytes), m_isBigEndian(isBigEndian)
    {}

    /// Returns false and stays in place when fewer bytes are left.
    bool skip(qsizetype count)
    {
        if (count < 0 || count > m_bytes.size() - m_position)
            return false;
        m_position += count;
        return true;
    }

    template <class Number>
    std::optional<Number> number()
    {
        const qsizetype begin = m_position;
        if (!skip(sizeof(Number)))
            return std::nullopt;
        Number value = 0;
        std::memcpy(&value, m_bytes.data() + begin, sizeof value);
        return m_isBigEndian ? qFromBigEndian(value) : qFromLittleEndian(value);
    }

    /// Also skips the padding to a multiple of four bytes.
    std::optional<QByteArrayView> text(qsizetype length)
    {
        const qsizetype begin = m_position;
        constexpr qsizetype alignment = 4;
        if (!skip(length) || !skip((alignment - length % alignment) % alignment))
            return std::nullopt;
        return m_bytes.sliced(begin, length);
    }

private:
    QByteArrayView m_bytes;
    bool m_isBigEndian;
    qsizetype m_position = 0;
};

/// Skips the value of a setting that is no integer.
bool skipValue(ByteReader& bytes, std::uint8_t type)
{
    constexpr qsizetype colour = 8;
    if (type == 2)
        return bytes.skip(colour);
    if (type != 1)
        return false;
    const auto length = bytes.number<std::uint32_t>();
    return length && bytes.text(*length);
}

/// The settings, and the connection on which they were read.
struct Reading
{
    std::shared_ptr<DisplayConnection> display;
    xcb_window_t manager = XCB_WINDOW_NONE;
    std::optional<bool> areAnimationsWanted;
};

/// Waits for the server; any thread but the main one. Selects events before it reads, so that no
/// change is missed in between.
Reading readSettings(DisplayConnector& connector, std::shared_ptr<DisplayConnection> display)
{
    if (!display)
        display = connector.open();
    if (!display)
        return {};
    const BrokenPipeGuard guard;
    XcbConnection& connection = display->connection();
    const AtomTable& atoms = display->atoms();
    // A settings manager that starts announces itself on the root.
    selectEvents(connection, connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    SelectionOwnerReply owner(connection, atoms[Atom::settingsManager]);
    const auto* const owned = owner.get();
    Reading reading{display, owned ? owned->owner : xcb_window_t{XCB_WINDOW_NONE}, std::nullopt};
    if (reading.manager != XCB_WINDOW_NONE) {
        selectEvents(connection, reading.manager,
                     XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        PropertyReply property = askProperty(connection, reading.manager, atoms[Atom::settings],
                                             longestSettings, atoms[Atom::settings]);
        if (const auto value =
                settingsInteger(propertyOf(property.get()).bytes, "Gtk/EnableAnimations"))
            reading.areAnimationsWanted = *value != 0;
    }
    connection.flush();
    return reading;
}

/// Main thread, which waits for nothing.
class SettingsSubscription : public Subscription
{
public:
    SettingsSubscription(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler,
                         std::function<void(std::optional<bool>)> changed)
        : m_connector(std::move(connector)), m_scheduler(scheduler), m_changed(std::move(changed))
    {
        read({});
    }

private:
    /// The background task owns the connection until it is done.
    void read(std::shared_ptr<DisplayConnection> display)
    {
        m_reading = m_scheduler.inBackground(
            [connector = m_connector, display = std::move(display)](const std::stop_token&) {
                return readSettings(*connector, display);
            },
            [this](Reading reading) { finishReading(std::move(reading)); });
    }

    void finishReading(Reading reading)
    {
        m_display = std::move(reading.display);
        m_manager = reading.manager;
        if (!m_display)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(m_display->connection().fileDescriptor(),
                                                       QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { processEvents(); });
        if (m_areWanted != reading.areAnimationsWanted) {
            m_areWanted = reading.areAnimationsWanted;
            m_changed(m_areWanted);
        }
        // Events that arrived with the replies do not wake the notifier.
        processEvents();
    }

    void processEvents()
    {
        const BrokenPipeGuard guard;
        bool hasChanged = false;
        while (const XcbEvent event = m_display->connection().pollEvent())
            hasChanged = isChange(*event) || hasChanged;
        if (!hasChanged && !m_display->connection().isBroken())
            return;
        m_notifier->setEnabled(false);
        // This may run in a slot of the notifier's signal.
        m_notifier.release()->deleteLater();
        // Without the server there is no window left to animate.
        if (hasChanged)
            read(std::exchange(m_display, nullptr));
    }

    bool isChange(const xcb_generic_event_t& event) const
    {
        switch (typeOf(event)) {
        case XCB_CLIENT_MESSAGE:
            return true;
        case XCB_DESTROY_NOTIFY:
            return as<xcb_destroy_notify_event_t>(event).window == m_manager;
        case XCB_PROPERTY_NOTIFY:
            return as<xcb_property_notify_event_t>(event).window == m_manager;
        default:
            return false;
        }
    }

    const std::shared_ptr<DisplayConnector> m_connector;
    Scheduler& m_scheduler;
    const std::function<void(std::optional<bool>)> m_changed;
    std::optional<bool> m_areWanted;
    xcb_window_t m_manager = XCB_WINDOW_NONE;
    std::shared_ptr<DisplayConnection> m_display;
    std::unique_ptr<QSocketNotifier> m_notifier;
    TaskHandle m_reading;
};

} // namespace

std::optional<std::int32_t> settingsInteger(QByteArrayView property, QByteArrayView name)
{
    if (property.isEmpty() || (property.front() != 0 && property.front() != 1))
        return std::nullopt;
    ByteReader bytes(property, property.front() == 1);
    // The byte order with padding, and a serial number.
    constexpr qsizetype header = 8;
    if (!bytes.skip(header))
        return std::nullopt;
    const auto count = bytes.number<std::uint32_t>();
    for (std::uint32_t index = 0; count && index < *count; ++index) {
        const auto type = bytes.number<std::uint8_t>();
        const bool hasPadding = bytes.skip(1);
        const auto length = bytes.number<std::uint16_t>();
        if (!type || !hasPadding || !length)
            return std::nullopt;
        const auto named = bytes.text(*length);
        const auto serial = bytes.number<std::uint32_t>();
        if (!named || !serial)
            return std::nullopt;
        if (*type == 0) {
            const auto value = bytes.number<std::int32_t>();
            if (!value || *named == name)
                return value;
        } else if (!skipValue(bytes, *type)) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

X11MotionSetting::X11MotionSetting(std::shared_ptr<DisplayConnector> connector,
                                   Scheduler& scheduler)
    : m_connector(std::move(connector)), m_scheduler(scheduler)
{}

std::unique_ptr<Subscription>
X11MotionSetting::watchAnimations(std::function<void(std::optional<bool> areWanted)> changed)
{
    return std::make_unique<SettingsSubscription>(m_connector, m_scheduler, std::move(changed));
}

} // namespace kelpa::x11
