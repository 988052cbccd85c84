// Reads the windows of other applications and acts on them.
#pragma once

#include "model/GoalPins.h"
#include "platform/DiscoverySource.h"
#include "platform/Obstacle.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace kelpa {

/// One window of an application, to act on. Each operation is a request without a reply, and does
/// nothing when the window is gone. Used on one thread, any but the main one; no operation waits
/// for the application.
class AccessibilityElement
{
public:
    AccessibilityElement() = default;
    AccessibilityElement(const AccessibilityElement&) = delete;
    AccessibilityElement& operator=(const AccessibilityElement&) = delete;
    virtual ~AccessibilityElement() = default;

    /// As of the creation of the element.
    virtual const AccessibilityWindow& attributes() const = 0;

    virtual void requestMinimized(bool isMinimized) = 0;
    /// Makes it the application's main window.
    virtual void requestMain() = 0;
    /// Gives it the keyboard focus.
    virtual void requestFocus() = 0;
    /// Raises it above all other windows and switches to its desktop.
    virtual void requestRaise() = 0;
    /// Closes it as a click on its close button does: its application may ask whether to save, or
    /// refuse.
    virtual void requestClose() = 0;
    /// Sends it to the virtual desktop, if that is there, and leaves the present one shown. Where
    /// `DesktopAbility::virtualDesktops` is missing, nothing requests it.
    virtual void requestVirtualDesktop(const NumberedDesktop& /*desktop*/) {}
};

using AccessibilityElements = std::vector<std::unique_ptr<AccessibilityElement>>;

class Accessibility
{
public:
    virtual ~Accessibility() = default;

    /// Whether Kelpa may act on other applications' windows, as last known. Main thread; returns at
    /// once.
    virtual bool isTrusted() const = 0;

    /// What stands in the way while `isTrusted` is false; absent while the desktop has not been
    /// asked yet. Main thread; returns at once.
    virtual std::optional<Obstacle> accessibilityObstacle() const = 0;

    /// Requests that permission from the desktop, where it can be requested; returns what
    /// `isTrusted` gives afterwards. Main thread; returns at once.
    virtual bool requestTrust() = 0;

    /// The windows of a process in its own order; absent when they cannot be read. Any thread but
    /// the main one; may take as long as the window server does.
    virtual std::optional<AccessibilityElements> elements(ProcessID process) = 0;

    /// Shows the virtual desktop, if it is there and not the present one. Any thread but the main
    /// one. Where `DesktopAbility::virtualDesktops` is missing, nothing requests it.
    virtual void showVirtualDesktop(const NumberedDesktop& /*desktop*/) {}

    /// As `elements`, for several processes, in one request where the window server allows that.
    /// Those that cannot be read have none.
    virtual std::map<ProcessID, AccessibilityElements>
    elementsOf(const std::set<ProcessID>& processes)
    {
        std::map<ProcessID, AccessibilityElements> all;
        for (const ProcessID process : processes)
            all.emplace(process, elements(process).value_or(AccessibilityElements()));
        return all;
    }
};

} // namespace kelpa
