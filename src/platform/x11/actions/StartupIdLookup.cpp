#include "platform/x11/actions/StartupIdLookup.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbReply.h"

#include <utility>

namespace kelpa::x11 {

namespace {

/// In words of four bytes; this program gives no longer ids.
constexpr std::uint32_t longestStartupID = 256;

PropertyReply askStartupID(DisplayConnection& display, xcb_window_t window)
{
    return askProperty(display.connection(), window, display.atoms()[Atom::netStartupID],
                       longestStartupID);
}

bool isText(PropertyReply& reply, const QByteArray& text)
{
    const Property property = propertyOf(reply.get());
    return property.format == 8 && !property.isTruncated && property.bytes == text;
}

/// All properties of one window that are read in the first round trip.
struct WindowProperties
{
    WindowProperties(DisplayConnection& display, WindowID windowNumber, xcb_window_t window)
        : number(windowNumber), tag(askProperty(display.connection(), window,
                                                display.atoms()[Atom::kelpaWindowNumber], 1)),
          leader(
              askProperty(display.connection(), window, display.atoms()[Atom::wmClientLeader], 1)),
          startupID(askStartupID(display, window))
    {}

    WindowID number;
    PropertyReply tag;
    PropertyReply leader;
    PropertyReply startupID;
};

} // namespace

StartupIdLookup::StartupIdLookup(std::shared_ptr<DisplayConnector> connector,
                                 FindClientWindow findWindow)
    : m_connector(std::move(connector)), m_findWindow(std::move(findWindow))
{}

StartupIdLookup::~StartupIdLookup() = default;

std::optional<WindowID> StartupIdLookup::firstWith(const QByteArray& startupID,
                                                   const std::vector<WindowID>& numbers)
{
    if (startupID.isEmpty())
        return std::nullopt;
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!isConnected(m_display))
        m_display = m_connector->open();
    if (!m_display)
        return std::nullopt;

    std::vector<WindowProperties> asked;
    for (const WindowID number : numbers) {
        if (const std::optional<std::uint32_t> window = m_findWindow(number))
            asked.emplace_back(*m_display, number, *window);
    }
    struct Leader
    {
        WindowID number;
        PropertyReply startupID;
    };
    std::vector<Leader> leaders;
    std::optional<WindowID> first;
    for (WindowProperties& each : asked) {
        // The server may have given the id to another window by now.
        if (word(propertyOf(each.tag.get()), XCB_ATOM_CARDINAL) != each.number)
            continue;
        if (isText(each.startupID, startupID)) {
            first = each.number;
            break;
        }
        if (const auto leader = word(propertyOf(each.leader.get()), XCB_ATOM_WINDOW))
            leaders.push_back({each.number, askStartupID(*m_display, *leader)});
    }
    // All leaders belong to windows that come before `first`.
    for (Leader& each : leaders) {
        if (isText(each.startupID, startupID))
            return each.number;
    }
    return first;
}

} // namespace kelpa::x11
