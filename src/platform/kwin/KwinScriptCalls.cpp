#include "platform/kwin/KwinScriptCalls.h"

#include "platform/kwin/KwinReport.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace kelpa::kwin {

namespace {

constexpr std::string_view objectPath = "/org/kelpa/KwinScript";
constexpr std::string_view objectInterface = "org.kelpa.KwinScript";
/// A script that asks no more is not to fill the memory: some 500 kB. One gesture orders something
/// for each window of a goal, or of the desktop, and none of it may be lost while the script is
/// about to ask: many times the windows that a desktop has.
constexpr std::size_t mostOrders = 4096;

std::string_view viewOf(const char* text)
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

QByteArray bytesOf(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

void send(GDBusConnection* connection, GDBusMessage* call, GDBusMessage* reply)
{
    const GObjectPointer<GDBusMessage> held(reply);
    if ((g_dbus_message_get_flags(call) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) == 0) {
        g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
    }
}

void sendText(GDBusConnection* connection, GDBusMessage* call, const QByteArray& text)
{
    GDBusMessage* const reply = g_dbus_message_new_method_reply(call);
    g_dbus_message_set_body(reply, g_variant_new("(s)", text.constData()));
    send(connection, call, reply);
}

/// The text argument of that number; empty where there is none.
std::string_view textIn(GDBusMessage* message, gsize number)
{
    GVariant* const body = g_dbus_message_get_body(message);
    if (body == nullptr || g_variant_n_children(body) <= number)
        return {};
    const GlibPointer<GVariant> child(g_variant_get_child_value(body, number));
    if (g_variant_is_of_type(child.get(), G_VARIANT_TYPE_STRING) == FALSE)
        return {};
    // The body, which the message owns, has the text.
    gsize length = 0;
    const char* const text = g_variant_get_string(child.get(), &length);
    return {text, length};
}

} // namespace

void KwinScriptCalls::expect(std::string owner, std::string token)
{
    const std::scoped_lock lock(m_mutex);
    m_owner = std::move(owner);
    m_token = std::move(token);
    m_report.reset();
    m_orders.clear();
    m_asking.reset();
}

bool KwinScriptCalls::isExpected(GDBusMessage* message) const
{
    return !m_owner.empty() && viewOf(g_dbus_message_get_sender(message)) == m_owner &&
           textIn(message, 0) == m_token;
}

KwinScriptCalls::Receipt KwinScriptCalls::receive(GDBusConnection* connection,
                                                  GDBusMessage* message)
{
    if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL ||
        viewOf(g_dbus_message_get_path(message)) != objectPath ||
        viewOf(g_dbus_message_get_interface(message)) != objectInterface)
        return Receipt::other;
    const std::scoped_lock lock(m_mutex);
    if (!isExpected(message)) {
        send(connection, message,
             g_dbus_message_new_method_error_literal(message,
                                                     "org.freedesktop.DBus.Error.AccessDenied",
                                                     "Only Kelpa's script within KWin calls this"));
        return Receipt::replied;
    }
    const std::string_view member = viewOf(g_dbus_message_get_member(message));
    if (member == "Report") {
        const std::string_view text = textIn(message, 1);
        const std::string_view desktops = textIn(message, 2);
        const std::string_view screens = textIn(message, 3);
        if (text.size() + desktops.size() + screens.size() <=
            static_cast<std::size_t>(longestReport)) {
            m_report = NumberedReport{.text = bytesOf(text),
                                      .desktops = bytesOf(desktops),
                                      .screens = bytesOf(screens),
                                      .number = ++m_lastNumber};
        }
        send(connection, message, g_dbus_message_new_method_reply(message));
        m_reported.notify_all();
        return Receipt::reported;
    }
    if (member == "BringForward") {
        send(connection, message, g_dbus_message_new_method_reply(message));
        return Receipt::summoned;
    }
    if (member == "Orders") {
        // The script gives up waiting for the reply to the earlier call.
        if (m_asking)
            sendText(m_asking->connection.get(), m_asking->message.get(), "[]");
        m_asking =
            Asking{.connection =
                       GObjectPointer<GDBusConnection>(G_DBUS_CONNECTION(g_object_ref(connection))),
                   .message = GObjectPointer<GDBusMessage>(G_DBUS_MESSAGE(g_object_ref(message)))};
        sendOrders();
        return Receipt::replied;
    }
    return Receipt::other;
}

void KwinScriptCalls::order(const KwinOrder& order)
{
    const std::scoped_lock lock(m_mutex);
    m_orders.push_back(textOf(order));
    if (m_orders.size() > mostOrders)
        m_orders.pop_front();
    sendOrders();
}

void KwinScriptCalls::sendOrders()
{
    if (!m_asking || m_orders.empty())
        return;
    const std::deque<QByteArray> orders = std::exchange(m_orders, {});
    QByteArray text;
    for (const QByteArray& each : orders)
        text += (text.isEmpty() ? '[' : ',') + each;
    sendText(m_asking->connection.get(), m_asking->message.get(), text + ']');
    m_asking.reset();
}

std::optional<NumberedReport> KwinScriptCalls::report() const
{
    const std::scoped_lock lock(m_mutex);
    return m_report;
}

bool KwinScriptCalls::waitForReport(std::chrono::milliseconds limit) const
{
    std::unique_lock lock(m_mutex);
    return m_reported.wait_for(lock, limit, [this] { return m_report.has_value(); });
}

} // namespace kelpa::kwin
