#include "platform/freedesktop/toolkit/SessionBusStandIn.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <gio/gio.h>

#include <mutex>
#include <string_view>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

constexpr const char* daemonName = "org.freedesktop.DBus";
constexpr const char* daemonPath = "/org/freedesktop/DBus";
constexpr const char* serviceName = "org.a11y.Bus";
/// Unique names on this bus.
constexpr const char* uniqueNameOfClient = ":1.1";
constexpr const char* uniqueNameOfService = ":1.2";

using Connection = GObjectPointer<GDBusConnection>;
using Message = GObjectPointer<GDBusMessage>;

void send(GDBusConnection* connection, GDBusMessage* message)
{
    g_dbus_message_set_sender(message, daemonName);
    g_dbus_connection_send_message(connection, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
}

std::string_view textOf(const char* text)
{
    return text != nullptr ? text : "";
}

/// Whether the call reads the second of the two properties that switch accessibility on.
bool readsLastProperty(GDBusMessage* call)
{
    GVariant* const arguments = g_dbus_message_get_body(call);
    if (arguments == nullptr || g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ss)")) == FALSE)
        return false;
    const char* interface = nullptr;
    const char* property = nullptr;
    g_variant_get(arguments, "(&s&s)", &interface, &property);
    return textOf(property) == "IsEnabled";
}

Message refusal(GDBusMessage* call, const char* name)
{
    return Message(g_dbus_message_new_method_error_literal(
        call, name, "There is no answer while the session bus is silent"));
}

Message reply(GDBusMessage* call, GVariant* arguments)
{
    Message message(g_dbus_message_new_method_reply(call));
    if (arguments != nullptr)
        g_dbus_message_set_body(message.get(), arguments);
    return message;
}

/// Says that the accessibility bus's service has come.
void sendRegistration(GDBusConnection* connection)
{
    const Message signal(g_dbus_message_new_signal(daemonPath, daemonName, "NameOwnerChanged"));
    g_dbus_message_set_body(signal.get(),
                            g_variant_new("(sss)", serviceName, "", uniqueNameOfService));
    send(connection, signal.get());
}

} // namespace

/// Shared with the threads of GLib that handle messages, which may still do so when the stand-in is
/// gone.
class SessionBusStandIn::State : public std::enable_shared_from_this<State>
{
public:
    void listen();
    void close();
    std::string address() const
    {
        return m_server ? g_dbus_server_get_client_address(m_server.get()) : "";
    }
    void announce(const std::string& busAddress);

private:
    using Shared = std::shared_ptr<State>;

    static gboolean accepted(GDBusServer*, GDBusConnection* connection, gpointer data);
    static GDBusMessage* filter(GDBusConnection* connection, GDBusMessage* message,
                                gboolean isIncoming, gpointer data);
    static void forget(gpointer data) { delete static_cast<Shared*>(data); }

    Message answer(GDBusMessage* call);
    Message answerOfService(GDBusMessage* call);
    bool takeSwitch(GDBusMessage* call);

    GObjectPointer<GDBusServer> m_server;
    std::mutex m_mutex;
    std::vector<Connection> m_connections;
    /// Empty while there is no accessibility bus.
    std::string m_accessibilityAddress;
    bool m_isSwitchedOn = false;
};

void SessionBusStandIn::State::listen()
{
    const GlibPointer<char> guid(g_dbus_generate_guid());
    const std::string where = std::string("unix:tmpdir=") + g_get_tmp_dir();
    GError* error = nullptr;
    m_server.reset(g_dbus_server_new_sync(where.c_str(),
                                          G_DBUS_SERVER_FLAGS_AUTHENTICATION_REQUIRE_SAME_USER,
                                          guid.get(), nullptr, nullptr, &error));
    const GlibPointer<GError> held(error);
    if (held) {
        qCDebug(logBus, "no stand-in for the session bus: %s", held->message);
        return;
    }
    g_signal_connect(m_server.get(), "new-connection", G_CALLBACK(accepted), this);
    g_dbus_server_start(m_server.get());
}

void SessionBusStandIn::State::close()
{
    if (m_server) {
        g_signal_handlers_disconnect_by_data(m_server.get(), this);
        g_dbus_server_stop(m_server.get());
    }
    std::vector<Connection> connections;
    {
        const std::lock_guard lock(m_mutex);
        connections = std::exchange(m_connections, {});
    }
    for (const Connection& connection : connections)
        g_dbus_connection_close(connection.get(), nullptr, nullptr, nullptr);
}

gboolean SessionBusStandIn::State::accepted(GDBusServer*, GDBusConnection* connection,
                                            gpointer data)
{
    auto* const self = static_cast<State*>(data);
    g_dbus_connection_set_exit_on_close(connection, FALSE);
    g_dbus_connection_add_filter(connection, filter, new Shared(self->shared_from_this()), forget);
    const std::lock_guard lock(self->m_mutex);
    self->m_connections.emplace_back(G_DBUS_CONNECTION(g_object_ref(connection)));
    return TRUE;
}

GDBusMessage* SessionBusStandIn::State::filter(GDBusConnection* connection, GDBusMessage* message,
                                               gboolean isIncoming, gpointer data)
{
    if (isIncoming == FALSE)
        return message;
    const Message held(message);
    if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return nullptr;
    State& self = **static_cast<Shared*>(data);
    const Message answer = self.answer(message);
    if ((g_dbus_message_get_flags(message) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) == 0)
        send(connection, answer.get());
    if (self.takeSwitch(message))
        sendRegistration(connection);
    return nullptr;
}

Message SessionBusStandIn::State::answer(GDBusMessage* call)
{
    const std::string_view to = textOf(g_dbus_message_get_destination(call));
    if (to == serviceName || to == uniqueNameOfService)
        return answerOfService(call);
    if (to != daemonName)
        return refusal(call, "org.freedesktop.DBus.Error.ServiceUnknown");
    const std::string_view member = textOf(g_dbus_message_get_member(call));
    const std::string_view name = textOf(g_dbus_message_get_arg0(call));
    if (member == "Hello")
        return reply(call, g_variant_new("(s)", uniqueNameOfClient));
    if (member == "AddMatch" || member == "RemoveMatch")
        return reply(call, nullptr);
    if (member == "NameHasOwner")
        return reply(call, g_variant_new("(b)", static_cast<gboolean>(name == serviceName)));
    if (member == "GetNameOwner" && name == serviceName)
        return reply(call, g_variant_new("(s)", uniqueNameOfService));
    if (member == "GetNameOwner")
        return refusal(call, "org.freedesktop.DBus.Error.NameHasNoOwner");
    return refusal(call, "org.freedesktop.DBus.Error.UnknownMethod");
}

Message SessionBusStandIn::State::answerOfService(GDBusMessage* call)
{
    const std::string_view member = textOf(g_dbus_message_get_member(call));
    const std::lock_guard lock(m_mutex);
    if (member == "Get") {
        return reply(call, g_variant_new("(v)", g_variant_new_boolean(
                                                    static_cast<gboolean>(m_isSwitchedOn))));
    }
    if (member == "GetAddress" && !m_accessibilityAddress.empty())
        return reply(call, g_variant_new("(s)", m_accessibilityAddress.c_str()));
    return refusal(call, "org.freedesktop.DBus.Error.UnknownMethod");
}

/// The toolkit acts on a change of the setting only, and reads it when the service registers. It
/// may take accessibility to be on already, since the X server names a bus, so that it has to read
/// that it is off before it reads that it is on: the service registers twice. True after the call
/// that read it the first time.
bool SessionBusStandIn::State::takeSwitch(GDBusMessage* call)
{
    const std::lock_guard lock(m_mutex);
    if (m_isSwitchedOn || m_accessibilityAddress.empty() || !readsLastProperty(call))
        return false;
    m_isSwitchedOn = true;
    return true;
}

void SessionBusStandIn::State::announce(const std::string& busAddress)
{
    const std::lock_guard lock(m_mutex);
    m_accessibilityAddress = busAddress;
    for (const Connection& connection : m_connections)
        sendRegistration(connection.get());
}

SessionBusStandIn::SessionBusStandIn() : m_state(std::make_shared<State>())
{
    m_state->listen();
}

SessionBusStandIn::~SessionBusStandIn()
{
    m_state->close();
}

std::string SessionBusStandIn::address() const
{
    return m_state->address();
}

void SessionBusStandIn::announceAccessibility(const std::string& busAddress)
{
    m_state->announce(busAddress);
}

} // namespace kelpa
