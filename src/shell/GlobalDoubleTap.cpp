#include "shell/GlobalDoubleTap.h"

#include "platform/LoggingCategories.h"

namespace kelpa {

GlobalDoubleTap::GlobalDoubleTap(GlobalKeys& keys)
    : m_subscription(keys.watchKeys(
          {.keyPressed = [this] { m_recognizer.handleKeyDown(); },
           .modifiersChanged =
               [this](const GlobalModifierChange& change) { handleModifiers(change); },
           .availabilityChanged = [this](bool isAvailable) { setAvailable(isAvailable); }}))
{}

GlobalDoubleTap::~GlobalDoubleTap() = default;

void GlobalDoubleTap::handleModifiers(const GlobalModifierChange& change)
{
    if (m_recognizer.handleFlagsChanged({.commandIsDown = change.commandIsDown,
                                         .hasOtherModifiers = change.hasOtherModifiers,
                                         .timestamp = change.timestamp})) {
        qCDebug(logShell, "double tap");
        Q_EMIT doubleTapped(change.inputTime);
    }
}

void GlobalDoubleTap::setAvailable(bool isAvailable)
{
    // Keys before an interruption say nothing about those after it.
    m_recognizer = {};
    if (m_isAvailable == isAvailable)
        return;
    m_isAvailable = isAvailable;
    qCDebug(logShell, "double tap %s", isAvailable ? "available" : "not available");
    Q_EMIT isAvailableChanged();
}

} // namespace kelpa
