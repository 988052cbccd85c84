#include "platform/freedesktop/bus/BlockingBus.h"

#include "platform/LoggingCategories.h"

#include <gio/gunixfdlist.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelpa {

namespace {

using Connection = GObjectPointer<GDBusConnection>;
using Error = GlibPointer<GError>;

/// For opening the connection: a bus that takes longer is not of use.
constexpr std::chrono::seconds longestConnecting{5};

BusCallOutcome outcomeOf(const GError& error)
{
    if (error.domain == G_DBUS_ERROR) {
        switch (error.code) {
        case G_DBUS_ERROR_SERVICE_UNKNOWN:
        case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
        case G_DBUS_ERROR_UNKNOWN_METHOD:
        case G_DBUS_ERROR_UNKNOWN_OBJECT:
        case G_DBUS_ERROR_UNKNOWN_INTERFACE:
        case G_DBUS_ERROR_UNKNOWN_PROPERTY:
            return BusCallOutcome::absent;
        case G_DBUS_ERROR_NO_REPLY:
        case G_DBUS_ERROR_TIMEOUT:
        case G_DBUS_ERROR_TIMED_OUT:
        case G_DBUS_ERROR_DISCONNECTED:
            return BusCallOutcome::silent;
        default:
            return BusCallOutcome::refused;
        }
    }
    const bool isReply = error.domain == G_IO_ERROR && (error.code == G_IO_ERROR_DBUS_ERROR ||
                                                        error.code == G_IO_ERROR_INVALID_ARGUMENT);
    return isReply ? BusCallOutcome::refused : BusCallOutcome::silent;
}

std::vector<FileDescriptor> descriptorsIn(GUnixFDList* list)
{
    std::vector<FileDescriptor> descriptors;
    if (list == nullptr)
        return descriptors;
    int count = 0;
    int* const numbers = g_unix_fd_list_steal_fds(list, &count);
    for (int index = 0; index < count; ++index)
        descriptors.emplace_back(numbers[index]);
    g_free(numbers);
    return descriptors;
}

gboolean cancel(gpointer cancellable)
{
    g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
    return G_SOURCE_REMOVE;
}

/// An asynchronous function of GLib that is waited for, on a context of its own and no longer than
/// `limit`: GLib has no time limits of its own for these.
class Waiting
{
public:
    explicit Waiting(std::chrono::milliseconds limit)
    {
        g_main_context_push_thread_default(m_context.get());
        GSource* const timeout = g_timeout_source_new(static_cast<guint>(limit.count()));
        g_source_set_callback(timeout, cancel, m_cancellable.get(), nullptr);
        g_source_attach(timeout, m_context.get());
        g_source_unref(timeout);
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() { g_main_context_pop_thread_default(m_context.get()); }

    GCancellable* cancellable() const { return m_cancellable.get(); }

    /// For `finish`.
    gpointer data() { return this; }

    static void finish(GObject* /*source*/, GAsyncResult* result, gpointer data)
    {
        auto* const waiting = static_cast<Waiting*>(data);
        waiting->m_result.reset(G_ASYNC_RESULT(g_object_ref(result)));
    }

    GAsyncResult* wait()
    {
        while (!m_result)
            g_main_context_iteration(m_context.get(), TRUE);
        return m_result.get();
    }

private:
    const GlibPointer<GMainContext> m_context{g_main_context_new()};
    const GObjectPointer<GCancellable> m_cancellable{g_cancellable_new()};
    GObjectPointer<GAsyncResult> m_result;
};

Connection openConnection(const std::string& address, std::chrono::milliseconds limit)
{
    Waiting waiting(limit);
    g_dbus_connection_new_for_address(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, waiting.cancellable(), Waiting::finish, waiting.data());
    return Connection(g_dbus_connection_new_for_address_finish(waiting.wait(), nullptr));
}

} // namespace

struct BlockingBus::Filter
{
    /// Held while a message is delivered, so that none is after the destruction.
    std::mutex mutex;
    Receive receive;

    static GDBusMessage* handle(GDBusConnection* connection, GDBusMessage* message,
                                gboolean isIncoming, gpointer data)
    {
        const GDBusMessageType type = g_dbus_message_get_message_type(message);
        if (isIncoming == FALSE ||
            (type != G_DBUS_MESSAGE_TYPE_SIGNAL && type != G_DBUS_MESSAGE_TYPE_METHOD_CALL))
            return message;
        const auto& filter = *static_cast<std::shared_ptr<Filter>*>(data);
        const std::scoped_lock lock(filter->mutex);
        if (!filter->receive || !filter->receive(connection, message))
            return message;
        g_object_unref(message);
        return nullptr;
    }

    static void release(gpointer data)
    {
        const std::unique_ptr<std::shared_ptr<Filter>> owned(
            static_cast<std::shared_ptr<Filter>*>(data));
    }
};

BlockingBus::BlockingBus(std::string address, std::vector<std::string> matches, Receive receive)
    : m_address(std::move(address)), m_matches(std::move(matches)),
      m_filter(std::make_shared<Filter>())
{
    m_filter->receive = std::move(receive);
}

BlockingBus::~BlockingBus()
{
    {
        const std::scoped_lock lock(m_filter->mutex);
        m_filter->receive = {};
    }
    if (m_connection)
        g_dbus_connection_close(m_connection.get(), nullptr, nullptr, nullptr);
}

Connection BlockingBus::connection(Milliseconds limit)
{
    const std::scoped_lock lock(m_mutex);
    const bool isOpen = m_connection && g_dbus_connection_is_closed(m_connection.get()) == FALSE;
    if (!isOpen) {
        m_connection = m_address.empty() ? nullptr : openConnection(m_address, limit);
        if (!m_connection) {
            qCDebug(logBus, "no connection to the session bus");
            return nullptr;
        }
        g_dbus_connection_add_filter(m_connection.get(), Filter::handle,
                                     std::make_unique<std::shared_ptr<Filter>>(m_filter).release(),
                                     Filter::release);
        for (const std::string& match : m_matches) {
            // The bus keeps the order of calls, so no reply has to be awaited.
            g_dbus_connection_call(m_connection.get(), busItself.name.c_str(),
                                   busItself.path.c_str(), busItself.interface.c_str(), "AddMatch",
                                   g_variant_new("(s)", match.c_str()), nullptr,
                                   G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
        }
    }
    return Connection(G_DBUS_CONNECTION(g_object_ref(m_connection.get())));
}

BusReply BlockingBus::call(const BusAddressee& to, const char* method, GVariant* arguments,
                           const char* replyType, Milliseconds limit, int descriptor,
                           const std::stop_token& stop)
{
    const GlibPointer<GVariant> held(arguments == nullptr ? nullptr
                                                          : g_variant_ref_sink(arguments));
    if (to.name.empty())
        return {.outcome = BusCallOutcome::absent};
    // A reply may be awaited for long, the bus itself not.
    const Connection open = connection(std::min<Milliseconds>(limit, longestConnecting));
    if (!open)
        return {};
    const GObjectPointer<GUnixFDList> list(descriptor < 0 ? nullptr : g_unix_fd_list_new());
    if (list && g_unix_fd_list_append(list.get(), descriptor, nullptr) < 0)
        return {};
    const GObjectPointer<GCancellable> cancellable(g_cancellable_new());
    const std::stop_callback stopping(stop, [&] { g_cancellable_cancel(cancellable.get()); });
    GUnixFDList* received = nullptr;
    GError* error = nullptr;
    // At least one millisecond: zero and less have other meanings.
    const int milliseconds = static_cast<int>(std::max<Milliseconds::rep>(1, limit.count()));
    GlibPointer<GVariant> value(g_dbus_connection_call_with_unix_fd_list_sync(
        open.get(), to.name.c_str(), to.path.c_str(), to.interface.c_str(), method, held.get(),
        G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NO_AUTO_START, milliseconds, list.get(),
        &received, cancellable.get(), &error));
    const Error heldError(error);
    const GObjectPointer<GUnixFDList> heldList(received);
    if (value)
        return {.outcome = BusCallOutcome::answered,
                .value = std::move(value),
                .error = {},
                .descriptors = descriptorsIn(heldList.get())};
    if (!heldError)
        return {.outcome = BusCallOutcome::refused};
    qCDebug(logBus, "%s: %s", method, heldError->message);
    const GlibPointer<char> name(g_dbus_error_get_remote_error(heldError.get()));
    return {.outcome = outcomeOf(*heldError), .error = name ? name.get() : std::string()};
}

std::optional<std::string> BlockingBus::ownerOf(const std::string& name, Milliseconds limit)
{
    const BusReply reply =
        call(busItself, "GetNameOwner", g_variant_new("(s)", name.c_str()), "(s)", limit);
    if (reply.outcome == BusCallOutcome::silent)
        return std::nullopt;
    if (reply.outcome != BusCallOutcome::answered)
        return std::string();
    const char* owner = nullptr;
    g_variant_get(reply.value.get(), "(&s)", &owner);
    return std::string(owner);
}

std::string BlockingBus::ownName()
{
    const std::scoped_lock lock(m_mutex);
    const char* const name =
        m_connection ? g_dbus_connection_get_unique_name(m_connection.get()) : nullptr;
    return name == nullptr ? std::string() : std::string(name);
}

void BlockingBus::send(const BusAddressee& to, const char* method, GVariant* arguments,
                       Milliseconds limit)
{
    const GlibPointer<GVariant> held(arguments == nullptr ? nullptr
                                                          : g_variant_ref_sink(arguments));
    const std::scoped_lock lock(m_mutex);
    if (!m_connection)
        return;
    g_dbus_connection_call(m_connection.get(), to.name.c_str(), to.path.c_str(),
                           to.interface.c_str(), method, held.get(), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
    Waiting waiting(limit);
    g_dbus_connection_flush(m_connection.get(), waiting.cancellable(), Waiting::finish,
                            waiting.data());
    g_dbus_connection_flush_finish(m_connection.get(), waiting.wait(), nullptr);
}

} // namespace kelpa
