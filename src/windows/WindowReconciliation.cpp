#include "windows/WindowReconciliation.h"

namespace kelpa {

namespace {

constexpr QStringView terminalBundleIdentifier = u"com.apple.Terminal";

QString legacyTerminalKey(ProcessID process)
{
    return QStringLiteral("terminal:%1").arg(process);
}

} // namespace

QString assignmentKey(WindowID windowID)
{
    return QString::number(windowID);
}

std::set<WindowID> assignedWindows(const Assignments& assignments)
{
    std::set<WindowID> windows;
    for (const auto& [key, goalID] : assignments.asKeyValueRange()) {
        bool isNumber = false;
        const WindowID window = key.toUInt(&isNumber);
        if (isNumber)
            windows.insert(window);
    }
    return windows;
}

std::optional<Assignments> migratedTerminalAssignments(const Assignments& assignments,
                                                       const QList<WindowItem>& windows,
                                                       const QSet<GoalID>& goalIDs)
{
    Assignments migrated = assignments;
    QSet<QString> legacyKeys;
    for (const WindowItem& window : windows) {
        const QString key = assignmentKey(window.id);
        if (migrated.contains(key) || window.bundleIdentifier != terminalBundleIdentifier)
            continue;
        const QString legacyKey = legacyTerminalKey(window.processIdentifier);
        const auto legacy = assignments.constFind(legacyKey);
        if (legacy == assignments.constEnd() || !goalIDs.contains(*legacy))
            continue;
        migrated.insert(key, *legacy);
        legacyKeys.insert(legacyKey);
    }
    if (legacyKeys.isEmpty())
        return std::nullopt;
    // Removed last, since every window of a Terminal process inherits the goal.
    for (const QString& key : legacyKeys)
        migrated.remove(key);
    return migrated;
}

QList<WindowItem> withAssignedGoals(QList<WindowItem> windows, const Assignments& assignments,
                                    const QSet<GoalID>& goalIDs)
{
    for (WindowItem& window : windows) {
        const auto assigned = assignments.constFind(assignmentKey(window.id));
        if (assigned != assignments.constEnd() && goalIDs.contains(*assigned))
            window.goalID = *assigned;
        else
            window.goalID = std::nullopt;
    }
    return windows;
}

Assignments withoutGoal(const Assignments& assignments, GoalID goalID)
{
    Assignments remaining = assignments;
    remaining.removeIf([&goalID](const auto& entry) { return entry.value() == goalID; });
    return remaining;
}

} // namespace kelpa
