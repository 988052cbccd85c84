// The previews of windows, and the permissions that they and discovery depend on.

#include "platform/AbilityReport.h"
#include "store/WindowStoreParts.h"
#include "text/KelpaCopy.h"

namespace kelpa {

namespace {

CopyKey textWithoutPreviews(const DesktopAbilities& abilities)
{
    const std::optional<AbilityShortfall> shortfall = abilities.shortfall(DesktopAbility::previews);
    if (shortfall && shortfall->gap == AbilityGap::openGL)
        return CopyKey::PreviewsNeedOpenGL;
    if (shortfall && shortfall->gap == AbilityGap::pictureEntry)
        return CopyKey::PreviewsNeedDesktopEntry;
    return CopyKey::NoPreviewsHere;
}

} // namespace

void WindowStore::refreshPreviews(Scheduler::Time now)
{
    const Update update(m_state.changes);
    if (m_parts->canCapture()) {
        m_parts->previewCaptures.captureNext(now);
    } else {
        m_parts->previewCaptures.cancel();
        m_parts->publishPreviews({}, PreviewCaptures::Messages::same);
    }
}

void WindowStore::noteWindowInView(WindowID windowID)
{
    // Also while nothing may be captured: the card does not come into view once more afterwards.
    m_parts->previewCaptures.noteInView(windowID);
    m_parts->captureFirst();
}

bool WindowStore::Parts::canCapture() const
{
    return state.isScreenCaptureTrusted && state.abilities.has(DesktopAbility::previews);
}

void WindowStore::Parts::captureFirst()
{
    if (observation && canCapture())
        previewCaptures.captureFirst(scheduler.now());
}

void WindowStore::Parts::publishPreviews(Previews captured, PreviewCaptures::Messages messages)
{
    const Update update(state.changes);
    if (messages == PreviewCaptures::Messages::changed)
        state.markChanged(Field::previews);
    state.assign(state.previews, std::move(captured), Field::previews);
}

void WindowStore::setPreviewPixels(const QSize& pixels)
{
    m_parts->previewCaptures.setPixels(pixels);
}

void WindowStore::noteScrollActivity(Scheduler::Time now)
{
    m_parts->previewCaptures.pause(now);
}

void WindowStore::noteScrollActivity()
{
    noteScrollActivity(m_parts->scheduler.now());
}

std::optional<QString> WindowStore::previewMessage(const WindowItem& window) const
{
    if (m_state.previews.contains(window.id))
        return std::nullopt;
    if (m_state.obstacles.screenCapture == Obstacle::permission)
        return KelpaCopy::text(CopyKey::PreviewNeedsPermission, m_state.language);
    if (!m_state.abilities.has(DesktopAbility::previews))
        return KelpaCopy::text(textWithoutPreviews(m_state.abilities), m_state.language);
    // A window of another desktop is off screen as well, without being minimised.
    if (window.isMinimized && !window.isOnScreen)
        return KelpaCopy::text(CopyKey::PreviewMinimized, m_state.language);
    // The first capture of a window on the screen is still to come.
    if (window.isOnScreen && !m_parts->previewCaptures.wasTried(window.id))
        return std::nullopt;
    return KelpaCopy::text(CopyKey::PreviewNotYet, m_state.language);
}

void WindowStore::requestPermissions()
{
    const Update update(m_state.changes);
    m_parts->publish(m_parts->permissions.request());
}

bool WindowStore::canRequestAbilities() const
{
    return m_parts->platform.abilities.canRequestAbilities();
}

void WindowStore::requestAbilities()
{
    m_parts->platform.abilities.requestAbilities();
}

void WindowStore::Parts::publish(const Permissions::Granted& granted)
{
    state.assign(state.isAccessibilityTrusted, granted.accessibility,
                 Field::isAccessibilityTrusted);
    state.assign(state.isScreenCaptureTrusted, granted.screenCapture,
                 Field::isScreenCaptureTrusted);
    state.assign(state.obstacles, permissions.obstacles(granted), Field::obstacles);
    publishAbilities();
}

void WindowStore::Parts::publishAbilities()
{
    const Update update(state.changes);
    if (!state.assign(state.abilities, platform.abilities.abilities(), Field::abilities))
        return;
    // The cards say why they have no picture.
    state.markChanged(Field::previews);
    if (!state.abilities.has(DesktopAbility::previews)) {
        previewCaptures.cancel();
        publishPreviews({}, PreviewCaptures::Messages::same);
    }
}

void WindowStore::Parts::publishPermissions()
{
    const Update update(state.changes);
    publish(permissions.granted());
}

} // namespace kelpa
