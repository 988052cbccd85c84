#include "model/WindowItem.h"

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
                      window.accessibilityDocument.value_or(QString()), window.iconRevision,
                      window.goalID.has_value(), window.goalID.value_or(GoalID{}));
}

} // namespace kelpa
