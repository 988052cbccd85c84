#include "platform/x11/keys/X11GlobalKeys.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/keys/ModifierTimestamps.h"
#include "platform/x11/keys/RawKeyConnection.h"
#include "platform/x11/keys/ServerClock.h"

#include <QSocketNotifier>

#include <chrono>
#include <utility>

namespace kelpa::x11 {

namespace {

using namespace std::chrono_literals;

constexpr Scheduler::Duration keysReconnectDelay = 2s;
/// A new layout or another keyboard causes several events, which are coalesced.
constexpr Scheduler::Duration rereadDelay = 100ms;
/// Events that are handled before the event loop runs again; far more than a person causes.
constexpr int mostAtOnce = 256;

/// Main thread, which waits for nothing: whatever needs a reply of the server runs in the
/// background.
class KeySubscription : public Subscription
{
public:
    KeySubscription(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler,
                    GlobalKeyHandlers handlers)
        : m_connector(std::move(connector)), m_scheduler(scheduler), m_handlers(std::move(handlers))
    {
        connect();
    }

private:
    void connect()
    {
        m_connecting = m_scheduler.inBackground(
            [connector = m_connector](const std::stop_token&) {
                return RawKeyConnection::open(*connector);
            },
            [this](RawKeyConnection::Result result) { connected(std::move(result)); });
    }

    void connected(RawKeyConnection::Result result)
    {
        if (const auto* const failure = std::get_if<RawKeyFailure>(&result)) {
            qCDebug(logX11Keys, "raw key events: %s",
                    *failure == RawKeyFailure::noServer ? "no server" : "not supported");
            if (*failure == RawKeyFailure::noServer)
                m_connecting = m_scheduler.after(keysReconnectDelay, [this] { connect(); });
            return;
        }
        m_connection = std::get<std::unique_ptr<RawKeyConnection>>(std::move(result));
        m_notifier = std::make_unique<QSocketNotifier>(m_connection->connection().fileDescriptor(),
                                                       QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { processEvents(); });
        setModifierMap(m_connection->modifierMap());
        // Events that arrived while the connection was opened do not wake the notifier.
        processEvents();
    }

    void setModifierMap(const ModifierMap& map)
    {
        const bool wasAvailable = m_modifierMap.hasCommand();
        m_modifierMap = map;
        if (map.hasCommand() != wasAvailable)
            m_handlers.availabilityChanged(map.hasCommand());
    }

    void disconnected()
    {
        m_notifier->setEnabled(false);
        // This may run in a slot of the notifier's signal.
        m_notifier.release()->deleteLater();
        m_furtherEvents.reset();
        m_rereadTimer.reset();
        m_connection.reset();
        m_timestamps = {};
        setModifierMap({});
        m_connecting = m_scheduler.after(keysReconnectDelay, [this] { connect(); });
    }

    void processEvents()
    {
        const BrokenPipeGuard guard;
        int count = 0;
        while (count < mostAtOnce) {
            const XcbEvent event = m_connection->connection().pollEvent();
            if (!event)
                break;
            ++count;
            handle(m_connection->keyEvent(*event));
        }
        if (m_connection->connection().isBroken())
            disconnected();
        else if (count == mostAtOnce)
            m_furtherEvents = m_scheduler.after(0ms, [this] { processEvents(); });
    }

    void handle(const std::optional<KeyEvent>& event)
    {
        if (!event)
            return;
        if (const auto* const key = std::get_if<RawKey>(&*event))
            handleKey(*key);
        else if (std::holds_alternative<RawButton>(*event))
            m_handlers.keyPressed();
        else if (const auto* const state = std::get_if<ModifierState>(&*event))
            handleState(*state);
        else if (!m_rereadTimer)
            m_rereadTimer = m_scheduler.after(rereadDelay, [this] { rereadModifierMap(); });
    }

    void handleKey(const RawKey& key)
    {
        m_timestamps.record(key);
        if (key.isPress && !m_modifierMap.isModifierKey.test(key.key))
            m_handlers.keyPressed();
    }

    void handleState(const ModifierState& state)
    {
        const auto other =
            static_cast<std::uint8_t>(~(m_modifierMap.command | m_modifierMap.ignored));
        const InputTime time = m_timestamps.timestamp(state);
        m_handlers.modifiersChanged({.commandIsDown = (state.held & m_modifierMap.command) != 0,
                                     .hasOtherModifiers = (state.effective & other) != 0,
                                     .timestamp = m_clock.seconds(time),
                                     .inputTime = time});
    }

    void rereadModifierMap()
    {
        // A change that arrives during the reading starts the timer again.
        m_rereadTimer.reset();
        m_reread = m_scheduler.inBackground(
            [connector = m_connector](const std::stop_token&) {
                return readModifierMap(*connector);
            },
            [this](const std::optional<ModifierMap>& map) {
                if (map && m_connection)
                    setModifierMap(*map);
            });
    }

    const std::shared_ptr<DisplayConnector> m_connector;
    Scheduler& m_scheduler;
    const GlobalKeyHandlers m_handlers;

    std::unique_ptr<RawKeyConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    ModifierMap m_modifierMap;
    ModifierTimestamps m_timestamps;
    ServerClock m_clock;

    TaskHandle m_connecting;
    TaskHandle m_furtherEvents;
    TaskHandle m_rereadTimer;
    TaskHandle m_reread;
};

} // namespace

X11GlobalKeys::X11GlobalKeys(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler)
    : m_connector(std::move(connector)), m_scheduler(scheduler)
{}

std::unique_ptr<Subscription> X11GlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return std::make_unique<KeySubscription>(m_connector, m_scheduler, std::move(handlers));
}

} // namespace kelpa::x11
