// Takes pictures of windows by KWin's screenshot service (org.kde.KWin.ScreenShot2), which writes
// them into a pipe. KWin gives them only to a program whose desktop entry asks for that service
// (X-KDE-DBUS-Restricted-Interfaces), and only where it draws with OpenGL.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QPoint>

#include <chrono>
#include <cstdint>
#include <memory>
#include <stop_token>

namespace kelpa::kwin {

enum class ScreenshotOutcome : std::uint8_t {
    taken,
    /// Of this window and at this time: it is gone, or the picture is not what was promised.
    failed,
    /// Kelpa's desktop entry does not ask for the service, or is another program's.
    denied,
    /// KWin has no such service: it draws without OpenGL.
    unavailable,
    /// KWin did not take it, perhaps since it draws without OpenGL.
    cancelled,
    /// No reply, or not all of the picture, within the time limit.
    silent,
    /// The same, and KWin did not even reply to a request for a pixel of the screen.
    drawsNothing,
};

/// Whether KWin gives pictures at all.
enum class PictureStanding : std::uint8_t { given, denied, withoutOpenGL };

/// One outcome may say nothing of it: then it is as before.
PictureStanding standingAfter(ScreenshotOutcome outcome, PictureStanding before);

/// Whether a window is among those that KWin draws: not minimised, and on the desktop and in the
/// activity that are shown.
enum class IsShown : bool { no, yes };

struct Screenshot
{
    ScreenshotOutcome outcome = ScreenshotOutcome::silent;
    /// Null unless taken.
    QImage image{};
};

/// Any thread but the main one.
class KwinScreenshots
{
public:
    /// `limit` is for a whole picture. `frameInterval` is how long a picture of a window that is
    /// shown may take before KWin is asked to draw, and how long KWin is left alone between two
    /// such requests.
    KwinScreenshots(const QByteArray& busAddress, std::chrono::milliseconds limit,
                    std::chrono::milliseconds frameInterval = std::chrono::milliseconds(250));
    ~KwinScreenshots();
    KwinScreenshots(const KwinScreenshots&) = delete;
    KwinScreenshots& operator=(const KwinScreenshots&) = delete;

    /// The window of that UUID, with its decorations and without its shadow, in points. One that is
    /// not shown costs KWin a frame of the screen besides, of which `pixel`, in points, is asked
    /// for. It has to be on a screen.
    Screenshot take(const QByteArray& uuid, IsShown isShown, const QPoint& pixel,
                    const std::stop_token& stop);

    /// Waits until KWin has drawn a frame, however long that takes: a request for `pixel`, which
    /// KWin keeps until then. Whether it has; not when `stop` is requested or KWin ends.
    bool awaitFrame(const QPoint& pixel, const std::stop_token& stop);

    /// What `take` would give: `failed` where it may take pictures, since there is no such window.
    ScreenshotOutcome probe();
    /// The same with a picture of one pixel, which it takes besides and drops; no more of what the
    /// person has on their screen is read. `unavailable` also where KWin gives up that one: from
    /// 6.7 on it offers pictures and only then finds that it draws without OpenGL.
    ScreenshotOutcome probeWithPixel();

private:
    struct Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa::kwin
