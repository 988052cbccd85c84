// Implements Accessibility by EWMH requests to the window manager; the accessibility bus has no
// part in it.
#pragma once

#include "platform/Accessibility.h"
#include "platform/x11/connection/DesktopTrust.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace kelpa::x11 {

class EwmhPager;

/// The elements are the windows that the window server has listed and numbered. Un-minimising,
/// raising and giving the focus are one request, the activation. The first of these requests of an
/// element activates its window; the others activate it again only if it has lost the focus since.
/// Windows that are activated one after the other end up stacked in that order.
class X11WindowActions : public Accessibility
{
public:
    /// `trust` is the window server's; `pager` outlives this object and its elements.
    X11WindowActions(std::shared_ptr<const DesktopTrust> trust, EwmhPager& pager)
        : m_trust(std::move(trust)), m_pager(pager)
    {}

    /// True while an EWMH window manager runs.
    bool isTrusted() const override { return m_trust->hasWindowManager; }
    std::optional<Obstacle> accessibilityObstacle() const override
    {
        return m_trust->isKnown ? std::optional(Obstacle::windowManager) : std::nullopt;
    }
    /// X11 has no permission to ask for: the same as `isTrusted`.
    bool requestTrust() override { return isTrusted(); }

    void showVirtualDesktop(const NumberedDesktop& desktop) override;
    std::optional<AccessibilityElements> elements(ProcessID process) override;
    /// One reading of the windows serves all.
    std::map<ProcessID, AccessibilityElements>
    elementsOf(const std::set<ProcessID>& processes) override;

private:
    std::shared_ptr<const DesktopTrust> m_trust;
    EwmhPager& m_pager;
};

} // namespace kelpa::x11
