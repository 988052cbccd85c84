#include "platform/kwin/KwinPresence.h"

#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/bus/BlockingBus.h"

#include <cstdint>
#include <string>

namespace kelpa::kwin {

namespace {

/// Absent when the bus does not know it, or does not reply.
std::optional<ProcessID> processOf(BlockingBus& bus, const std::string& owner,
                                   std::chrono::milliseconds limit)
{
    const BusReply reply =
        bus.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
                 "GetConnectionUnixProcessID", g_variant_new("(s)", owner.c_str()), "(u)", limit);
    if (!reply.value)
        return std::nullopt;
    std::uint32_t process = 0;
    g_variant_get(reply.value.get(), "(u)", &process);
    return static_cast<ProcessID>(process);
}

/// By a call that KWin's own thread answers, which is also the one that serves the compositor's
/// clients.
bool isReplying(BlockingBus& bus, const std::string& owner, std::chrono::milliseconds limit)
{
    const BusReply reply = bus.call({owner, "/Scripting", "org.kde.kwin.Scripting"},
                                    "isScriptLoaded", g_variant_new("(s)", "none"), "(b)", limit);
    return reply.outcome == BusCallOutcome::answered;
}

} // namespace

std::optional<bool> isKwinThere(const QByteArray& busAddress, std::chrono::milliseconds limit)
{
    const std::optional<std::string> owner =
        BlockingBus(busAddress.toStdString(), {}, {}).ownerOf(busName, limit);
    return owner ? std::optional(!owner->empty()) : std::nullopt;
}

std::optional<bool> isKwinBehind(ProcessID listener, const QByteArray& busAddress,
                                 std::chrono::milliseconds limit)
{
    BlockingBus bus(busAddress.toStdString(), {}, {});
    const std::optional<std::string> owner = bus.ownerOf(busName, limit);
    if (!owner)
        return std::nullopt;
    if (owner->empty())
        return false;
    const std::optional<ProcessID> process = processOf(bus, *owner, limit);
    if (!process)
        return false;
    const std::optional<ProcessStatus> status = processStatus(*process);
    const bool isListening = *process == listener || (status && status->parent == listener);
    return isListening && isReplying(bus, *owner, limit);
}

} // namespace kelpa::kwin
