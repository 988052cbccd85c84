#include "platform/gnome/GnomeWindowServer.h"

#include "platform/LoggingCategories.h"
#include "platform/gnome/ShellFollower.h"

#include <QByteArray>

#include <utility>

namespace kelpa::gnome {

GnomeWindowServer::GnomeWindowServer(const GnomeWindowServerNeeds& needs)
    : m_needs(needs), m_client(needs.follower.client()),
      m_numbers(needs.reservation, needs.names, needs.highWaterMark, needs.takenNumbers)
{}

bool GnomeWindowServer::isScreenCaptureTrusted() const
{
    const ShellCondition condition = m_client.standing().condition;
    return condition == ShellCondition::ready || condition == ShellCondition::unknown;
}

std::unique_ptr<DiscoverySource> GnomeWindowServer::openDiscoverySource()
{
    const std::optional<Listing> listing = listed();
    qCDebug(logGnome, "pass has %zu windows of the Shell%s", listing ? listing->windows.size() : 0,
            listing ? "" : ", whose extension does not serve Kelpa");
    {
        const std::scoped_lock lock(m_mutex);
        m_listing = listing;
    }
    if (!listing)
        return std::make_unique<CompositorSnapshot>();
    return std::make_unique<CompositorSnapshot>(
        describedWindows(listing->windows), m_needs.resolver, m_needs.documents,
        listing->workspaces.names, QList<int>(), listing->workspaces.ids);
}

std::optional<GnomeWindowServer::Listing> GnomeWindowServer::listed()
{
    ShellStanding standing = m_client.standing();
    // The first pass comes before anyone has asked. Later ones leave that to the follower.
    if (standing.condition == ShellCondition::unknown)
        standing = m_client.refresh();
    if (standing.condition != ShellCondition::ready)
        return std::nullopt;
    ShellList list = m_client.list();
    if (!list.isServed)
        return std::nullopt;
    std::optional<Listing> last = lastListing();
    // While the Shell hangs, no window comes or goes.
    if (!list.windows)
        return last;
    m_numbers.begin(QByteArrayLiteral("gnome ") + QByteArray::number(quint64{standing.run}));
    Listing listing{.windows = numbered(*std::move(list.windows))};
    if (list.workspaces)
        listing.workspaces = *std::move(list.workspaces);
    else if (last)
        listing.workspaces = std::move(last->workspaces);
    return listing;
}

std::vector<NumberedShellWindow> GnomeWindowServer::numbered(std::vector<ShellWindow> windows)
{
    std::vector<QByteArray> names;
    names.reserve(windows.size());
    for (const ShellWindow& window : windows)
        names.push_back(QByteArray::number(quint64{window.id}));
    return withNumbers(std::move(windows), m_numbers.number(names));
}

std::optional<ShellWindow> GnomeWindowServer::windowNumbered(WindowID number) const
{
    const std::scoped_lock lock(m_mutex);
    return m_listing ? kelpa::windowNumbered(m_listing->windows, number) : std::nullopt;
}

std::optional<WindowCapture> GnomeWindowServer::captureWindow(const CaptureRequest& request,
                                                              const std::stop_token& stop)
{
    const std::optional<ShellWindow> window = windowNumbered(request.window);
    if (!window || stop.stop_requested())
        return std::nullopt;
    std::optional<QImage> image =
        m_client.picture(window->id, request.largest, request.need == CaptureNeed::always);
    if (!image)
        return std::nullopt;
    return WindowCapture{.image = *std::move(image),
                         .pixelSize = {static_cast<int>(window->frame.width),
                                       static_cast<int>(window->frame.height)}};
}

std::unique_ptr<Subscription> GnomeWindowServer::watchWindows(std::function<void()> changed)
{
    return m_needs.follower.watch({.standingChanged = {}, .windowsChanged = std::move(changed)});
}

std::optional<std::vector<NumberedShellWindow>> GnomeWindowServer::windows() const
{
    const std::scoped_lock lock(m_mutex);
    return m_listing ? std::optional(m_listing->windows) : std::nullopt;
}

std::optional<GnomeWindowServer::Listing> GnomeWindowServer::lastListing() const
{
    const std::scoped_lock lock(m_mutex);
    return m_listing;
}

} // namespace kelpa::gnome
