#include "platform/x11/keys/GrabFocusFilter.h"

#include "platform/x11/connection/XcbEvent.h"

#include <QCoreApplication>

namespace kelpa::x11 {

namespace {

/// False for focus that moves while the keyboard is grabbed: then another window does get it.
bool isCausedByGrab(const xcb_focus_in_event_t& event)
{
    return event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
}

/// The focus itself stays where it is, at another window or within this one.
bool isAboutThePointerOrAChild(const xcb_focus_in_event_t& event)
{
    return event.detail == XCB_NOTIFY_DETAIL_POINTER || event.detail == XCB_NOTIFY_DETAIL_INFERIOR;
}

} // namespace

GrabFocusFilter::GrabFocusFilter()
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

GrabFocusFilter::~GrabFocusFilter()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool GrabFocusFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    const std::uint8_t type = typeOf(event);
    if (type != XCB_FOCUS_IN && type != XCB_FOCUS_OUT)
        return false;
    // FocusOut has the same layout.
    const auto& focus = as<xcb_focus_in_event_t>(event);
    if (isCausedByGrab(focus))
        return true;
    if (isAboutThePointerOrAChild(focus))
        return false;
    if (type == XCB_FOCUS_OUT)
        m_left.insert(focus.event);
    else
        m_left.erase(focus.event);
    return false;
}

} // namespace kelpa::x11
