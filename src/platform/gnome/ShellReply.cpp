#include "platform/gnome/ShellReply.h"

#include <string_view>

namespace kelpa::gnome {

namespace {

std::string textOrNothing(const char* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

} // namespace

std::optional<ShellSignal> signalIn(GDBusMessage* message)
{
    if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_SIGNAL)
        return std::nullopt;
    return ShellSignal{.sender = textOrNothing(g_dbus_message_get_sender(message)),
                       .interface = textOrNothing(g_dbus_message_get_interface(message)),
                       .member = textOrNothing(g_dbus_message_get_member(message))};
}

CallOutcome outcomeOf(const BusReply& reply)
{
    switch (reply.outcome) {
    case BusCallOutcome::answered:
        return CallOutcome::answered;
    case BusCallOutcome::absent:
        return CallOutcome::absent;
    case BusCallOutcome::silent:
        return CallOutcome::silent;
    case BusCallOutcome::refused:
        break;
    }
    const std::string_view error = reply.error;
    if (error.ends_with(".AccessDenied"))
        return CallOutcome::denied;
    return error.ends_with(".Outdated") ? CallOutcome::outdated : CallOutcome::refused;
}

bool isServed(const BusReply& reply)
{
    const CallOutcome outcome = outcomeOf(reply);
    return outcome != CallOutcome::absent && outcome != CallOutcome::denied;
}

} // namespace kelpa::gnome
