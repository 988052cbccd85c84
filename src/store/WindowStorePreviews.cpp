// The previews of windows, and the permissions that they and discovery depend on.

#include "platform/Accessibility.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "windows/PreviewRotation.h"

#include <QUrl>

namespace kelpa {

namespace {

/// How long captures pause after each movement of the board, in seconds.
constexpr double scrollPause = 0.2;

QUrl privacySettings(bool isScreenCaptureTrusted)
{
    const QString pane = isScreenCaptureTrusted ? QStringLiteral("Privacy_Accessibility")
                                                : QStringLiteral("Privacy_ScreenCapture");
    return QUrl(QStringLiteral("x-apple.systempreferences:com.apple.preference.security?") + pane);
}

} // namespace

void WindowStore::refreshPreviews(Date now)
{
    const Update update(*this);
    if (!m_isScreenCaptureTrusted) {
        m_previewTask.reset();
        publish(m_previews, {}, Field::previews);
        return;
    }
    if (isPreviewRefreshSuspended(now) || m_previewTask)
        return;
    if (m_windows.isEmpty()) {
        m_previewCaptureCursor = 0;
        publish(m_previews, {}, Field::previews);
        return;
    }
    const PreviewTurn turn = previewTurn(m_previewCaptureCursor, m_windows.size());
    m_previewCaptureCursor = turn.nextCursor;
    const WindowID window = m_windows.at(turn.index).id;
    // What the window server holds to have been given last may have been thrown away unseen.
    const bool isLastPictureShown =
        m_previews.contains(window) && !m_unappliedCaptures.contains(window);
    const CaptureNeed need = isLastPictureShown ? CaptureNeed::ifChanged : CaptureNeed::always;
    m_unappliedCaptures.insert(window);
    const CaptureRequest request{window, m_previewPixels, need,
                                 windowsOfNextTurns(turn, m_windows)};
    m_previewTask = m_scheduler.inBackground(
        [request, &server = m_platform.windowServer](const std::stop_token& stop) {
            PreviewCaptureBatch batch;
            if (stop.stop_requested())
                return batch;
            const std::optional<WindowCapture> capture = server.captureWindow(request, stop);
            if (capture && !capture->image.isNull())
                batch.images.insert(request.window,
                                    {capture->image, previewDisplaySize(capture->pixelSize)});
            return batch;
        },
        [this, window](const PreviewCaptureBatch& batch) { finishCapture(window, batch); });
}

void WindowStore::finishCapture(WindowID window, const PreviewCaptureBatch& batch)
{
    const Update update(*this);
    m_previewTask.reset();
    publish(m_previews, mergedPreviews(m_previews, batch.images, m_windows), Field::previews);
    // A window without a preview is captured whatever was given before.
    m_unappliedCaptures.remove(window);
    m_unappliedCaptures.removeIf([this](WindowID id) { return !m_previews.contains(id); });
}

void WindowStore::setPreviewPixels(const QSize& pixels)
{
    if (pixels == m_previewPixels)
        return;
    m_previewPixels = pixels;
    // What is being captured has the pixels of before.
    m_previewTask.reset();
    for (auto preview = m_previews.keyBegin(); preview != m_previews.keyEnd(); ++preview)
        m_unappliedCaptures.insert(*preview);
}

bool WindowStore::isPreviewRefreshSuspended(Date now) const
{
    // A pause that is longer than any can be comes from a clock that was set back.
    return now < m_previewRefreshSuspendedUntil &&
           m_previewRefreshSuspendedUntil <= now.addingSeconds(scrollPause);
}

void WindowStore::noteScrollActivity(Date now)
{
    m_previewRefreshSuspendedUntil = now.addingSeconds(scrollPause);
    m_previewTask.reset();
}

void WindowStore::noteScrollActivity()
{
    noteScrollActivity(m_scheduler.now());
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
    const Update update(*this);
    publish(m_isAccessibilityTrusted, m_platform.accessibility.requestTrust(),
            Field::isAccessibilityTrusted);
    publish(m_isScreenCaptureTrusted, m_platform.windowServer.requestScreenCapture(),
            Field::isScreenCaptureTrusted);
    m_platform.workspace.requestOpen(privacySettings(m_isScreenCaptureTrusted));
}

bool WindowStore::hasPermissionSettings() const
{
    return m_platform.workspace.hasPermissionSettings();
}

void WindowStore::updatePermissionState()
{
    publish(m_isAccessibilityTrusted, m_platform.accessibility.isTrusted(),
            Field::isAccessibilityTrusted);
    publish(m_isScreenCaptureTrusted, m_platform.windowServer.isScreenCaptureTrusted(),
            Field::isScreenCaptureTrusted);
}

} // namespace kelpa
