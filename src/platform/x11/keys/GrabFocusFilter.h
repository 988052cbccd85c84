// Tells the toolkit apart who borrows the keyboard and who gets it.
#pragma once

#include <QAbstractNativeEventFilter>

namespace kelpa::x11 {

/// While a program handles a key that it has grabbed, or a window manager lets one choose a window,
/// the server tells the window with the focus that it has lost the keyboard, and soon that it has
/// it again. No other window is active meanwhile, but the toolkit takes it for that, and what the
/// person was writing in would lose the focus with every key for the volume. While this lives, the
/// toolkit does not hear of it. Main thread; needs a QCoreApplication, and is dropped before it.
class GrabFocusFilter : public QAbstractNativeEventFilter
{
public:
    GrabFocusFilter();
    ~GrabFocusFilter() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

} // namespace kelpa::x11
