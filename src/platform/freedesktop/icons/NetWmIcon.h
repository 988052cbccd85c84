// Decodes _NET_WM_ICON, the icon of a window.
#pragma once

#include <QImage>

#include <cstdint>
#include <vector>

namespace kelpa {

/// The picture of `_NET_WM_ICON` that suits `pixels` best: the smallest that is not smaller, or
/// else the largest; scaled down to at most `pixels` wide and high, never up. `data` is what the
/// property holds: width, height and width × height ARGB values, one picture after the other. A
/// header that promises more than there is ends the list, pictures before it count; wholly
/// transparent pictures are skipped. A null image when nothing is left. Any thread.
QImage iconFromNetWmIcon(const std::vector<std::uint32_t>& data, int pixels);

} // namespace kelpa
