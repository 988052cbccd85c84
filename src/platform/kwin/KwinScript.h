// The text of the script that Kelpa runs within KWin (kelpa.js), and of the orders it is sent.
#pragma once

#include "model/Identifiers.h"

#include <QByteArray>

#include <cstdint>

namespace kelpa::kwin {

/// kelpa.js, with its parameters as @connection@, @token@ and @plugin@.
extern const char* const scriptTemplate;

struct ScriptParameters
{
    /// Kelpa's unique name on the bus, which the script calls.
    QByteArray connection;
    /// Tells this loading of the script from every other script and loading.
    QByteArray token;
    /// By which KWin knows the script, and never has two.
    QByteArray plugin;
};

/// The whole script. The parameters are of letters, digits, and the signs . : - _ alone; absent
/// otherwise, that is, empty.
QByteArray scriptWith(const ScriptParameters& parameters);

/// `send` and `showDesktop` are about a virtual desktop.
enum class KwinAction : std::uint8_t { activate, close, minimize, restore, send, showDesktop };

struct KwinOrder
{
    KwinAction action = KwinAction::activate;
    /// A window, by `KwinWindow::uuid`; empty for those of `process`: the one in front, and all of
    /// them to close.
    QByteArray window{};
    ProcessID process = 0;
    /// The number of the virtual desktop, from 1; 0 for an action that needs none.
    int desktop = 0;

    friend bool operator==(const KwinOrder&, const KwinOrder&) = default;
};

/// As the script reads it.
QByteArray textOf(const KwinOrder& order);

} // namespace kelpa::kwin
