#include "platform/x11/discovery/WindowIcons.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbReply.h"

#include <utility>

namespace kelpa::x11 {

namespace {

/// In items of four bytes: room for all common sizes up to 512 × 512. Nothing beyond it is read,
/// and a truncated picture is ignored.
constexpr std::uint32_t longestIcon = 2 * 512 * 512;

} // namespace

WindowIcons::WindowIcons(std::shared_ptr<DisplayConnector> connector, FindClientWindow findWindow)
    : m_connector(std::move(connector)), m_findWindow(std::move(findWindow))
{}

WindowIcons::~WindowIcons() = default;

std::vector<std::uint32_t> WindowIcons::read(WindowID number)
{
    const std::optional<std::uint32_t> window = m_findWindow(number);
    if (!window)
        return {};
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!isConnected(m_display))
        m_display = m_connector->open();
    if (!m_display)
        return {};
    XcbConnection& connection = m_display->connection();
    const AtomTable& atoms = m_display->atoms();
    PropertyReply icon =
        askProperty(connection, *window, atoms[Atom::netWmIcon], longestIcon, XCB_ATOM_CARDINAL);
    PropertyReply tag = askProperty(connection, *window, atoms[Atom::kelpaWindowNumber], 1);
    const std::vector<std::uint32_t> pixels = words(propertyOf(icon.get()), XCB_ATOM_CARDINAL);
    const bool isSameWindow = word(propertyOf(tag.get()), XCB_ATOM_CARDINAL) == number;
    return isSameWindow ? pixels : std::vector<std::uint32_t>();
}

} // namespace kelpa::x11
