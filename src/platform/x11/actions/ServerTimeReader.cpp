#include "platform/x11/actions/ServerTimeReader.h"

#include "platform/x11/actions/ServerTimeRequest.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace kelpa::x11 {

struct ServerTimeReader::State
{
    explicit State(std::shared_ptr<DisplayConnector> displayConnector)
        : connector(std::move(displayConnector))
    {}

    /// Waits for the server, on the worker.
    std::optional<std::uint32_t> ask();
    void answer();

    const std::shared_ptr<DisplayConnector> connector;
    /// Used by the worker alone; at most one asks at a time.
    std::unique_ptr<DisplayConnection> display;

    /// Guards what follows it.
    std::mutex mutex;
    std::condition_variable answered;
    bool isAsking = false;
    std::uint64_t answers = 0;
    std::optional<std::uint32_t> time;
};

std::optional<std::uint32_t> ServerTimeReader::State::ask()
{
    const BrokenPipeGuard guard;
    if (!isConnected(display)) {
        display = connector->open();
        if (!display)
            return std::nullopt;
        selectEvents(display->connection(), display->helperWindow(),
                     XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    return ServerTimeRequest(*display).get();
}

void ServerTimeReader::State::answer()
{
    const std::optional<std::uint32_t> now = ask();
    const std::scoped_lock lock(mutex);
    time = now;
    isAsking = false;
    ++answers;
    answered.notify_all();
}

ServerTimeReader::ServerTimeReader(std::shared_ptr<DisplayConnector> connector, Workers& workers)
    : m_workers(workers), m_state(std::make_shared<State>(std::move(connector)))
{}

std::optional<std::uint32_t> ServerTimeReader::read(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_state->mutex);
    const std::uint64_t before = m_state->answers;
    if (!std::exchange(m_state->isAsking, true))
        m_workers.start([state = m_state] { state->answer(); });
    const bool isAnswered = m_state->answered.wait_for(
        lock, limit, [this, before] { return m_state->answers != before; });
    return isAnswered ? m_state->time : std::nullopt;
}

} // namespace kelpa::x11
