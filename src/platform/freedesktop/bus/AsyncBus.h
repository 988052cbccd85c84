// A connection to a message bus whose calls are all asynchronous.
#pragma once

// Only this folder's own sources include GIO; the headers that others include do not expose it.
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

/// The bus itself, which replies like its clients.
inline const BusAddressee busItself{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                    "org.freedesktop.DBus"};

enum class BusOutcome : std::uint8_t {
    answered,
    /// An error came back: no such name, object, interface or method.
    refused,
    /// No answer within the time given, or the connection is gone.
    silent,
};

/// Used on one thread, whose default GLib context delivers the callbacks, never from within the
/// call that registers them. Never starts a service.
class AsyncBus
{
public:
    using Milliseconds = std::chrono::milliseconds;
    /// The value is null unless answered, and is valid during the callback.
    using Reply = std::function<void(BusOutcome outcome, GVariant* value)>;
    /// Also receives the error of a call that was not answered; null where there is none.
    using ReplyOrError =
        std::function<void(BusOutcome outcome, GVariant* value, const GError* error)>;

    AsyncBus();
    AsyncBus(const AsyncBus&) = delete;
    AsyncBus& operator=(const AsyncBus&) = delete;
    /// Calls no further callback. Cancels pending calls and waits until GLib has finished them,
    /// which no other process can delay.
    ~AsyncBus();

    /// Cancels pending calls and calls no further callback; only destruction may follow.
    void abandon();

    /// Connects and registers with the bus at a D-Bus address; false when that fails or takes
    /// longer than `limit`. Any earlier connection is closed.
    void open(const std::string& address, Milliseconds limit, std::function<void(bool)> done);

    /// Whether the connection is open, as far as is known.
    bool isOpen() const;

    /// The bus's name of the connection; empty without one.
    std::string uniqueName() const;

    void close();

    /// Calls a method over the connection that was opened last and not closed since; without one
    /// there must be no call. `arguments` is a tuple or null, and is consumed; an answer of another
    /// type than `replyType` counts as refused.
    void call(const BusAddressee& to, const char* method, GVariant* arguments,
              const char* replyType, Milliseconds limit, Reply reply);
    /// The same for any type of answer.
    void callForError(const BusAddressee& to, const char* method, GVariant* arguments,
                      Milliseconds limit, ReplyOrError reply);

    /// Calls `received` with the arguments of each such signal from now on, over the connection as
    /// for `call`, until it is closed. `argument` is the first argument that is wanted; empty for
    /// any.
    void subscribe(const BusAddressee& from, const char* signal, const std::string& argument,
                   std::function<void(GVariant* arguments)> received);

private:
    void send(const BusAddressee& to, const char* method, GVariant* arguments,
              const GVariantType* replyType, Milliseconds limit, ReplyOrError reply);

    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace kelpa
