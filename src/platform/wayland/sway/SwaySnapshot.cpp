#include "platform/wayland/sway/SwaySnapshot.h"

#include "platform/ApplicationResolver.h"
#include "platform/DocumentSource.h"
#include "platform/ExecutableName.h"

#include <utility>

namespace kelpa::wayland {

namespace {

ApplicationClues cluesOf(const SwayWindow& window)
{
    ApplicationClues clues;
    // The application id of a program on Wayland is the name of its desktop entry; some use the
    // class that they have on X11.
    clues.gtkApplicationID = window.appID;
    clues.wmClassInstance = window.wmClassInstance;
    clues.wmClassName = window.wmClassName.isEmpty() ? window.appID : window.wmClassName;
    clues.process = window.process.value_or(0);
    return clues;
}

/// Absent when neither the desktop entry, the window nor the process has one.
std::optional<QString> ownerNameOf(const SwayWindow& window, const ResolvedApplication& resolved)
{
    for (const QString& name : {resolved.name, window.appID, window.wmClassName}) {
        if (!name.isEmpty())
            return name;
    }
    const QString program = window.process ? executableName(*window.process) : QString();
    return program.isEmpty() ? std::nullopt : std::optional(program);
}

} // namespace

SwaySnapshot::SwaySnapshot(const std::vector<NumberedSwayWindow>& windows,
                           ApplicationResolver& resolver, DocumentSource* documents)
    : m_isPresent(true)
{
    std::vector<DocumentQuery> queries;
    for (const NumberedSwayWindow& each : windows) {
        const SwayWindow& window = each.window;
        const ResolvedApplication resolved = resolver.resolve(cluesOf(window));
        WindowListEntry entry;
        entry.number = each.number;
        entry.ownerProcess = window.process;
        entry.ownerName = ownerNameOf(window, resolved);
        entry.bundleIdentifier = resolved.desktopEntryID;
        entry.bounds = window.bounds;
        entry.layer = 0;
        entry.alpha = 1;
        entry.name = window.title;
        if (window.isVisible)
            m_onScreen.push_back(entry);
        m_windows.push_back(std::move(entry));
        if (!window.process)
            continue;
        const auto [it, isNew] = m_processes.try_emplace(*window.process);
        Process& process = it->second;
        if (isNew)
            process.application.bundleIdentifier = resolved.desktopEntryID;
        else if (process.application.bundleIdentifier != resolved.desktopEntryID)
            process.application.bundleIdentifier.reset();
        AccessibilityWindow described = accessibilityWindow(each);
        if (documents) {
            const DocumentQuery query{*window.process, window.bounds, window.title};
            described.document = documents->document(query);
            queries.push_back(query);
        }
        process.windows.push_back(std::move(described));
    }
    if (documents)
        documents->noteWindows(std::move(queries));
}

std::optional<std::vector<WindowListEntry>> SwaySnapshot::windowList(WindowListScope scope)
{
    if (!m_isPresent)
        return std::nullopt;
    return scope == WindowListScope::all ? m_windows : m_onScreen;
}

std::optional<RunningApplication> SwaySnapshot::runningApplication(ProcessID process)
{
    const auto it = m_processes.find(process);
    return it == m_processes.end() ? std::nullopt : std::optional(it->second.application);
}

std::optional<std::vector<AccessibilityWindow>>
SwaySnapshot::accessibilityWindows(ProcessID process)
{
    const auto it = m_processes.find(process);
    return it == m_processes.end() ? std::nullopt : std::optional(it->second.windows);
}

AccessibilityWindow accessibilityWindow(const NumberedSwayWindow& window)
{
    const Rect& bounds = window.window.bounds;
    AccessibilityWindow described;
    described.position = Point{bounds.x, bounds.y};
    described.size = Size{bounds.width, bounds.height};
    // sway does not minimise.
    described.isMinimized = false;
    described.title = window.window.title;
    described.windowNumber = window.number;
    return described;
}

} // namespace kelpa::wayland
