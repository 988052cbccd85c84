#include "platform/wayland/connection/Globals.h"

#include "platform/wayland/connection/WaylandConnection.h"

#include <wayland-client.h>

#include <algorithm>
#include <memory>

namespace kelpa::wayland {

namespace {

void recordGlobal(void* data, wl_registry*, std::uint32_t, const char* interface,
                  std::uint32_t version)
{
    std::uint32_t& known = (*static_cast<GlobalVersions*>(data))[interface];
    known = std::max(known, version);
}

void ignoreRemoval(void*, wl_registry*, std::uint32_t) {}

struct RegistryDeleter
{
    void operator()(wl_registry* registry) const { wl_registry_destroy(registry); }
};

} // namespace

std::optional<GlobalVersions> readGlobals(const QByteArray& path, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    const std::unique_ptr<WaylandConnection> connection = WaylandConnection::open(path);
    if (!connection)
        return std::nullopt;
    const std::unique_ptr<wl_registry, RegistryDeleter> registry(
        wl_display_get_registry(connection->raw()));
    if (!registry)
        return std::nullopt;
    GlobalVersions versions;
    static constexpr wl_registry_listener listener{.global = recordGlobal,
                                                   .global_remove = ignoreRemoval};
    wl_registry_add_listener(registry.get(), &listener, &versions);
    return connection->roundTrip(end) ? std::optional(versions) : std::nullopt;
}

} // namespace kelpa::wayland
