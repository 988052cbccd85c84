// RAII for server-side resources: pixmaps, pictures and the like.
#pragma once

#include "platform/x11/connection/XcbConnection.h"

#include <xcb/render.h>
#include <xcb/xfixes.h>

#include <cstdint>
#include <utility>

namespace kelpa::x11 {

/// Allocates an id; the owner sends the request that creates the resource. Freeing a resource that
/// was never created leaves an error that no one reads. Move-only; must not outlive its connection.
template <auto Free>
class ServerResource
{
public:
    explicit ServerResource(XcbConnection& connection)
        : m_connection(&connection), m_id(xcb_generate_id(connection.raw()))
    {}

    ServerResource(ServerResource&& other) noexcept
        : m_connection(std::exchange(other.m_connection, nullptr)), m_id(other.m_id)
    {}

    ServerResource& operator=(ServerResource&& other) noexcept
    {
        std::swap(m_connection, other.m_connection);
        std::swap(m_id, other.m_id);
        return *this;
    }

    ~ServerResource()
    {
        if (m_connection)
            Free(m_connection->raw(), m_id);
    }

    std::uint32_t id() const { return m_id; }

private:
    XcbConnection* m_connection;
    std::uint32_t m_id;
};

using ServerPixmap = ServerResource<xcb_free_pixmap>;
using ServerGraphicsContext = ServerResource<xcb_free_gc>;
using ServerPicture = ServerResource<xcb_render_free_picture>;
using ServerRegion = ServerResource<xcb_xfixes_destroy_region>;

} // namespace kelpa::x11
