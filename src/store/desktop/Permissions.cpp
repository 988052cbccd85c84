#include "store/desktop/Permissions.h"

#include "platform/Accessibility.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <QUrl>

namespace kelpa {

namespace {

QUrl privacySettings(bool isScreenCaptureTrusted)
{
    const QString pane = isScreenCaptureTrusted ? QStringLiteral("Privacy_Accessibility")
                                                : QStringLiteral("Privacy_ScreenCapture");
    return QUrl(QStringLiteral("x-apple.systempreferences:com.apple.preference.security?") + pane);
}

} // namespace

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

bool Permissions::hasSettings() const
{
    return m_platform.workspace.hasPermissionSettings();
}

} // namespace kelpa
