#include "platform/gnome/FakeShell.h"

#include <gio/gunixfdlist.h>

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

namespace kelpa::test {

namespace {

GObjectPointer<GDBusConnection> connectedTo(const QString& address)
{
    GObjectPointer<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
        address.toUtf8().constData(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection)
        throw std::runtime_error("the fake Shell has no bus");
    return connection;
}

GVariant* parsed(const std::string& text)
{
    GVariant* const value = g_variant_parse(nullptr, text.c_str(), nullptr, nullptr, nullptr);
    if (value == nullptr)
        throw std::runtime_error("not a value: " + text);
    return value;
}

constexpr guint doNotQueue = 4;

/// Of a file without a name, to which the message refers by its first descriptor.
GObjectPointer<GUnixFDList> fileWith(const QByteArray& contents)
{
    GObjectPointer<GUnixFDList> list(g_unix_fd_list_new());
    const int file = ::memfd_create("picture", MFD_CLOEXEC);
    if (::write(file, contents.constData(), static_cast<std::size_t>(contents.size())) < 0)
        throw std::runtime_error("the picture cannot be written");
    g_unix_fd_list_append(list.get(), file, nullptr);
    ::close(file);
    return list;
}

} // namespace

FakeShell::FakeShell(const QString& address) : m_connection(connectedTo(address))
{
    g_dbus_connection_add_filter(m_connection.get(), handle, this, nullptr);
    callBus("RequestName", g_variant_new("(su)", "org.gnome.Shell", doNotQueue));
}

FakeShell::~FakeShell()
{
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
    const std::scoped_lock lock(m_mutex);
}

void FakeShell::behave(const ShellBehaviour& behaviour)
{
    const std::scoped_lock lock(m_mutex);
    m_behaviour = behaviour;
}

ShellBehaviour FakeShell::behaviour()
{
    const std::scoped_lock lock(m_mutex);
    return m_behaviour;
}

void FakeShell::showExtension()
{
    callBus("RequestName", g_variant_new("(su)", "org.kelpa.Windows", doNotQueue));
}

void FakeShell::hideExtension()
{
    callBus("ReleaseName", g_variant_new("(s)", "org.kelpa.Windows"));
}

void FakeShell::callBus(const char* method, GVariant* arguments)
{
    g_dbus_connection_call(m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", method, arguments, nullptr,
                           G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    g_dbus_connection_flush_sync(m_connection.get(), nullptr, nullptr);
}

void FakeShell::send(const char* signal)
{
    g_dbus_connection_emit_signal(m_connection.get(), listener().toUtf8().constData(),
                                  "/org/kelpa/Windows", "org.kelpa.Windows1", signal, nullptr,
                                  nullptr);
}

QString FakeShell::listener()
{
    const std::scoped_lock lock(m_mutex);
    return QString::fromStdString(m_listener);
}

QStringList FakeShell::calls()
{
    const std::scoped_lock lock(m_mutex);
    return m_calls;
}

GDBusMessage* FakeShell::handle(GDBusConnection* connection, GDBusMessage* message,
                                gboolean isIncoming, gpointer self)
{
    if (isIncoming == FALSE ||
        g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    static_cast<FakeShell*>(self)->answer(connection, message);
    g_object_unref(message);
    return nullptr;
}

void FakeShell::answer(GDBusConnection* connection, GDBusMessage* call)
{
    const std::scoped_lock lock(m_mutex);
    const std::string method = g_dbus_message_get_member(call);
    GVariant* const body = g_dbus_message_get_body(call);
    const GlibPointer<char> arguments(body == nullptr ? g_strdup("()")
                                                      : g_variant_print(body, TRUE));
    m_calls.append(QString::fromStdString(method) + u' ' + QString::fromUtf8(arguments.get()));
    if (m_behaviour.isHanging)
        return;
    if (method == "Attach")
        m_listener = g_dbus_message_get_sender(call);
    const GObjectPointer<GDBusMessage> reply = replyTo(call, method);
    g_dbus_connection_send_message(connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
    if (method == "EnableExtension" && m_behaviour.isEnabling && m_behaviour.state)
        g_dbus_connection_call(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                               "org.freedesktop.DBus", "RequestName",
                               g_variant_new("(su)", "org.kelpa.Windows", doNotQueue), nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

GObjectPointer<GDBusMessage> FakeShell::replyTo(GDBusMessage* call, const std::string& method)
{
    if (const auto error = m_behaviour.errors.find(method); error != m_behaviour.errors.end())
        return GObjectPointer<GDBusMessage>(
            g_dbus_message_new_method_error_literal(call, error->second.c_str(), "as it was told"));
    GObjectPointer<GDBusMessage> reply(g_dbus_message_new_method_reply(call));
    GVariant* body = nullptr;
    if (const auto told = m_behaviour.replies.find(method); told != m_behaviour.replies.end()) {
        body = parsed(told->second);
    } else if (method == "Get") {
        body = m_calls.constLast().contains(QStringLiteral("ShellVersion"))
                   ? g_variant_new("(v)", g_variant_new_string("43.9"))
                   : g_variant_new("(v)", g_variant_new_uint32(m_behaviour.version));
    } else if (method == "Attach") {
        body = parsed("(uint64 " + std::to_string(m_behaviour.run) + ", @a{sv} {})");
    } else if (method == "GetExtensionInfo") {
        body = m_behaviour.state ? parsed("({'state': <" + std::to_string(*m_behaviour.state) +
                                          ">, 'uuid': <'windows@kelpa.org'>},)")
                                 : parsed("(@a{sv} {},)");
    } else if (method == "EnableExtension") {
        body = g_variant_new("(b)", m_behaviour.state ? TRUE : FALSE);
    } else if (method == "List") {
        body = parsed("(@aa{sv} [],)");
    }
    if (body != nullptr)
        g_dbus_message_set_body(reply.get(), body);
    if (method == "Picture")
        g_dbus_message_set_unix_fd_list(reply.get(), fileWith(m_behaviour.picture).get());
    return reply;
}

void sendFromStranger(const QString& address, const QString& to, const char* signal)
{
    const GObjectPointer<GDBusConnection> connection = connectedTo(address);
    g_dbus_connection_emit_signal(connection.get(), to.toUtf8().constData(), "/org/kelpa/Windows",
                                  "org.kelpa.Windows1", signal, nullptr, nullptr);
    g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
}

} // namespace kelpa::test
