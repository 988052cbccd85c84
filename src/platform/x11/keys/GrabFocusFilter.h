// Keeps the focus events that a keyboard grab causes away from the toolkit.
#pragma once

#include <QAbstractNativeEventFilter>

namespace kelpa::x11 {

/// While a program handles a key that it has grabbed, or a window manager lets the person choose a
/// window, the server sends FocusOut to the window with the focus, and soon FocusIn. No other
/// window becomes active, but the toolkit takes it for that: a text field would lose the focus with
/// every volume key. While this lives, the toolkit does not receive these events. Main thread;
/// needs a QCoreApplication and is destroyed before it.
class GrabFocusFilter : public QAbstractNativeEventFilter
{
public:
    GrabFocusFilter();
    ~GrabFocusFilter() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

} // namespace kelpa::x11
