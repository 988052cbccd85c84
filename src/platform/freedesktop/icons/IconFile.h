// Reads the picture file of an icon, which may be broken or malicious.
#pragma once

#include <QImage>
#include <QString>

namespace kelpa {

/// The picture of a PNG, SVG or XPM file, distinguished by content, at most `pixels` wide and high:
/// a larger one is scaled down, only a drawing (SVG) is scaled up. A null image when it is not a
/// regular file, is no such picture, is broken, or is larger than any real icon (8 MiB, 4096
/// pixels a side; a drawing 2 MiB and 100,000 shapes, and it must not refer to other files). Any
/// thread but the main one: it reads the disk, and a drawing may take a while.
QImage iconFromFile(const QString& path, int pixels);

} // namespace kelpa
