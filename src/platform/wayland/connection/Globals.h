// What a compositor offers: the names and versions of its global objects.
#pragma once

#include <QByteArray>

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>

namespace kelpa::wayland {

/// The highest version that is offered, by the name of the interface.
using GlobalVersions = std::map<QByteArray, std::uint32_t>;

/// `path` as `socketPath` gives it. Absent when no compositor replies within `limit`. Any thread
/// but the main one, or before there is an event loop.
std::optional<GlobalVersions> readGlobals(const QByteArray& path, std::chrono::milliseconds limit);

} // namespace kelpa::wayland
