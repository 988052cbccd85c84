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
// A change of the layout, or of the keyboard that is typed on, makes several notices.
constexpr Scheduler::Duration keyboardDelay = 100ms;
/// Events that are handled in one go; far more than a person makes.
constexpr int mostAtOnce = 256;

/// Main thread. Waits for nothing there: what needs an answer of the server is done in the
/// background.
class KeyWatch : public Subscription
{
public:
    KeyWatch(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler,
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
        m_link = std::get<std::unique_ptr<RawKeyConnection>>(std::move(result));
        m_notifier = std::make_unique<QSocketNotifier>(m_link->connection().fileDescriptor(),
                                                       QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { process(); });
        setMeanings(m_link->meanings());
        // What came along while the connection was made does not wake the notifier.
        process();
    }

    void setMeanings(const ModifierMap& meanings)
    {
        const bool wasAvailable = m_meanings.hasCommand();
        m_meanings = meanings;
        if (meanings.hasCommand() != wasAvailable)
            m_handlers.availabilityChanged(meanings.hasCommand());
    }

    void lost()
    {
        m_notifier->setEnabled(false);
        // Its signal may be the one that is being handled.
        m_notifier.release()->deleteLater();
        m_more.reset();
        m_reading.reset();
        m_link.reset();
        m_moments = {};
        setMeanings({});
        m_connecting = m_scheduler.after(keysReconnectDelay, [this] { connect(); });
    }

    void process()
    {
        const BrokenPipeGuard guard;
        int count = 0;
        while (count < mostAtOnce) {
            const XcbEvent event = m_link->connection().pollEvent();
            if (!event)
                break;
            ++count;
            handle(m_link->notice(*event));
        }
        if (m_link->connection().isBroken())
            lost();
        else if (count == mostAtOnce)
            m_more = m_scheduler.after(0ms, [this] { process(); });
    }

    void handle(const std::optional<KeyEvent>& notice)
    {
        if (!notice)
            return;
        if (const auto* const key = std::get_if<RawKey>(&*notice))
            handleKey(*key);
        else if (std::holds_alternative<RawButton>(*notice))
            m_handlers.keyPressed();
        else if (const auto* const state = std::get_if<ModifierState>(&*notice))
            handleState(*state);
        else if (!m_reading)
            m_reading = m_scheduler.after(keyboardDelay, [this] { readMeanings(); });
    }

    void handleKey(const RawKey& key)
    {
        m_moments.note(key);
        if (key.isPress && !m_meanings.isModifierKey.test(key.key))
            m_handlers.keyPressed();
    }

    void handleState(const ModifierState& state)
    {
        const auto other = static_cast<std::uint8_t>(~(m_meanings.command | m_meanings.ignored));
        const InputTime moment = m_moments.moment(state);
        m_handlers.modifiersChanged({.commandIsDown = (state.held & m_meanings.command) != 0,
                                     .hasOtherModifiers = (state.effective & other) != 0,
                                     .timestamp = m_clock.seconds(moment),
                                     .inputTime = moment});
    }

    void readMeanings()
    {
        // A change that comes while this is read makes it be read once more.
        m_reading.reset();
        m_answer = m_scheduler.inBackground(
            [connector = m_connector](const std::stop_token&) {
                return readModifierMap(*connector);
            },
            [this](const std::optional<ModifierMap>& meanings) {
                if (meanings && m_link)
                    setMeanings(*meanings);
            });
    }

    const std::shared_ptr<DisplayConnector> m_connector;
    Scheduler& m_scheduler;
    const GlobalKeyHandlers m_handlers;

    std::unique_ptr<RawKeyConnection> m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
    ModifierMap m_meanings;
    ModifierTimestamps m_moments;
    ServerClock m_clock;

    TaskHandle m_connecting;
    TaskHandle m_more;
    TaskHandle m_reading;
    TaskHandle m_answer;
};

} // namespace

X11GlobalKeys::X11GlobalKeys(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler)
    : m_connector(std::move(connector)), m_scheduler(scheduler)
{}

std::unique_ptr<Subscription> X11GlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return std::make_unique<KeyWatch>(m_connector, m_scheduler, std::move(handlers));
}

} // namespace kelpa::x11
