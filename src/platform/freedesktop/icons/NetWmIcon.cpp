#include "platform/freedesktop/icons/NetWmIcon.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>

namespace kelpa {

namespace {

/// No icon is larger; a header with a larger size is wrong.
constexpr std::uint32_t maximalPictureSide = 2048;

struct Picture
{
    int width = 0;
    int height = 0;
    std::span<const std::uint32_t> values;

    int side() const { return std::max(width, height); }
};

bool isVisible(const Picture& picture)
{
    return std::any_of(picture.values.begin(), picture.values.end(),
                       [](std::uint32_t value) { return value >> 24U != 0; });
}

bool suitsBetter(const Picture& candidate, const Picture& best, int pixels)
{
    if (best.values.empty())
        return true;
    const bool isEnough = candidate.side() >= pixels;
    if (isEnough != (best.side() >= pixels))
        return isEnough;
    return isEnough ? candidate.side() < best.side() : candidate.side() > best.side();
}

} // namespace

QImage iconFromNetWmIcon(const std::vector<std::uint32_t>& data, int pixels)
{
    if (pixels <= 0)
        return {};
    Picture best;
    std::span<const std::uint32_t> rest(data);
    while (rest.size() > 2) {
        const std::uint32_t width = rest[0];
        const std::uint32_t height = rest[1];
        if (width == 0 || height == 0 || width > maximalPictureSide || height > maximalPictureSide)
            break;
        const std::size_t count = std::size_t{width} * height;
        if (count > rest.size() - 2)
            break;
        const Picture picture{static_cast<int>(width), static_cast<int>(height),
                              rest.subspan(2, count)};
        if (suitsBetter(picture, best, pixels) && isVisible(picture))
            best = picture;
        rest = rest.subspan(2 + count);
    }
    if (best.values.empty())
        return {};
    QImage image(best.width, best.height, QImage::Format_ARGB32);
    if (image.isNull())
        return {};
    for (int y = 0; y < best.height; ++y) {
        const auto row =
            best.values.subspan(static_cast<std::size_t>(y) * static_cast<std::size_t>(best.width),
                                static_cast<std::size_t>(best.width));
        std::memcpy(image.scanLine(y), row.data(), row.size_bytes());
    }
    if (best.side() > pixels)
        image = image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

} // namespace kelpa
