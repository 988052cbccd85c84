// The windows of one reply of sway, as a discovery pass asks for them.
#pragma once

#include "platform/DiscoverySource.h"
#include "platform/wayland/sway/SwayTree.h"

#include <map>
#include <optional>
#include <vector>

namespace kelpa {
class ApplicationResolver;
class DocumentSource;
} // namespace kelpa

namespace kelpa::wayland {

/// A window with its number; absent when it has none.
struct NumberedSwayWindow
{
    SwayWindow window;
    std::optional<WindowID> number;

    friend bool operator==(const NumberedSwayWindow&, const NumberedSwayWindow&) = default;
};

class SwaySnapshot final : public DiscoverySource
{
public:
    /// A source whose lists are absent.
    SwaySnapshot() = default;

    /// `windows` from the most recently active on. Neither `resolver` nor `documents`, which may be
    /// null, is used after this.
    SwaySnapshot(const std::vector<NumberedSwayWindow>& windows, ApplicationResolver& resolver,
                 DocumentSource* documents);

    std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) override;
    /// Each process that has windows is an ordinary application: sway manages no others.
    std::optional<RunningApplication> runningApplication(ProcessID process) override;
    bool isAccessibilityTrusted() override { return m_isPresent; }
    std::optional<std::vector<AccessibilityWindow>>
    accessibilityWindows(ProcessID process) override;

private:
    struct Process
    {
        RunningApplication application;
        std::vector<AccessibilityWindow> windows;
    };

    bool m_isPresent = false;
    std::vector<WindowListEntry> m_windows;
    std::vector<WindowListEntry> m_onScreen;
    std::map<ProcessID, Process> m_processes;
};

/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const NumberedSwayWindow& window);

} // namespace kelpa::wayland
