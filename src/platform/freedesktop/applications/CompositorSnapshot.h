// The windows that a compositor tells in one go, as a discovery pass asks for them: what is the
// same for every compositor that tells processes and places.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/DiscoverySource.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace kelpa {

class DocumentSource;

struct CompositorWindow
{
    /// Number, process, place, title and so on. Owner and application are filled in by the
    /// snapshot.
    WindowListEntry entry;
    ApplicationClues clues;
    /// What the owner is called where no desktop entry is its, best first; empty ones are passed
    /// over.
    QStringList ownerNames;
    /// On screen now: neither minimised nor on a hidden workspace.
    bool isOnScreen = false;
    bool isMinimized = false;
    /// Makes its process an ordinary application.
    bool isOrdinary = true;
};

class CompositorSnapshot : public DiscoverySource
{
public:
    /// A source whose lists are absent.
    CompositorSnapshot() = default;

    /// `windows` from front to back; their entries have bounds and titles. Neither `resolver` nor
    /// `documents`, which may be null, is used after this. `virtualDesktops`,
    /// `unofferedDesktops` and `desktopIDs` as the source has them.
    CompositorSnapshot(std::vector<CompositorWindow> windows, ApplicationResolver& resolver,
                       DocumentSource* documents, QStringList virtualDesktops = {},
                       QList<int> unofferedDesktops = {}, DesktopIDs desktopIDs = {});

    std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) override;
    std::optional<RunningApplication> runningApplication(ProcessID process) override;
    QStringList virtualDesktops() override { return m_virtualDesktops; }
    QList<int> unofferedDesktops() override { return m_unofferedDesktops; }
    DesktopIDs desktopIDs() override { return m_desktopIDs; }
    bool isAccessibilityTrusted() override { return m_isPresent; }
    std::optional<std::vector<AccessibilityWindow>>
    accessibilityWindows(ProcessID process) override;

private:
    struct Process
    {
        RunningApplication application;
        std::vector<AccessibilityWindow> windows;
    };

    void noteProcess(const CompositorWindow& window, AccessibilityWindow described);

    bool m_isPresent = false;
    QStringList m_virtualDesktops;
    QList<int> m_unofferedDesktops;
    DesktopIDs m_desktopIDs;
    std::vector<WindowListEntry> m_windows;
    std::vector<WindowListEntry> m_onScreen;
    std::map<ProcessID, Process> m_processes;
};

/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const CompositorWindow& window);

} // namespace kelpa
