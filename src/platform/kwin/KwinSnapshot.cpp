#include "platform/kwin/KwinSnapshot.h"

#include <map>
#include <optional>

namespace kelpa::kwin {

namespace {

CompositorWindow describedWindow(const NumberedKwinWindow& numbered)
{
    const KwinWindow& window = numbered.window;
    CompositorWindow described;
    WindowListEntry& entry = described.entry;
    entry.number = numbered.number;
    entry.ownerProcess = window.process;
    entry.bounds = window.bounds;
    entry.layer = 0;
    entry.name = window.title;
    entry.role = window.role;
    entry.virtualDesktop = window.virtualDesktop;
    entry.desktopNumber = window.desktopNumber;
    entry.isAwaitingAnswer = window.isAwaitingAnswer;
    described.clues.kdeDesktopFile = window.desktopFile;
    described.clues.wmClassInstance = window.instanceName;
    described.clues.wmClassName = window.className;
    described.ownerNames = {window.className, window.desktopFile};
    described.isOnScreen = window.isHere && !window.isMinimized;
    described.isMinimized = window.isMinimized;
    return described;
}

} // namespace

std::vector<CompositorWindow> describedWindows(const std::vector<NumberedKwinWindow>& windows)
{
    std::vector<CompositorWindow> described;
    described.reserve(windows.size());
    std::map<QByteArray, std::optional<WindowID>> numbers;
    for (const NumberedKwinWindow& window : windows)
        numbers.emplace(window.window.uuid, window.number);
    for (const NumberedKwinWindow& window : windows) {
        if (!window.window.isOrdinary)
            continue;
        described.push_back(describedWindow(window));
        if (const auto owner = numbers.find(window.window.dialogOf); owner != numbers.end())
            described.back().entry.dialogOf = owner->second;
    }
    return described;
}

AccessibilityWindow accessibilityWindow(const NumberedKwinWindow& window)
{
    return kelpa::accessibilityWindow(describedWindow(window));
}

} // namespace kelpa::kwin
