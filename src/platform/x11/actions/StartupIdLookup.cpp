#include "platform/x11/actions/StartupIdLookup.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbReply.h"

#include <utility>

namespace kelpa::x11 {

namespace {

/// In items of four bytes; what is longer is no id that this program gave.
constexpr std::uint32_t longestStartupID = 256;

PropertyReply askForStartupID(DisplayConnection& link, xcb_window_t window)
{
    return askProperty(link.connection(), window, link.atoms()[Atom::netStartupID],
                       longestStartupID);
}

bool isText(PropertyReply& reply, const QByteArray& text)
{
    const Property property = propertyOf(reply.get());
    return property.format == 8 && !property.isTruncated && property.bytes == text;
}

/// What is asked about one window at once.
struct WindowQuestions
{
    WindowQuestions(DisplayConnection& link, WindowID windowNumber, xcb_window_t window)
        : number(windowNumber),
          tag(askProperty(link.connection(), window, link.atoms()[Atom::kelpaWindowNumber], 1)),
          leader(askProperty(link.connection(), window, link.atoms()[Atom::wmClientLeader], 1)),
          startupID(askForStartupID(link, window))
    {}

    WindowID number;
    PropertyReply tag;
    PropertyReply leader;
    PropertyReply startupID;
};

} // namespace

StartupIdLookup::StartupIdLookup(std::shared_ptr<DisplayConnector> connector, FindWindow findWindow)
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
    if (!isConnected(m_link))
        m_link = m_connector->open();
    if (!m_link)
        return std::nullopt;

    std::vector<WindowQuestions> asked;
    for (const WindowID number : numbers) {
        if (const std::optional<std::uint32_t> window = m_findWindow(number))
            asked.emplace_back(*m_link, number, *window);
    }
    struct LeaderQuestion
    {
        WindowID number;
        PropertyReply startupID;
    };
    std::vector<LeaderQuestion> leaders;
    std::optional<WindowID> first;
    for (WindowQuestions& each : asked) {
        // Another window may bear the server's id by now.
        if (word(propertyOf(each.tag.get()), XCB_ATOM_CARDINAL) != each.number)
            continue;
        if (isText(each.startupID, startupID)) {
            first = each.number;
            break;
        }
        if (const auto leader = word(propertyOf(each.leader.get()), XCB_ATOM_WINDOW))
            leaders.push_back({each.number, askForStartupID(*m_link, *leader)});
    }
    // Those that are left are in front of it.
    for (LeaderQuestion& each : leaders) {
        if (isText(each.startupID, startupID))
            return each.number;
    }
    return first;
}

} // namespace kelpa::x11
