// Kelpa's own window on an X display.
#pragma once

#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"

namespace kelpa::x11 {

class WindowActor;

class X11OwnWindow : public OwnWindow
{
public:
    /// Both outlive this object, and the work of `scheduler` that it began.
    X11OwnWindow(WindowActor& actor, Scheduler& scheduler);

    void requestFront(std::uint32_t window, const FrontOccasion& occasion) override;

private:
    WindowActor& m_actor;
    Scheduler& m_scheduler;
    TaskHandle m_request;
};

} // namespace kelpa::x11
