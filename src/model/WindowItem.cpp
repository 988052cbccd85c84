#include "model/WindowItem.h"

#include <algorithm>

namespace kelpa {

QString WindowItem::displayTitle() const
{
    const QString trimmed = title.trimmed();
    return trimmed.isEmpty() ? ownerName : trimmed;
}

size_t qHash(const WindowItem& window, size_t seed)
{
    return qHashMulti(seed, window.id, window.ownerName, window.bundleIdentifier.has_value(),
                      window.bundleIdentifier.value_or(QString()), window.title,
                      window.processIdentifier, window.bounds, window.isOnScreen,
                      window.isMinimized, window.accessibilityDocument.has_value(),
                      window.accessibilityDocument.value_or(QString()), window.role,
                      window.sessionID, window.instance, window.windowClass, window.iconRevision,
                      window.goalID.has_value(), window.goalID.value_or(GoalID{}));
}

qsizetype indexOf(const QList<WindowItem>& windows, WindowID id)
{
    const auto found = std::ranges::find(windows, id, &WindowItem::id);
    return found != windows.end() ? std::distance(windows.begin(), found) : -1;
}

const WindowItem* windowWith(WindowID id, const QList<WindowItem>& windows)
{
    const qsizetype index = indexOf(windows, id);
    return index >= 0 ? &windows.at(index) : nullptr;
}

} // namespace kelpa
