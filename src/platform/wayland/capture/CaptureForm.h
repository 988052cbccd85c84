// How the pixels of a captured window lie in memory, and what becomes of them. The compositor says
// what it wants a buffer to be like; nothing of that is believed before it was checked here.
#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kelpa::wayland {

/// What a buffer has to be like, as the compositor has said.
struct CaptureConstraints
{
    /// In pixels.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// As in wl_shm, in the compositor's order.
    std::vector<std::uint32_t> formats;

    friend bool operator==(const CaptureConstraints&, const CaptureConstraints&) = default;
};

/// A buffer of 32 bits a pixel, whose lines follow each other without a gap.
struct CaptureForm
{
    QSize size;
    /// As in wl_shm.
    std::uint32_t wireFormat = 0;
    QImage::Format format = QImage::Format_Invalid;

    /// Of one line, in bytes.
    int stride() const;
    std::size_t byteCount() const;

    friend bool operator==(const CaptureForm&, const CaptureForm&) = default;
};

/// Absent where no buffer of ours could be like that: empty, larger than screens are, or in no
/// format that is known. Formats without transparency come first.
std::optional<CaptureForm> captureForm(const CaptureConstraints& constraints);

/// The picture in `pixels`, upright and scaled down to `largest` as `CaptureRequest` says.
/// `transform` as in wl_output says how the content is turned. Null for an unknown transform, for
/// an empty `largest` and for pixels that are fewer than the form has.
QImage capturedPicture(const CaptureForm& form, std::span<const std::byte> pixels,
                       std::uint32_t transform, const QSize& largest);

/// The size of the window itself, upright.
QSize uprightSize(const QSize& size, std::uint32_t transform);

} // namespace kelpa::wayland
