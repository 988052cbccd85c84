// What the Shell and its extension reply and signal, as it arrives over the bus.
#pragma once

#include "platform/freedesktop/bus/BlockingBus.h"
#include "platform/gnome/CallOutcome.h"

#include <gio/gio.h>

#include <optional>
#include <string>

namespace kelpa::gnome {

struct ShellSignal
{
    /// The unique name of the sender.
    std::string sender;
    std::string interface;
    std::string member;
};

/// Absent for a message that is no signal.
std::optional<ShellSignal> signalIn(GDBusMessage* message);

CallOutcome outcomeOf(const BusReply& reply);

/// Whether the reply is that of an extension which serves Kelpa, or may be.
bool isServed(const BusReply& reply);

} // namespace kelpa::gnome
