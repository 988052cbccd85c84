// Which window of one protocol is which of the other. The protocols share no name for a window, so
// they are matched by what both say of it, and only where that leaves no doubt.
#pragma once

#include "platform/wayland/toplevels/ToplevelList.h"

#include <map>
#include <vector>

namespace kelpa::wayland {

/// By the window that can be acted on, the one that has an identifier. Starts from `known` matches,
/// of which it keeps those whose windows are both still there: titles change, windows do not. A new
/// match needs the same title and application, which no other window of either list has. Some
/// compositors leave the application of a window on X11 out of one list; that one is matched by its
/// title alone, which then no other window may have.
///
/// Both lists describe the same moment.
std::map<ToplevelID, ToplevelID> matchedToplevels(const std::vector<Toplevel>& acting,
                                                  const std::vector<Toplevel>& identified,
                                                  const std::map<ToplevelID, ToplevelID>& known);

} // namespace kelpa::wayland
