#include "platform/freedesktop/RunningProgram.h"

#include "platform/freedesktop/AsyncBus.h"
#include "platform/freedesktop/SessionBus.h"

#include <optional>

namespace kelpa {

namespace {

constexpr std::chrono::milliseconds connectLimit{1000};
constexpr std::chrono::milliseconds lookLimit{500};

const BusAddressee busItself{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus"};

/// A context of its own, so that nothing else happens meanwhile.
class Loop
{
public:
    Loop() : m_context(g_main_context_new()) { g_main_context_push_thread_default(m_context); }
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;
    ~Loop()
    {
        g_main_context_pop_thread_default(m_context);
        g_main_context_unref(m_context);
    }

    template <class Value>
    Value await(const std::optional<Value>& value)
    {
        while (!value)
            g_main_context_iteration(m_context, TRUE);
        return *value;
    }

private:
    GMainContext* m_context;
};

GVariant* platformData(const QByteArray& startupID)
{
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    if (!startupID.isEmpty() && g_utf8_validate(startupID.constData(), -1, nullptr) != FALSE) {
        for (const char* const key : {"desktop-startup-id", "activation-token"})
            g_variant_builder_add(&data, "{sv}", key, g_variant_new_string(startupID.constData()));
    }
    return g_variant_new("(a{sv})", &data);
}

BusOutcome activate(Loop& loop, AsyncBus& bus, const QByteArray& busName,
                    const QByteArray& startupID, std::chrono::milliseconds limit)
{
    std::optional<BusOutcome> outcome;
    bus.call({busName.toStdString(), "/org/kelpa/Kelpa", "org.freedesktop.Application"}, "Activate",
             platformData(startupID), "()", limit,
             [&outcome](BusOutcome answer, GVariant*) { outcome = answer; });
    return loop.await(outcome);
}

bool hasOwner(Loop& loop, AsyncBus& bus, const QByteArray& busName)
{
    std::optional<bool> hasOwner;
    bus.call(busItself, "NameHasOwner", g_variant_new("(s)", busName.constData()), "(b)", lookLimit,
             [&hasOwner](BusOutcome outcome, GVariant* answer) {
                 gboolean owned = TRUE;
                 if (outcome == BusOutcome::answered)
                     g_variant_get(answer, "(b)", &owned);
                 hasOwner = owned != FALSE;
             });
    return loop.await(hasOwner);
}

} // namespace

RunningAnswer askToComeForward(const QByteArray& busName, const QByteArray& startupID,
                               std::chrono::milliseconds limit)
{
    const QByteArray address = sessionBusAddress();
    if (address.isEmpty())
        return RunningAnswer::notRunning;
    Loop loop;
    AsyncBus bus;
    std::optional<bool> isOpen;
    bus.open(address.toStdString(), connectLimit, [&isOpen](bool opened) { isOpen = opened; });
    if (!loop.await(isOpen))
        return RunningAnswer::notRunning;
    switch (activate(loop, bus, busName, startupID, limit)) {
    case BusOutcome::answered:
        return RunningAnswer::comesForward;
    case BusOutcome::refused:
        return RunningAnswer::notRunning;
    case BusOutcome::silent:
        break;
    }
    return hasOwner(loop, bus, busName) ? RunningAnswer::silent : RunningAnswer::ended;
}

} // namespace kelpa
