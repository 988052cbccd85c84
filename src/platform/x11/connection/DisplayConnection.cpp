#include "platform/x11/connection/DisplayConnection.h"

#include "platform/x11/connection/XcbReply.h"

#include <xcb/composite.h>
#include <xcb/res.h>

#include <utility>

namespace kelpa::x11 {

namespace {

using ResourceVersionReply = XcbReply<xcb_res_query_version, xcb_res_query_version_reply>;

bool isPresent(XcbConnection& connection, xcb_extension_t& extension)
{
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection.raw(), &extension);
    return data && data->present != 0;
}

/// X-Resource has client ids from version 1.2 on.
bool knowsClientIDs(XcbConnection& connection)
{
    if (!isPresent(connection, xcb_res_id))
        return false;
    ResourceVersionReply reply(connection, std::uint8_t{1}, std::uint8_t{2});
    const auto* version = reply.get();
    return version && std::pair(version->server_major, version->server_minor) >=
                          std::pair<std::uint16_t, std::uint16_t>(1, 2);
}

} // namespace

std::unique_ptr<DisplayConnection> DisplayConnection::open(const QByteArray& display,
                                                           std::shared_ptr<const PointScale> scale)
{
    std::unique_ptr<XcbConnection> connection = XcbConnection::open(display);
    if (!connection)
        return nullptr;
    const BrokenPipeGuard guard;
    std::unique_ptr<DisplayConnection> opened(
        new DisplayConnection(std::move(connection), std::move(scale)));
    return opened->m_connection->isBroken() ? nullptr : std::move(opened);
}

DisplayConnection::DisplayConnection(std::unique_ptr<XcbConnection> connection,
                                     std::shared_ptr<const PointScale> scale)
    : m_connection(std::move(connection)), m_scale(std::move(scale)), m_atoms(*m_connection)
{
    xcb_prefetch_extension_data(m_connection->raw(), &xcb_composite_id);
    xcb_prefetch_extension_data(m_connection->raw(), &xcb_res_id);
    m_hasComposite = isPresent(*m_connection, xcb_composite_id);
    m_hasClientIDs = knowsClientIDs(*m_connection);
    m_helperWindow = xcb_generate_id(m_connection->raw());
    // Never mapped, so that no one sees or manages it.
    xcb_create_window(m_connection->raw(), XCB_COPY_FROM_PARENT, m_helperWindow,
                      m_connection->root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
}

TextTypes DisplayConnection::textTypes() const
{
    return {m_atoms[Atom::utf8String], m_atoms[Atom::compoundText]};
}

bool DisplayConnection::acquireNumbers()
{
    // The grab makes it one step: two programs that start at once would otherwise both find the
    // selection without an owner.
    const xcb_atom_t selection = m_atoms[Atom::kelpaNumbers];
    xcb_grab_server(m_connection->raw());
    SelectionOwnerReply owner(*m_connection, selection);
    const auto* reply = owner.get();
    const bool isFree = reply && reply->owner == XCB_WINDOW_NONE;
    if (isFree)
        xcb_set_selection_owner(m_connection->raw(), m_helperWindow, selection, XCB_CURRENT_TIME);
    xcb_ungrab_server(m_connection->raw());
    m_connection->flush();
    return isFree || (reply && reply->owner == m_helperWindow);
}

bool isConnected(const std::unique_ptr<DisplayConnection>& display)
{
    return display && !display->connection().isBroken();
}

} // namespace kelpa::x11
