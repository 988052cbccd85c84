#include "store/desktop/Permissions.h"

#include "platform/Accessibility.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <QUrl>

#include <utility>

namespace kelpa {

namespace {

QUrl privacySettings(bool isScreenCaptureTrusted)
{
    const QString pane = isScreenCaptureTrusted ? QStringLiteral("Privacy_Accessibility")
                                                : QStringLiteral("Privacy_ScreenCapture");
    return QUrl(QStringLiteral("x-apple.systempreferences:com.apple.preference.security?") + pane);
}

} // namespace

Permissions::Permissions(const Platform& platform, std::function<void()> settingsFound)
    : m_platform(platform), m_settingsFound(std::move(settingsFound))
{}

Permissions::Granted Permissions::granted() const
{
    return {m_platform.accessibility.isTrusted(), m_platform.windowServer.isScreenCaptureTrusted()};
}

Permissions::Granted Permissions::request()
{
    const Granted granted{m_platform.accessibility.requestTrust(),
                          m_platform.windowServer.requestScreenCapture()};
    m_platform.workspace.requestOpen(privacySettings(granted.screenCapture));
    return granted;
}

Obstacles Permissions::obstacles(const Granted& granted)
{
    Obstacles obstacles;
    if (!granted.accessibility)
        obstacles.accessibility = m_platform.accessibility.accessibilityObstacle();
    if (!granted.screenCapture)
        obstacles.screenCapture = m_platform.windowServer.screenCaptureObstacle();
    const bool wasAnythingMissing =
        std::exchange(m_isAnythingMissing, obstacles.accessibility || obstacles.screenCapture);
    if (m_isAnythingMissing && !wasAnythingMissing) {
        m_search = m_platform.workspace.findOpener(privacySettings(granted.screenCapture),
                                                   [this](bool isThere) {
                                                       m_hasSettings = isThere;
                                                       m_settingsFound();
                                                   });
    }
    obstacles.hasSettings = m_hasSettings;
    return obstacles;
}

} // namespace kelpa
