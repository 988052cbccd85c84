#include "platform/wayland/wlr/WlrSnapshot.h"

#include "platform/ApplicationResolver.h"

#include <limits>
#include <utility>

namespace kelpa::wayland {

namespace {

/// Stands for the place of every window. It is large enough to be listed, and means nothing else: a
/// preview has the size of its picture.
constexpr Rect unknownPlace{0, 0, 640, 480};

} // namespace

std::optional<ProcessID> processOf(const NumberedToplevel& window)
{
    constexpr auto greatest = static_cast<WindowID>(std::numeric_limits<ProcessID>::max());
    if (!window.number || *window.number == 0 || *window.number > greatest)
        return std::nullopt;
    return -static_cast<ProcessID>(*window.number);
}

WlrSnapshot::WlrSnapshot(const std::vector<NumberedToplevel>& windows,
                         const QStringList& ownApplications, ApplicationResolver& resolver)
    : m_isPresent(true)
{
    for (const NumberedToplevel& each : windows) {
        const std::optional<ProcessID> process = processOf(each);
        if (!process || ownApplications.contains(each.window.appID))
            continue;
        ApplicationClues clues;
        // The name of its desktop entry; some use the class that they have on X11.
        clues.gtkApplicationID = each.window.appID;
        clues.wmClassName = each.window.appID;
        const ResolvedApplication resolved = resolver.resolve(clues);
        WindowListEntry entry;
        entry.number = each.number;
        entry.ownerProcess = process;
        entry.ownerName = resolved.name.isEmpty() ? each.window.appID : resolved.name;
        entry.bundleIdentifier = resolved.desktopEntryID;
        entry.windowClass = each.window.appID;
        entry.bounds = unknownPlace;
        entry.layer = 0;
        entry.alpha = 1;
        entry.name = each.window.title;
        if (!each.window.isMinimized)
            m_onScreen.push_back(entry);
        m_windows.push_back(std::move(entry));
        Window& window = m_byProcess[*process];
        window.application.bundleIdentifier = resolved.desktopEntryID;
        window.described = accessibilityWindow(each);
    }
}

std::optional<std::vector<WindowListEntry>> WlrSnapshot::windowList(WindowListScope scope)
{
    if (!m_isPresent)
        return std::nullopt;
    return scope == WindowListScope::all ? m_windows : m_onScreen;
}

std::optional<RunningApplication> WlrSnapshot::runningApplication(ProcessID process)
{
    const auto it = m_byProcess.find(process);
    return it == m_byProcess.end() ? std::nullopt : std::optional(it->second.application);
}

std::optional<std::vector<AccessibilityWindow>> WlrSnapshot::accessibilityWindows(ProcessID process)
{
    const auto it = m_byProcess.find(process);
    if (it == m_byProcess.end())
        return std::nullopt;
    return std::vector{it->second.described};
}

AccessibilityWindow accessibilityWindow(const NumberedToplevel& window)
{
    AccessibilityWindow described;
    described.position = Point{unknownPlace.x, unknownPlace.y};
    described.size = Size{unknownPlace.width, unknownPlace.height};
    described.isMinimized = window.window.isMinimized;
    described.title = window.window.title;
    described.windowNumber = window.number;
    return described;
}

} // namespace kelpa::wayland
