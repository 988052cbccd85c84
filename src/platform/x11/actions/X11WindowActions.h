// Acting on windows through the window manager.
#pragma once

#include "platform/Accessibility.h"
#include "platform/x11/connection/DesktopTrust.h"

#include <memory>
#include <utility>

namespace kelpa::x11 {

class WindowActor;

/// The elements are the windows that the window server has listed and numbered. A window manager
/// knows one request for un-minimising, giving the keyboard and raising, so the first of an
/// element's requests does all of it and the others see to it that it stayed so: asked for one
/// window after the other, the windows end up in that order.
class X11WindowActions : public Accessibility
{
public:
    /// `trust` as the window server keeps it; `actor` outlives this object and its elements.
    X11WindowActions(std::shared_ptr<const DesktopTrust> trust, WindowActor& actor)
        : m_trust(std::move(trust)), m_actor(actor)
    {}

    /// True while an EWMH window manager runs.
    bool isTrusted() const override { return m_trust->hasWindowManager; }
    /// Nobody grants it on X11, so there is nobody to ask: the same as `isTrusted`.
    bool requestTrust() override { return isTrusted(); }

    std::optional<AccessibilityElements> elements(ProcessID process) override;

private:
    std::shared_ptr<const DesktopTrust> m_trust;
    WindowActor& m_actor;
};

} // namespace kelpa::x11
