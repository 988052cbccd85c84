// Finds the accessibility element of a listed window, and brings windows to the front.
#pragma once

#include "model/WindowItem.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"

#include <QList>

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

/// Asks the window alone to close; does nothing where it cannot be matched. Any thread but the main
/// one.
void requestClose(const WindowItem& window, Accessibility& accessibility);

} // namespace kelpa
