// A picture of a window as KWin describes and writes it, and when to take the next one.
#pragma once

#include "platform/kwin/KwinReport.h"

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <chrono>
#include <cstdint>
#include <optional>

namespace kelpa::kwin {

/// How the bytes of a picture make it up.
struct PictureForm
{
    QSize size;
    /// Of one line, in bytes.
    qsizetype stride = 0;
    QImage::Format format = QImage::Format_Invalid;

    qsizetype byteCount() const { return stride * size.height(); }

    friend bool operator==(const PictureForm&, const PictureForm&) = default;
};

/// `format` is that of QImage. Absent for a form that no window has: empty, larger than a screen,
/// with lines that are shorter than their pixels, or of other pixels than 32 bits.
std::optional<PictureForm> pictureForm(std::uint32_t width, std::uint32_t height,
                                       std::uint32_t stride, std::uint32_t format);

/// Absent unless `bytes` are as many as the form has.
std::optional<QImage> pictureOf(const PictureForm& form, const QByteArray& bytes);

/// The last picture of a window.
struct TakenPicture
{
    /// `KwinWindow::revision` as it was taken.
    std::int64_t revision = 0;
    std::chrono::steady_clock::time_point time;
};

/// KWin does not tell when a window draws, and a picture costs it many milliseconds. So a window is
/// taken again while it is active, since a person works in it, after a change of its title, size or
/// focus, and otherwise every half minute: what moves by itself shows that late.
inline constexpr std::chrono::seconds unchangedInterval{30};
bool isPictureDue(const KwinWindow& window, const TakenPicture& last,
                  std::chrono::steady_clock::time_point now);

/// A KWin that draws nothing, as on a screen that is switched off, answers no request and keeps
/// them all, each with its pipe, until it draws. So it is asked ever less often, and likewise for a
/// single window that gives no picture. What tells that it draws again ends the pause before.
class PicturePauses
{
public:
    /// Of a request: whether there was no answer.
    void note(bool isSilent, std::chrono::steady_clock::time_point now);
    bool isPausing(std::chrono::steady_clock::time_point now) const { return now < m_end; }
    /// Whether the last request had no answer.
    bool isSilent() const { return m_silentInARow > 0; }

private:
    int m_silentInARow = 0;
    std::chrono::steady_clock::time_point m_end;
};

} // namespace kelpa::kwin
