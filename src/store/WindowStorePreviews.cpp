// The previews of windows, and the permissions that they and discovery depend on.

#include "platform/Accessibility.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"
#include "store/WindowStoreParts.h"
#include "text/KelpaCopy.h"

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

void WindowStore::refreshPreviews(Date now)
{
    const Update update(m_changes);
    if (m_isScreenCaptureTrusted) {
        m_parts->previewCaptures.captureNext(now);
    } else {
        m_parts->previewCaptures.cancel();
        publishPreviews({});
    }
}

void WindowStore::publishPreviews(Previews previews)
{
    const Update update(m_changes);
    publish(m_previews, std::move(previews), Field::previews);
}

void WindowStore::setPreviewPixels(const QSize& pixels)
{
    m_parts->previewCaptures.setPixels(pixels);
}

void WindowStore::noteScrollActivity(Date now)
{
    m_parts->previewCaptures.pause(now);
}

void WindowStore::noteScrollActivity()
{
    noteScrollActivity(m_parts->scheduler.now());
}

std::optional<QString> WindowStore::previewMessage(const WindowItem& window) const
{
    if (m_previews.contains(window.id))
        return std::nullopt;
    if (!m_isScreenCaptureTrusted)
        return KelpaCopy::text(CopyKey::PreviewNeedsPermission, m_language);
    if (window.isOnScreen)
        return KelpaCopy::text(CopyKey::PreviewNotYet, m_language);
    return KelpaCopy::text(CopyKey::PreviewMinimized, m_language);
}

void WindowStore::requestPermissions()
{
    const Update update(m_changes);
    publish(m_isAccessibilityTrusted, m_parts->platform.accessibility.requestTrust(),
            Field::isAccessibilityTrusted);
    publish(m_isScreenCaptureTrusted, m_parts->platform.windowServer.requestScreenCapture(),
            Field::isScreenCaptureTrusted);
    m_parts->platform.workspace.requestOpen(privacySettings(m_isScreenCaptureTrusted));
}

bool WindowStore::hasPermissionSettings() const
{
    return m_parts->platform.workspace.hasPermissionSettings();
}

void WindowStore::updatePermissionState()
{
    publish(m_isAccessibilityTrusted, m_parts->platform.accessibility.isTrusted(),
            Field::isAccessibilityTrusted);
    publish(m_isScreenCaptureTrusted, m_parts->platform.windowServer.isScreenCaptureTrusted(),
            Field::isScreenCaptureTrusted);
}

} // namespace kelpa
