#include "platform/kwin/KwinPicture.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace kelpa::kwin {

namespace {

constexpr std::uint32_t bytesPerPixel = 4;
/// Of a side, in pixels; no screen is larger.
constexpr std::uint32_t longestSide = 16384;
/// A window over four screens of 4K each.
constexpr qsizetype mostBytes = qsizetype{256} * 1024 * 1024;

/// A request may remain without an answer once.
constexpr int mostSilent = 3;
constexpr std::chrono::seconds shortestPause{10};
constexpr std::chrono::seconds longestPause{300};

/// Invalid for one of other than 32 bits.
QImage::Format formatOf(std::uint32_t number)
{
    switch (number) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
    case QImage::Format_RGBX8888:
    case QImage::Format_RGBA8888:
    case QImage::Format_RGBA8888_Premultiplied:
        return static_cast<QImage::Format>(number);
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace

std::optional<PictureForm> pictureForm(std::uint32_t width, std::uint32_t height,
                                       std::uint32_t stride, std::uint32_t format)
{
    const QImage::Format known = formatOf(format);
    if (width == 0 || height == 0 || width > longestSide || height > longestSide ||
        stride < width * bytesPerPixel || stride % bytesPerPixel != 0 ||
        known == QImage::Format_Invalid)
        return std::nullopt;
    const PictureForm form{.size = QSize(static_cast<int>(width), static_cast<int>(height)),
                           .stride = static_cast<qsizetype>(stride),
                           .format = known};
    return form.byteCount() <= mostBytes ? std::optional(form) : std::nullopt;
}

std::optional<QImage> pictureOf(const PictureForm& form, const QByteArray& bytes)
{
    if (bytes.size() != form.byteCount())
        return std::nullopt;
    QImage image(form.size, form.format);
    if (image.isNull())
        return std::nullopt;
    const auto lineLength = static_cast<std::size_t>(form.size.width()) * bytesPerPixel;
    for (int line = 0; line < form.size.height(); ++line)
        std::memcpy(image.scanLine(line), bytes.constData() + form.stride * line, lineLength);
    return image;
}

bool isPictureDue(const KwinWindow& window, const TakenPicture& last,
                  std::chrono::steady_clock::time_point now)
{
    return window.isActive || window.revision != last.revision ||
           now - last.time >= unchangedInterval;
}

void PicturePauses::note(bool isSilent, std::chrono::steady_clock::time_point now)
{
    m_silentInARow = isSilent ? m_silentInARow + 1 : 0;
    if (m_silentInARow < mostSilent)
        return;
    const int doublings = std::min(m_silentInARow - mostSilent, 8);
    m_end = now + std::min(shortestPause * (1 << doublings), longestPause);
}

} // namespace kelpa::kwin
