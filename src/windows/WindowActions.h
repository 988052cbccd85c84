// Finds the accessibility element of a listed window, and brings windows to the front.
#pragma once

#include "model/WindowItem.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "windows/PinnedWindows.h"
#include "windows/WorkContext.h"

#include <QList>

#include <stop_token>

namespace kelpa {

/// The element of `window`; null when there is none or several match. Matches by window number
/// where elements have one, otherwise by document, then by frame. Ambiguity is never resolved by
/// guessing.
AccessibilityElement* accessibilityWindow(const WindowItem& window,
                                          const AccessibilityElements& elements);

/// Brings each of `windows` to the front in turn, so that the last one ends up frontmost. Requests
/// the elements of each process once. Skips windows that cannot be matched. Any thread but the main
/// one.
void bringForward(const QList<WindowItem>& windows, Applications& applications,
                  Accessibility& accessibility);

/// Sends the windows to virtual desktops, as far as they can be matched; the rest is left when
/// `stop` is requested. Requests the elements of all processes at once. Any thread but the main
/// one.
void sendToDesktops(const QList<DesktopMove>& moves, Accessibility& accessibility,
                    const std::stop_token& stop);

/// Carries the requests out in the background, as far as the windows can be matched: each one does
/// not wait for its window, and the rest is left when `stop` is requested. Requests the elements of
/// all processes at once. Any thread but the main one.
void arrange(const WindowArrangement& arrangement, Applications& applications,
             Accessibility& accessibility, const std::stop_token& stop);

/// Asks the window alone to close; does nothing where it cannot be matched. Any thread but the main
/// one.
void requestClose(const WindowItem& window, Accessibility& accessibility);

} // namespace kelpa
