// What a discovery pass of a window server lists, as tests compare it.
#pragma once

#include "platform/DiscoverySource.h"
#include "platform/WindowServer.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace kelpa::test {

/// Titles with window numbers, 0 for a window without one.
using Titles = std::vector<std::pair<QString, WindowID>>;

/// Those of one pass, in its order; absent without a list.
inline std::optional<Titles> listedTitles(WindowServer& server)
{
    const auto entries = server.openDiscoverySource()->windowList(WindowListScope::all);
    if (!entries)
        return std::nullopt;
    Titles titles;
    for (const WindowListEntry& each : *entries)
        titles.emplace_back(each.name.value_or(QString()), each.number.value_or(0));
    return titles;
}

} // namespace kelpa::test
