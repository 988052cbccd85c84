// What came of a call of the Shell or its extension.
#pragma once

#include <cstdint>

namespace kelpa::gnome {

enum class CallOutcome : std::uint8_t {
    answered,
    /// No such name, object, interface or method is there.
    absent,
    /// The caller may not call it.
    denied,
    /// The caller runs a file that another one has replaced at the same path.
    outdated,
    /// Another error, or a reply of another type than expected.
    refused,
    /// No reply within the time limit, or no bus.
    silent,
};

} // namespace kelpa::gnome
