// The desktop as one discovery pass read it, in plain values: no answer goes back to the server.
#pragma once

#include "platform/DiscoverySource.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace kelpa {
class ApplicationResolver;
class DocumentSource;
} // namespace kelpa

namespace kelpa::x11 {

class SnapshotSource : public DiscoverySource
{
public:
    /// A source whose lists are absent.
    SnapshotSource() = default;

    /// `clients` from top to bottom. Neither `resolver` nor `documents`, which may be null, is used
    /// after this.
    SnapshotSource(const std::vector<ClientWindow>& clients, const DesktopContext& context,
                   ApplicationResolver& resolver, DocumentSource* documents);

    std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) override;
    /// Knows the processes that own client windows. A process all of whose windows are off the task
    /// list is an accessory. Its application is the one that all of its ordinary windows name.
    std::optional<RunningApplication> runningApplication(ProcessID process) override;
    QStringList virtualDesktops() override { return m_virtualDesktops; }
    bool isAccessibilityTrusted() override;
    std::optional<std::vector<AccessibilityWindow>>
    accessibilityWindows(ProcessID process) override;

private:
    struct Process
    {
        RunningApplication application;
        /// The applications that its ordinary windows name; absent for one that names none.
        std::set<std::optional<QString>> named;
        std::vector<AccessibilityWindow> windows;
    };

    bool m_isPresent = false;
    std::vector<WindowListEntry> m_windows;
    std::vector<WindowListEntry> m_onScreen;
    QStringList m_virtualDesktops;
    std::map<ProcessID, Process> m_processes;
};

} // namespace kelpa::x11
