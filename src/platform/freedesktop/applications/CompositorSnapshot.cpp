#include "platform/freedesktop/applications/CompositorSnapshot.h"

#include "platform/DocumentSource.h"
#include "platform/ExecutableName.h"

#include <utility>

namespace kelpa {

namespace {

/// Absent when neither the desktop entry, the window nor the process has one.
std::optional<QString> ownerNameOf(const CompositorWindow& window,
                                   const ResolvedApplication& resolved)
{
    if (!resolved.name.isEmpty())
        return resolved.name;
    for (const QString& name : window.ownerNames) {
        if (!name.isEmpty())
            return name;
    }
    const std::optional<ProcessID> process = window.entry.ownerProcess;
    const QString program = process ? executableName(*process) : QString();
    return program.isEmpty() ? std::nullopt : std::optional(program);
}

} // namespace

CompositorSnapshot::CompositorSnapshot(std::vector<CompositorWindow> windows,
                                       ApplicationResolver& resolver, DocumentSource* documents,
                                       QStringList virtualDesktops, QList<int> unofferedDesktops,
                                       DesktopIDs desktopIDs)
    : m_isPresent(true), m_virtualDesktops(std::move(virtualDesktops)),
      m_unofferedDesktops(std::move(unofferedDesktops)), m_desktopIDs(std::move(desktopIDs))
{
    std::vector<DocumentQuery> queries;
    for (CompositorWindow& window : windows) {
        window.clues.process = window.entry.ownerProcess.value_or(0);
        const ResolvedApplication resolved = resolver.resolve(window.clues);
        WindowListEntry& entry = window.entry;
        entry.ownerName = ownerNameOf(window, resolved);
        entry.bundleIdentifier = resolved.desktopEntryID;
        entry.windowClass = window.clues.wmClassName;
        entry.alpha = 1;
        m_windows.push_back(entry);
        if (window.isOnScreen)
            m_onScreen.push_back(entry);
        if (!entry.ownerProcess)
            continue;
        AccessibilityWindow described = accessibilityWindow(window);
        if (documents != nullptr) {
            const DocumentQuery query{*entry.ownerProcess, *entry.bounds, *entry.name};
            described.document = documents->document(query);
            queries.push_back(query);
        }
        noteProcess(window, std::move(described));
    }
    if (documents != nullptr)
        documents->noteWindows(std::move(queries));
}

void CompositorSnapshot::noteProcess(const CompositorWindow& window, AccessibilityWindow described)
{
    const auto [it, isNew] = m_processes.try_emplace(*window.entry.ownerProcess);
    RunningApplication& application = it->second.application;
    if (isNew) {
        application = {.activationPolicy = ActivationPolicy::accessory,
                       .bundleIdentifier = window.entry.bundleIdentifier};
    } else if (application.bundleIdentifier != window.entry.bundleIdentifier) {
        application.bundleIdentifier.reset();
    }
    if (window.isOrdinary)
        application.activationPolicy = ActivationPolicy::regular;
    it->second.windows.push_back(std::move(described));
}

std::optional<std::vector<WindowListEntry>> CompositorSnapshot::windowList(WindowListScope scope)
{
    if (!m_isPresent)
        return std::nullopt;
    return scope == WindowListScope::all ? m_windows : m_onScreen;
}

std::optional<RunningApplication> CompositorSnapshot::runningApplication(ProcessID process)
{
    const auto it = m_processes.find(process);
    return it == m_processes.end() ? std::nullopt : std::optional(it->second.application);
}

std::optional<std::vector<AccessibilityWindow>>
CompositorSnapshot::accessibilityWindows(ProcessID process)
{
    const auto it = m_processes.find(process);
    return it == m_processes.end() ? std::nullopt : std::optional(it->second.windows);
}

AccessibilityWindow accessibilityWindow(const CompositorWindow& window)
{
    AccessibilityWindow described;
    if (const std::optional<Rect>& bounds = window.entry.bounds) {
        described.position = Point{bounds->x, bounds->y};
        described.size = Size{bounds->width, bounds->height};
    }
    described.isMinimized = window.isMinimized;
    described.title = window.entry.name;
    described.windowNumber = window.entry.number;
    return described;
}

} // namespace kelpa
