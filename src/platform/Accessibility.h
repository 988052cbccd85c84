// Reading and acting on the windows of other applications.
#pragma once

#include "platform/DiscoverySource.h"

#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

/// One window of an application that can be acted on. Each operation is a request: it has no
/// answer, and on a window that is gone it does nothing. Used on one thread, any but the main one;
/// no operation waits on the application.
class AccessibilityElement
{
public:
    AccessibilityElement() = default;
    AccessibilityElement(const AccessibilityElement&) = delete;
    AccessibilityElement& operator=(const AccessibilityElement&) = delete;
    virtual ~AccessibilityElement() = default;

    /// As of the moment the element was made.
    virtual const AccessibilityWindow& attributes() const = 0;

    virtual void requestMinimized(bool isMinimized) = 0;
    /// To be the application's main window.
    virtual void requestMain() = 0;
    /// To have the keyboard.
    virtual void requestFocus() = 0;
    /// To stand in front of all others, its desktop shown.
    virtual void requestRaise() = 0;
};

using AccessibilityElements = std::vector<std::unique_ptr<AccessibilityElement>>;

class Accessibility
{
public:
    virtual ~Accessibility() = default;

    /// Whether other applications' windows may be acted on, as last seen. Main thread; returns at
    /// once.
    virtual bool isTrusted() const = 0;

    /// Asks the desktop for that permission, where one can ask; the answer that `isTrusted` gives
    /// then. Main thread; returns at once.
    virtual bool requestTrust() = 0;

    /// The windows of a process in its own order; none when it cannot be asked. Any thread but the
    /// main one; may take as long as the window server does.
    virtual std::optional<AccessibilityElements> elements(ProcessID process) = 0;
};

} // namespace kelpa
