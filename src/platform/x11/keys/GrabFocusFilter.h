// Keeps the focus events that a keyboard grab causes away from the toolkit, and knows at once which
// windows have lost the focus.
#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <set>

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

    /// Whether the last that the server reported of this window of the program is that it lost the
    /// focus. The toolkit still takes it for the active window then for a tenth of a second, in
    /// which another window of the program could get the focus.
    bool hasLostFocus(std::uint32_t window) const { return m_left.contains(window); }

private:
    std::set<std::uint32_t> m_left;
};

} // namespace kelpa::x11
