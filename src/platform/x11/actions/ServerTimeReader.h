// Reads the X server's time for a caller that must not wait for a server that hangs.
#pragma once

#include "platform/Workers.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace kelpa::x11 {

/// Has a connection of its own, opened on the first use and reopened when it was lost. A worker
/// waits for the server, so that neither the server nor what else waits for it delays the caller
/// beyond its limit. A request without an answer holds one worker: until the answer arrives, no
/// other request is sent. Any thread but the main one.
class ServerTimeReader
{
public:
    /// `workers` outlive this object, and need not be idle when it is destroyed.
    ServerTimeReader(std::shared_ptr<DisplayConnector> connector, Workers& workers);

    /// The server's time, at some moment during this call; absent without a server, and when it
    /// does not answer within `limit`.
    std::optional<std::uint32_t> read(std::chrono::milliseconds limit);

private:
    struct State;

    Workers& m_workers;
    /// Shared with the worker.
    const std::shared_ptr<State> m_state;
};

} // namespace kelpa::x11
