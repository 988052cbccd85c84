// Acting on windows through the window manager.
#pragma once

#include "platform/Accessibility.h"
#include "platform/x11/DesktopTrust.h"

#include <memory>
#include <utility>

namespace kelpa::x11 {

class X11Accessibility : public Accessibility
{
public:
    /// `trust` as the window server keeps it.
    explicit X11Accessibility(std::shared_ptr<const DesktopTrust> trust) : m_trust(std::move(trust))
    {}

    /// True while an EWMH window manager runs.
    bool isTrusted() const override { return m_trust->hasWindowManager; }

private:
    std::shared_ptr<const DesktopTrust> m_trust;
};

} // namespace kelpa::x11
