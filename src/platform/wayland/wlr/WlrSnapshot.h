// The windows that a compositor of the wlroots family lists, as a discovery pass asks for them. The
// list tells neither their processes nor their places.
#pragma once

#include "platform/DiscoverySource.h"
#include "platform/numbers/NumberedWindows.h"
#include "platform/wayland/toplevels/ToplevelList.h"

#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace kelpa {
class ApplicationResolver;
} // namespace kelpa

namespace kelpa::wayland {

using NumberedToplevel = Numbered<Toplevel>;

/// What stands for the process of a window: each counts as an application of its own, so that what
/// is asked of the application concerns this window alone. Negative, as no process is; absent for
/// a window without a number.
std::optional<ProcessID> processOf(const NumberedToplevel& window);

class WlrSnapshot final : public DiscoverySource
{
public:
    /// A source whose lists are absent.
    WlrSnapshot() = default;

    /// `windows` from the most recently active on; those whose application is in `ownApplications`
    /// are Kelpa's own and are left out. `resolver` is not used after this.
    WlrSnapshot(const std::vector<NumberedToplevel>& windows, const QStringList& ownApplications,
                ApplicationResolver& resolver);

    std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) override;
    std::optional<RunningApplication> runningApplication(ProcessID process) override;
    bool isAccessibilityTrusted() override { return m_isPresent; }
    std::optional<std::vector<AccessibilityWindow>>
    accessibilityWindows(ProcessID process) override;

private:
    struct Window
    {
        RunningApplication application;
        AccessibilityWindow described;
    };

    bool m_isPresent = false;
    std::vector<WindowListEntry> m_windows;
    std::vector<WindowListEntry> m_onScreen;
    std::map<ProcessID, Window> m_byProcess;
};

/// For actions on it.
AccessibilityWindow accessibilityWindow(const NumberedToplevel& window);

} // namespace kelpa::wayland
