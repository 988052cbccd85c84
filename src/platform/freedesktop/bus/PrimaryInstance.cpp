#include "platform/freedesktop/bus/PrimaryInstance.h"

#include "platform/ExecutableName.h"
#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <glib-unix.h>

#include <cstdint>
#include <optional>

namespace kelpa {

namespace {

/// A board that waits longer for a silent bus seems not to start.
constexpr std::chrono::milliseconds connectLimit{500};
constexpr std::chrono::milliseconds ownerLimit{500};

gboolean noteInterruption(int, GIOCondition, void* isInterrupted)
{
    *static_cast<bool*>(isInterrupted) = true;
    return G_SOURCE_REMOVE;
}

/// A main context of its own, so that no other source is dispatched meanwhile.
class Loop
{
public:
    explicit Loop(int interruption) : m_context(g_main_context_new())
    {
        g_main_context_push_thread_default(m_context.get());
        if (interruption < 0)
            return;
        GSource* const source = g_unix_fd_source_new(interruption, G_IO_IN);
        g_source_set_callback(source, G_SOURCE_FUNC(noteInterruption), &m_isInterrupted, nullptr);
        g_source_attach(source, m_context.get());
        g_source_unref(source);
    }
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;
    ~Loop() { g_main_context_pop_thread_default(m_context.get()); }

    /// Absent when interrupted.
    template <class Value>
    std::optional<Value> await(const std::optional<Value>& value)
    {
        while (!value && !m_isInterrupted)
            g_main_context_iteration(m_context.get(), TRUE);
        return value;
    }

private:
    const GlibPointer<GMainContext> m_context;
    bool m_isInterrupted = false;
};

/// The arguments of a request: with an action also its name and its parameters, of which there are
/// none.
GVariant* requestArguments(const QByteArray& startupID, const QByteArray& action)
{
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    if (!startupID.isEmpty() && g_utf8_validate(startupID.constData(), -1, nullptr) != FALSE) {
        for (const char* const key : {"desktop-startup-id", "activation-token"})
            g_variant_builder_add(&data, "{sv}", key, g_variant_new_string(startupID.constData()));
    }
    if (action.isEmpty())
        return g_variant_new("(a{sv})", &data);
    return g_variant_new("(sava{sv})", action.constData(), nullptr, &data);
}

enum class Owner : std::uint8_t { none, acceptable, foreign };

/// Who cannot be identified counts as acceptable.
Owner ownerWithProcess(quint32 process, const QString& executable)
{
    const QString name = executableName(static_cast<ProcessID>(process));
    return name.isEmpty() || executable.isEmpty() || name == executable ? Owner::acceptable
                                                                        : Owner::foreign;
}

std::optional<Owner> ownerOf(Loop& loop, AsyncBus& bus, const QByteArray& busName,
                             const QString& executable)
{
    std::optional<Owner> owner;
    bus.call(busItself, "GetConnectionUnixProcessID", g_variant_new("(s)", busName.constData()),
             "(u)", ownerLimit, [&owner, &executable](BusOutcome outcome, GVariant* answer) {
                 guint32 process = 0;
                 if (outcome == BusOutcome::answered)
                     g_variant_get(answer, "(u)", &process);
                 owner = outcome == BusOutcome::answered  ? ownerWithProcess(process, executable)
                         : outcome == BusOutcome::refused ? Owner::none
                                                          : Owner::acceptable;
             });
    return loop.await(owner);
}

std::optional<BusOutcome> activate(Loop& loop, AsyncBus& bus, const QByteArray& busName,
                                   const QByteArray& startupID, const QByteArray& action,
                                   std::chrono::milliseconds limit)
{
    std::optional<BusOutcome> outcome;
    bus.call({busName.toStdString(), objectOfKelpa, "org.freedesktop.Application"},
             action.isEmpty() ? "Activate" : "ActivateAction", requestArguments(startupID, action),
             "()", limit, [&outcome](BusOutcome answer, GVariant*) { outcome = answer; });
    return loop.await(outcome);
}

std::optional<bool> hasOwner(Loop& loop, AsyncBus& bus, const QByteArray& busName)
{
    std::optional<bool> hasOwner;
    bus.call(busItself, "NameHasOwner", g_variant_new("(s)", busName.constData()), "(b)",
             ownerLimit, [&hasOwner](BusOutcome outcome, GVariant* answer) {
                 gboolean owned = TRUE;
                 if (outcome == BusOutcome::answered)
                     g_variant_get(answer, "(b)", &owned);
                 hasOwner = owned != FALSE;
             });
    return loop.await(hasOwner);
}

} // namespace

InstanceActivation activatePrimaryInstance(const QByteArray& busName, const QByteArray& startupID,
                                           std::chrono::milliseconds limit, int interruption,
                                           const QString& executable, const QByteArray& action)
{
    const QByteArray address = sessionBusAddress();
    if (address.isEmpty())
        return InstanceActivation::notRunning;
    Loop loop(interruption);
    AsyncBus bus;
    std::optional<bool> isOpen;
    bus.open(address.toStdString(), connectLimit, [&isOpen](bool opened) { isOpen = opened; });
    if (!loop.await(isOpen))
        return InstanceActivation::interrupted;
    if (!*isOpen)
        return InstanceActivation::notRunning;
    const std::optional<Owner> owner = ownerOf(loop, bus, busName, executable);
    if (!owner)
        return InstanceActivation::interrupted;
    if (*owner == Owner::none)
        return InstanceActivation::notRunning;
    if (*owner == Owner::foreign)
        return InstanceActivation::foreign;
    const std::optional<BusOutcome> outcome =
        activate(loop, bus, busName, startupID, action, limit);
    if (!outcome)
        return InstanceActivation::interrupted;
    switch (*outcome) {
    case BusOutcome::answered:
        return InstanceActivation::activated;
    case BusOutcome::refused:
        return InstanceActivation::notRunning;
    case BusOutcome::silent:
        break;
    }
    const std::optional<bool> isOwned = hasOwner(loop, bus, busName);
    if (!isOwned)
        return InstanceActivation::interrupted;
    return *isOwned ? InstanceActivation::timedOut : InstanceActivation::ended;
}

} // namespace kelpa
