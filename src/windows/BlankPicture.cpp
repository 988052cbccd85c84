#include "windows/BlankPicture.h"

#include <algorithm>
#include <span>

namespace kelpa {

bool isBlank(const QImage& picture)
{
    if (picture.isNull())
        return true;
    // Sets the unused byte of opaque pixels.
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto row = [&pixels](int y) {
        const void* const line = pixels.constScanLine(y);
        return std::span(static_cast<const QRgb*>(line), static_cast<std::size_t>(pixels.width()));
    };
    const QRgb first = row(0).front();
    for (int y = 0; y < pixels.height(); ++y) {
        if (std::ranges::any_of(row(y), [first](QRgb pixel) { return pixel != first; }))
            return false;
    }
    return true;
}

} // namespace kelpa
