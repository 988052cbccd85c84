// A connection of its own to a message bus, apart from the toolkit's, so that no other traffic
// delays it. Each call waits for its reply, within a time limit.
#pragma once

// Only this folder's own sources include GIO; the headers that others include do not expose it.
#include "platform/FileDescriptor.h"
#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <gio/gio.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace kelpa {

enum class BusCallOutcome : std::uint8_t {
    answered,
    /// No such name, object, interface or method is there.
    absent,
    /// Another error, or a reply of another type than expected.
    refused,
    /// No reply within the time limit, or no bus.
    silent,
};

struct BusReply
{
    BusCallOutcome outcome = BusCallOutcome::silent;
    /// Null unless answered.
    GlibPointer<GVariant> value{};
    /// The name of the error; empty where there is none.
    std::string error{};
    /// Those that came with the reply.
    std::vector<FileDescriptor> descriptors{};
};

/// Any thread but the main one, unless that has no event loop yet; construction and destruction on
/// any.
class BlockingBus
{
public:
    using Milliseconds = std::chrono::milliseconds;
    /// Called on GLib's thread for each message that arrives and is no reply. True when it has been
    /// dealt with.
    using Receive = std::function<bool(GDBusConnection* connection, GDBusMessage* message)>;

    /// `address` is that of the bus; empty for none. `matches` are rules of the bus for broadcast
    /// signals to receive.
    BlockingBus(std::string address, std::vector<std::string> matches, Receive receive);
    BlockingBus(const BlockingBus&) = delete;
    BlockingBus& operator=(const BlockingBus&) = delete;
    /// Calls `receive` no more. No call may be under way.
    ~BlockingBus();

    /// Calls a method, over a new connection when the last one is gone; never starts a service.
    /// `arguments` is a tuple or null, and is consumed; the reply has type `replyType`, or counts
    /// as refused. Nobody has an empty name. `descriptor`, which the caller keeps, is the first of
    /// the descriptors that go with the call; negative for none. Once `stop` is requested, the
    /// reply is not awaited any longer, as if the time limit were over.
    BusReply call(const BusAddressee& to, const char* method, GVariant* arguments,
                  const char* replyType, Milliseconds limit, int descriptor = -1,
                  const std::stop_token& stop = {});

    /// The unique name of the owner; empty when there is none, absent when the bus does not reply.
    std::optional<std::string> ownerOf(const std::string& name, Milliseconds limit);

    /// The unique name of the connection; empty while there is no connection.
    std::string ownName();

    /// Sends a call without asking for its reply, over the connection that is open, and waits until
    /// it has left this process. Any thread.
    void send(const BusAddressee& to, const char* method, GVariant* arguments, Milliseconds limit);

private:
    struct Filter;

    /// Null when there is no bus, or it does not reply.
    GObjectPointer<GDBusConnection> connection(Milliseconds limit);

    const std::string m_address;
    const std::vector<std::string> m_matches;
    const std::shared_ptr<Filter> m_filter;
    std::mutex m_mutex;
    GObjectPointer<GDBusConnection> m_connection;
};

} // namespace kelpa
