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

/// In items of 32 bits; desktops keep a few thousand bytes.
constexpr std::uint32_t longestSettings = 64 * 1024;

/// Walks through bytes that may end anywhere: what is beyond their end is absent.
class Bytes
{
public:
    Bytes(QByteArrayView bytes, bool isBigEndian) : m_bytes(bytes), m_isBigEndian(isBigEndian) {}

    /// False, and it stays where it is, when so many bytes are not left.
    bool skip(qsizetype count)
    {
        if (count < 0 || count > m_bytes.size() - m_place)
            return false;
        m_place += count;
        return true;
    }

    template <class Number>
    std::optional<Number> number()
    {
        const qsizetype begin = m_place;
        if (!skip(sizeof(Number)))
            return std::nullopt;
        Number value = 0;
        std::memcpy(&value, m_bytes.data() + begin, sizeof value);
        return m_isBigEndian ? qFromBigEndian(value) : qFromLittleEndian(value);
    }

    /// With what fills it up to whole groups of four bytes.
    std::optional<QByteArrayView> text(qsizetype length)
    {
        const qsizetype begin = m_place;
        constexpr qsizetype group = 4;
        if (!skip(length) || !skip((group - length % group) % group))
            return std::nullopt;
        return m_bytes.sliced(begin, length);
    }

private:
    QByteArrayView m_bytes;
    bool m_isBigEndian;
    qsizetype m_place = 0;
};

/// Past the value of a setting that is no integer.
bool skipValue(Bytes& bytes, std::uint8_t type)
{
    constexpr qsizetype colour = 8;
    if (type == 2)
        return bytes.skip(colour);
    if (type != 1)
        return false;
    const auto length = bytes.number<std::uint32_t>();
    return length && bytes.text(*length);
}

/// What was read, and the connection on which it was.
struct Reading
{
    std::shared_ptr<DisplayConnection> link;
    xcb_window_t manager = XCB_WINDOW_NONE;
    std::optional<bool> areAnimationsWanted;
};

/// Waits for the server; any thread but the main one. Listens first, so that no change falls
/// between.
Reading readSettings(DisplayConnector& connector, std::shared_ptr<DisplayConnection> link)
{
    if (!link)
        link = connector.open();
    if (!link)
        return {};
    const BrokenPipeGuard guard;
    XcbConnection& connection = link->connection();
    const AtomTable& atoms = link->atoms();
    // A manager that comes tells there.
    selectEvents(connection, connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    SelectionOwnerReply owner(connection, atoms[Atom::settingsManager]);
    const auto* const owned = owner.get();
    Reading reading{link, owned ? owned->owner : xcb_window_t{XCB_WINDOW_NONE}, std::nullopt};
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
class SettingsWatch : public Subscription
{
public:
    SettingsWatch(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler,
                  std::function<void(std::optional<bool>)> changed)
        : m_connector(std::move(connector)), m_scheduler(scheduler), m_changed(std::move(changed))
    {
        read({});
    }

private:
    /// The connection is the background's meanwhile.
    void read(std::shared_ptr<DisplayConnection> link)
    {
        m_reading = m_scheduler.inBackground(
            [connector = m_connector, link = std::move(link)](const std::stop_token&) {
                return readSettings(*connector, link);
            },
            [this](Reading reading) { noteRead(std::move(reading)); });
    }

    void noteRead(Reading reading)
    {
        m_link = std::move(reading.link);
        m_manager = reading.manager;
        if (!m_link)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(m_link->connection().fileDescriptor(),
                                                       QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { process(); });
        if (m_areWanted != reading.areAnimationsWanted) {
            m_areWanted = reading.areAnimationsWanted;
            m_changed(m_areWanted);
        }
        // What came along with the replies does not wake the notifier.
        process();
    }

    void process()
    {
        const BrokenPipeGuard guard;
        bool hasChanged = false;
        while (const XcbEvent event = m_link->connection().pollEvent())
            hasChanged = isChange(*event) || hasChanged;
        if (!hasChanged && !m_link->connection().isBroken())
            return;
        m_notifier->setEnabled(false);
        // Its signal may be the one that is being handled.
        m_notifier.release()->deleteLater();
        // Without the server there is nothing that could move either.
        if (hasChanged)
            read(std::exchange(m_link, nullptr));
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
    std::shared_ptr<DisplayConnection> m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
    TaskHandle m_reading;
};

} // namespace

std::optional<std::int32_t> settingsInteger(QByteArrayView property, QByteArrayView name)
{
    if (property.isEmpty() || (property.front() != 0 && property.front() != 1))
        return std::nullopt;
    Bytes bytes(property, property.front() == 1);
    // The byte order with what fills it up, and a serial number.
    constexpr qsizetype head = 8;
    if (!bytes.skip(head))
        return std::nullopt;
    const auto count = bytes.number<std::uint32_t>();
    for (std::uint32_t index = 0; count && index < *count; ++index) {
        const auto type = bytes.number<std::uint8_t>();
        const bool hasFiller = bytes.skip(1);
        const auto length = bytes.number<std::uint16_t>();
        if (!type || !hasFiller || !length)
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
    return std::make_unique<SettingsWatch>(m_connector, m_scheduler, std::move(changed));
}

} // namespace kelpa::x11
