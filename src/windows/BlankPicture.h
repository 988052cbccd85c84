// Tells pictures that show nothing.
#pragma once

#include <QImage>

namespace kelpa {

/// Whether all pixels of the picture have one colour, as those of a window that has not drawn
/// itself yet, or whose contents the window server has already dropped.
bool isBlank(const QImage& picture);

} // namespace kelpa
