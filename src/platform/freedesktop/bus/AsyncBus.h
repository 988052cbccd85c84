// A connection to a message bus on which nothing ever waits.
#pragma once

// GIO is kept to this folder's own sources; what others include here does not show it.
#include <gio/gio.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace kelpa {

struct BusAddressee
{
    std::string name;
    std::string path;
    std::string interface;
};

/// The bus, which answers like its clients.
inline const BusAddressee busItself{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                    "org.freedesktop.DBus"};

enum class BusOutcome : std::uint8_t {
    answered,
    /// An error came back: no such name, object, interface or method.
    refused,
    /// No answer within the time given, or the connection is gone.
    silent,
};

/// Used on one thread, whose default GLib context delivers the callbacks; none comes from within
/// the call that asks for it. Never starts a service.
class AsyncBus
{
public:
    using Milliseconds = std::chrono::milliseconds;
    /// The value is null unless answered, and is valid during the callback.
    using Reply = std::function<void(BusOutcome outcome, GVariant* value)>;

    AsyncBus();
    AsyncBus(const AsyncBus&) = delete;
    AsyncBus& operator=(const AsyncBus&) = delete;
    /// Calls no further callback. Takes a moment: what is under way is cancelled and waited for,
    /// which no other process can delay.
    ~AsyncBus();

    /// Cancels what is under way and calls no further callback; no use of it may follow but its
    /// destruction.
    void abandon();

    /// Connects and registers with the bus at a D-Bus address; false when that fails or takes
    /// longer than `limit`. Any earlier connection is closed.
    void open(const std::string& address, Milliseconds limit, std::function<void(bool)> done);

    /// Whether the connection stands, as far as is known.
    bool isOpen() const;

    void close();

    /// Calls a method over the connection that was opened last and not closed since; without one
    /// there must be no call. `arguments` is a tuple or null, and is consumed; an answer of another
    /// type than `replyType` counts as refused.
    void call(const BusAddressee& to, const char* method, GVariant* arguments,
              const char* replyType, Milliseconds limit, Reply reply);

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace kelpa
