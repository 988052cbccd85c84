#include "platform/wayland/sway/SwayEvents.h"

#include "platform/LoggingCategories.h"

#include <chrono>
#include <utility>

namespace kelpa::wayland {

namespace {

using namespace std::chrono_literals;

constexpr Scheduler::Duration reconnectDelay = 2s;
constexpr Scheduler::Duration subscribeLimit = 2s;
/// Events that are handled before the event loop runs again.
constexpr int mostAtOnce = 200;

/// Null when sway is not there or does not reply.
std::unique_ptr<SwayConnection> subscribed(const QByteArray& socketPath)
{
    std::unique_ptr<SwayConnection> connection = SwayConnection::open(socketPath);
    if (!connection ||
        !connection->request({SwayMessageType::subscribe, R"(["window","workspace"])"},
                             std::chrono::steady_clock::now() + subscribeLimit))
        return nullptr;
    return connection;
}

} // namespace

SwayEvents::SwayEvents(Scheduler& scheduler, QByteArray socketPath, std::function<void()> changed)
    : m_scheduler(scheduler), m_socketPath(std::move(socketPath)),
      m_changes(scheduler, std::move(changed))
{
    connect();
}

SwayEvents::~SwayEvents() = default;

void SwayEvents::connect()
{
    m_connecting = m_scheduler.inBackground(
        [path = m_socketPath](const std::stop_token&) { return subscribed(path); },
        [this](std::unique_ptr<SwayConnection> connection) { connected(std::move(connection)); });
}

void SwayEvents::connected(std::unique_ptr<SwayConnection> connection)
{
    qCDebug(logWayland, "events of sway: %s", connection ? "subscribed" : "no reply");
    if (!connection) {
        m_connecting = m_scheduler.after(reconnectDelay, [this] { connect(); });
        return;
    }
    m_connection = std::move(connection);
    m_notifier =
        std::make_unique<QSocketNotifier>(m_connection->descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { process(); });
    m_changes.noteChange();
    // Events that arrived with the reply do not wake the notifier.
    process();
}

void SwayEvents::process()
{
    m_continuing.reset();
    int left = mostAtOnce;
    while (left > 0 && m_connection->poll()) {
        m_changes.noteChange();
        --left;
    }
    if (m_connection->isBroken())
        lost();
    else if (left == 0)
        m_continuing = m_scheduler.after(0ms, [this] { process(); });
}

void SwayEvents::lost()
{
    m_notifier->setEnabled(false);
    // Its signal may be the one that is being handled.
    m_notifier.release()->deleteLater();
    m_continuing.reset();
    m_connection.reset();
    m_changes.noteChange();
    m_connecting = m_scheduler.after(reconnectDelay, [this] { connect(); });
}

} // namespace kelpa::wayland
