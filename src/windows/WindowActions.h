// Which accessibility element is a listed window, and bringing it to the front.
#pragma once

#include "model/WindowItem.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"

#include <QList>

namespace kelpa {

/// The element that is `window`; null when there is none or several could be. A window number
/// decides where elements carry one; otherwise the document does, and then the frame. Ambiguity is
/// never resolved by guessing.
AccessibilityElement* accessibilityWindow(const WindowItem& window,
                                          const AccessibilityElements& elements);

/// Brings each of `windows` to the front in turn, so that the last one ends up frontmost; asks each
/// process for its elements once. A window that cannot be matched is passed over. Any thread but
/// the main one.
void bringForward(const QList<WindowItem>& windows, Applications& applications,
                  Accessibility& accessibility);

} // namespace kelpa
