#include "platform/wayland/capture/CaptureForm.h"

#include <QTransform>

#include <wayland-client-protocol.h>

#include <algorithm>
#include <array>

namespace kelpa::wayland {

namespace {

constexpr int bytesPerPixel = 4;
/// Of a side, in pixels; no screen is larger.
constexpr std::uint32_t longestSide = 16384;
/// A window over four screens of 4K each.
constexpr std::size_t mostBytes = std::size_t{256} * 1024 * 1024;

struct KnownFormat
{
    std::uint32_t wire;
    QImage::Format format;
};

/// wl_shm names the bits of a little-endian number, as QImage does with its formats of 32 bits; the
/// others are named by their bytes.
constexpr std::array knownFormats{
    KnownFormat{WL_SHM_FORMAT_XRGB8888, QImage::Format_RGB32},
    KnownFormat{WL_SHM_FORMAT_XBGR8888, QImage::Format_RGBX8888},
    KnownFormat{WL_SHM_FORMAT_ARGB8888, QImage::Format_ARGB32_Premultiplied},
    KnownFormat{WL_SHM_FORMAT_ABGR8888, QImage::Format_RGBA8888_Premultiplied},
};

/// Each is the one four before it after a flip around a vertical axis.
constexpr std::uint32_t transformCount = 8;

bool isFlipped(std::uint32_t transform)
{
    return transform >= WL_OUTPUT_TRANSFORM_FLIPPED;
}

/// Anticlockwise.
std::uint32_t quarterTurns(std::uint32_t transform)
{
    return transform % WL_OUTPUT_TRANSFORM_FLIPPED;
}

} // namespace

int CaptureForm::stride() const
{
    return size.width() * bytesPerPixel;
}

std::size_t CaptureForm::byteCount() const
{
    return static_cast<std::size_t>(stride()) * static_cast<std::size_t>(size.height());
}

std::optional<CaptureForm> captureForm(const CaptureConstraints& constraints)
{
    if (constraints.width == 0 || constraints.height == 0 || constraints.width > longestSide ||
        constraints.height > longestSide)
        return std::nullopt;
    const auto* const known = std::ranges::find_if(knownFormats, [&](const KnownFormat& each) {
        return std::ranges::find(constraints.formats, each.wire) != constraints.formats.end();
    });
    if (known == knownFormats.end())
        return std::nullopt;
    const CaptureForm form{
        .size = QSize(static_cast<int>(constraints.width), static_cast<int>(constraints.height)),
        .wireFormat = known->wire,
        .format = known->format};
    return form.byteCount() <= mostBytes ? std::optional(form) : std::nullopt;
}

QSize uprightSize(const QSize& size, std::uint32_t transform)
{
    return quarterTurns(transform) % 2 == 0 ? size : size.transposed();
}

QImage capturedPicture(const CaptureForm& form, std::span<const std::byte> pixels,
                       std::uint32_t transform, const QSize& largest)
{
    if (transform >= transformCount || largest.isEmpty() || pixels.size() < form.byteCount())
        return {};
    const void* const bytes = pixels.data();
    const QImage whole(static_cast<const uchar*>(bytes), form.size.width(), form.size.height(),
                       form.stride(), form.format);
    const QSize upright = uprightSize(form.size, transform).boundedTo(largest);
    // A picture of the same size would share the compositor's memory.
    QImage picture = whole.scaled(uprightSize(upright, transform), Qt::IgnoreAspectRatio,
                                  Qt::SmoothTransformation);
    picture.detach();
    constexpr double quarterTurn = 90;
    if (quarterTurns(transform) != 0)
        picture = picture.transformed(
            QTransform().rotate(quarterTurn * static_cast<double>(quarterTurns(transform))));
    return isFlipped(transform) ? picture.mirrored(true, false) : picture;
}

} // namespace kelpa::wayland
