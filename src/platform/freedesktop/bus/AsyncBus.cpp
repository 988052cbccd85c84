#include "platform/freedesktop/bus/AsyncBus.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

struct Remove
{
    void operator()(GSource* source) const
    {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

using Connection = GObjectPointer<GDBusConnection>;
using Cancellable = GObjectPointer<GCancellable>;
using Error = GlibPointer<GError>;
using Variant = GlibPointer<GVariant>;
using Source = std::unique_ptr<GSource, Remove>;

bool isRefusal(const GError& error)
{
    return error.domain == G_DBUS_ERROR
               ? error.code != G_DBUS_ERROR_NO_REPLY && error.code != G_DBUS_ERROR_TIMEOUT &&
                     error.code != G_DBUS_ERROR_TIMED_OUT && error.code != G_DBUS_ERROR_DISCONNECTED
               : error.domain != G_IO_ERROR || error.code == G_IO_ERROR_INVALID_ARGUMENT ||
                     error.code == G_IO_ERROR_DBUS_ERROR;
}

} // namespace

struct AsyncBus::State
{
    Connection connection;
    Cancellable cancellable{g_cancellable_new()};
    /// Requests whose callback GLib still owes; it calls each exactly once.
    int owed = 0;
    bool isAbandoned = false;
    using Received = std::function<void(GVariant*)>;
    /// Of the connection, by GLib's numbers.
    std::vector<std::pair<guint, std::unique_ptr<Received>>> subscriptions;
};

namespace {

struct Opening
{
    std::function<void(Connection)> done;
    Cancellable cancellable{g_cancellable_new()};
    Source limit;
    GCancellable* parent = nullptr;
    gulong parentHandler = 0;
};

struct Calling
{
    AsyncBus::ReplyOrError reply;
    std::function<bool()> arrives;
};

void deliver(GDBusConnection* /*connection*/, const char* /*sender*/, const char* /*path*/,
             const char* /*interface*/, const char* /*signal*/, GVariant* arguments, gpointer data)
{
    (*static_cast<const std::function<void(GVariant*)>*>(data))(arguments);
}

gboolean cancelOpening(gpointer data)
{
    g_cancellable_cancel(static_cast<GCancellable*>(data));
    return G_SOURCE_REMOVE;
}

void opened(GObject* /*source*/, GAsyncResult* result, gpointer data)
{
    const std::unique_ptr<Opening> opening(static_cast<Opening*>(data));
    GError* error = nullptr;
    Connection connection(g_dbus_connection_new_for_address_finish(result, &error));
    const Error held(error);
    if (held)
        qCDebug(logBus, "no connection: %s", held->message);
    opening->limit.reset();
    g_signal_handler_disconnect(opening->parent, opening->parentHandler);
    opening->done(std::move(connection));
}

void called(GObject* source, GAsyncResult* result, gpointer data)
{
    const std::unique_ptr<Calling> calling(static_cast<Calling*>(data));
    GError* error = nullptr;
    const Variant value(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error));
    const Error held(error);
    if (!calling->arrives())
        return;
    if (held)
        qCDebug(logBus, "call failed: %s", held->message);
    if (value)
        calling->reply(BusOutcome::answered, value.get(), nullptr);
    else
        calling->reply(held && isRefusal(*held) ? BusOutcome::refused : BusOutcome::silent, nullptr,
                       held.get());
}

} // namespace

AsyncBus::AsyncBus() : m_state(std::make_shared<State>()) {}

void AsyncBus::abandon()
{
    m_state->isAbandoned = true;
    g_cancellable_cancel(m_state->cancellable.get());
}

AsyncBus::~AsyncBus()
{
    abandon();
    GMainContext* context = g_main_context_ref_thread_default();
    while (m_state->owed > 0)
        g_main_context_iteration(context, TRUE);
    close();
    g_main_context_unref(context);
}

void AsyncBus::open(const std::string& address, Milliseconds limit, std::function<void(bool)> done)
{
    close();
    auto opening = std::make_unique<Opening>();
    opening->done = [state = m_state, done = std::move(done)](Connection connection) {
        --state->owed;
        if (state->isAbandoned)
            return;
        state->connection = std::move(connection);
        done(state->connection != nullptr);
    };
    // A cancellable of its own: the limit ends this attempt and no later call.
    opening->parent = m_state->cancellable.get();
    opening->parentHandler = g_signal_connect_swapped(
        opening->parent, "cancelled", G_CALLBACK(g_cancellable_cancel), opening->cancellable.get());
    opening->limit.reset(g_timeout_source_new(static_cast<guint>(limit.count())));
    g_source_set_callback(opening->limit.get(), cancelOpening, opening->cancellable.get(), nullptr);
    GMainContext* context = g_main_context_ref_thread_default();
    g_source_attach(opening->limit.get(), context);
    g_main_context_unref(context);
    ++m_state->owed;
    GCancellable* cancellable = opening->cancellable.get();
    g_dbus_connection_new_for_address(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, cancellable, opened, opening.release());
}

bool AsyncBus::isOpen() const
{
    return m_state->connection && g_dbus_connection_is_closed(m_state->connection.get()) == FALSE;
}

std::string AsyncBus::uniqueName() const
{
    const char* const name = m_state->connection
                                 ? g_dbus_connection_get_unique_name(m_state->connection.get())
                                 : nullptr;
    return name != nullptr ? name : std::string();
}

void AsyncBus::close()
{
    if (m_state->connection) {
        for (const auto& [number, function] : std::exchange(m_state->subscriptions, {}))
            g_dbus_connection_signal_unsubscribe(m_state->connection.get(), number);
        g_dbus_connection_close(m_state->connection.get(), nullptr, nullptr, nullptr);
        m_state->connection.reset();
    }
}

void AsyncBus::call(const BusAddressee& to, const char* method, GVariant* arguments,
                    const char* replyType, Milliseconds limit, Reply reply)
{
    send(to, method, arguments, G_VARIANT_TYPE(replyType), limit,
         [reply = std::move(reply)](BusOutcome outcome, GVariant* value, const GError* /*error*/) {
             reply(outcome, value);
         });
}

void AsyncBus::callForError(const BusAddressee& to, const char* method, GVariant* arguments,
                            Milliseconds limit, ReplyOrError reply)
{
    send(to, method, arguments, nullptr, limit, std::move(reply));
}

void AsyncBus::send(const BusAddressee& to, const char* method, GVariant* arguments,
                    const GVariantType* replyType, Milliseconds limit, ReplyOrError reply)
{
    const Variant held(arguments != nullptr ? g_variant_ref_sink(arguments) : nullptr);
    auto calling = std::make_unique<Calling>();
    calling->reply = std::move(reply);
    calling->arrives = [state = m_state] {
        --state->owed;
        return !state->isAbandoned;
    };
    ++m_state->owed;
    // At least one millisecond: zero and less have other meanings.
    const int milliseconds = static_cast<int>(std::max<Milliseconds::rep>(1, limit.count()));
    g_dbus_connection_call(m_state->connection.get(), to.name.c_str(), to.path.c_str(),
                           to.interface.c_str(), method, held.get(), replyType,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, milliseconds,
                           m_state->cancellable.get(), called, calling.release());
}

void AsyncBus::subscribe(const BusAddressee& from, const char* signal, const std::string& argument,
                         std::function<void(GVariant* arguments)> received)
{
    // The state outlives its subscriptions.
    auto whileWanted = std::make_unique<State::Received>(
        [state = m_state.get(), received = std::move(received)](GVariant* arguments) {
            if (!state->isAbandoned)
                received(arguments);
        });
    const guint number = g_dbus_connection_signal_subscribe(
        m_state->connection.get(), from.name.c_str(), from.interface.c_str(), signal,
        from.path.c_str(), argument.empty() ? nullptr : argument.c_str(), G_DBUS_SIGNAL_FLAGS_NONE,
        deliver, whileWanted.get(), nullptr);
    m_state->subscriptions.emplace_back(number, std::move(whileWanted));
}

} // namespace kelpa
