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
    const std::optional<std::vector<NumberedShellWindow>> windows = listed();
    qCDebug(logGnome, "pass has %zu windows of the Shell%s", windows ? windows->size() : 0,
            windows ? "" : ", whose extension does not serve Kelpa");
    {
        const std::scoped_lock lock(m_windowsMutex);
        m_windows = windows;
    }
    if (!windows)
        return std::make_unique<CompositorSnapshot>();
    return std::make_unique<CompositorSnapshot>(describedWindows(*windows), m_needs.resolver,
                                                m_needs.documents, m_workspaces.names, QList<int>(),
                                                m_workspaces.ids);
}

std::optional<std::vector<NumberedShellWindow>> GnomeWindowServer::listed()
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
    if (!list.windows)
        // While the Shell hangs, no window comes or goes.
        return windows();
    if (std::optional<ShellWorkspaces> workspaces = m_client.workspaces())
        m_workspaces = *std::move(workspaces);
    m_numbers.begin(QByteArrayLiteral("gnome ") + QByteArray::number(quint64{standing.run}));
    return numbered(*std::move(list.windows));
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
    const std::scoped_lock lock(m_windowsMutex);
    return m_windows ? kelpa::windowNumbered(*m_windows, number) : std::nullopt;
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
    const std::scoped_lock lock(m_windowsMutex);
    return m_windows;
}

} // namespace kelpa::gnome
