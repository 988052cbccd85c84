// The window server of a KWin session: numbers the windows that Kelpa's script within KWin reports
// by their UUIDs, and takes their pictures by KWin's screenshot service.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/DocumentSource.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "platform/kwin/KwinLink.h"
#include "platform/kwin/KwinPicture.h"
#include "platform/kwin/KwinScreenshots.h"
#include "platform/kwin/KwinSnapshot.h"
#include "platform/numbers/NamedWindowNumbers.h"
#include "platform/tasks/MainThreadNotifier.h"

#include <QByteArray>
#include <QPoint>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace kelpa::kwin {

/// References to objects that outlive the window server.
struct KwinWindowServerNeeds
{
    KwinLinkOptions link;
    ApplicationResolver& resolver;
    /// Null when there is no source of documents.
    DocumentSource* documents = nullptr;
    NumberReservation& reservation;
    NameTableStorage& names;
    /// The greatest number reserved so far, 0 at first.
    WindowID highWaterMark = 0;
    /// Numbers that no new window may get, because windows are assigned by them.
    std::set<WindowID> takenNumbers{};
    Scheduler& scheduler;
    /// For one picture.
    std::chrono::milliseconds pictureLimit{2000};
    /// As for `KwinScreenshots`.
    std::chrono::milliseconds frameInterval{250};
    /// The scheduler's clock. Any thread.
    std::function<Scheduler::Time()> clock = std::chrono::steady_clock::now;
};

class KwinWindowServer final : public WindowServer
{
public:
    explicit KwinWindowServer(const KwinWindowServerNeeds& needs);
    ~KwinWindowServer() override;
    KwinWindowServer(const KwinWindowServer&) = delete;
    KwinWindowServer& operator=(const KwinWindowServer&) = delete;

    /// True while KWin is there, also while it hangs.
    bool isScreenCaptureTrusted() const override { return m_isThere; }
    std::optional<Obstacle> screenCaptureObstacle() const override
    {
        return Obstacle::windowManager;
    }
    /// There is no permission to ask for.
    bool requestScreenCapture() override { return m_isThere; }
    /// While KWin hangs, its windows are those that were reported last; also while a script that
    /// was loaded since has not reported yet, for `KwinLinkOptions::reportLimit` at most.
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    /// Nothing while KWin pauses, see `PicturePauses`, until it draws again, a window is activated
    /// or the screens are others.
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    bool isPausing() const override;
    /// Reports changes of `isListing`, `isKeyHeard` and `pictures` too.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) override;

    /// Calls `summoned` on the main thread whenever the person has pressed the shortcut that
    /// Kelpa's script offers in KWin, also before the first pass. Main thread.
    [[nodiscard]] std::unique_ptr<Subscription> watchSummons(std::function<void()> summoned);

    /// Calls `called` on the main thread, with the time of the call, whenever the person has called
    /// Plasma's launcher by its key, which since Plasma 6 is a tap of Meta. Before, KWin tells
    /// nobody but Plasma. Main thread.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchLauncher(std::function<void(Scheduler::Time)> called);

    /// Whether the last pass had windows; assumed before the first. Any thread; returns at once.
    bool isListing() const { return m_isListing; }
    /// Whether `watchLauncher` reports taps of Super, as found last; absent until KWin has said so
    /// once. Any thread; returns at once.
    std::optional<bool> isKeyHeard() const;
    /// As KWin has answered last. Any thread; returns at once.
    PictureStanding pictures() const { return m_pictures; }

    /// Those of the last pass, the most recently active first; absent when there were none to be
    /// had. Any thread; returns at once.
    std::optional<std::vector<NumberedKwinWindow>> windows() const;
    /// Any thread; returns at once.
    void order(const KwinOrder& order) { m_link.order(order); }

private:
    /// What `isKeyHeard` answers. Not an optional: atomics of two bytes that are no integer need a
    /// library of Clang's own.
    enum class KeyReport : std::uint8_t { none, heard, unheard };

    /// Of the script and of the keys, which are read whether or not the windows are.
    KwinReading readLink();
    bool areWindowsKept(std::chrono::steady_clock::time_point now);
    std::vector<NumberedKwinWindow> numbered(std::vector<KwinWindow> windows);
    void forgetPicturesExceptOf(const std::set<QByteArray>& listed);
    std::optional<KwinWindow> windowOf(WindowID number) const;
    /// Loads the script without a pass; again, ever later, until KWin runs it. Main thread.
    void loadScript();
    /// As `pixelOnScreen`.
    QPoint shownPixel() const;
    /// `m_mutex` is held.
    void endPauses();
    /// While KWin pauses, waits on a thread of its own until KWin draws.
    void awaitFrame();
    void endPausesOfActivated(const std::optional<std::vector<NumberedKwinWindow>>& windows);
    void notePictures(ScreenshotOutcome outcome);
    void noteSilence(const QByteArray& uuid, ScreenshotOutcome outcome);

    const KwinWindowServerNeeds m_needs;
    KwinScreenshots m_screenshots;
    /// Assumed until KWin has been asked.
    std::atomic<bool> m_isThere = true;
    std::atomic<bool> m_isListing = true;
    std::atomic<KeyReport> m_keyReport = KeyReport::none;
    std::atomic<PictureStanding> m_pictures = PictureStanding::given;

    // Used by discovery passes alone, of which there is one at a time.
    NamedWindowNumbers m_numbers;
    /// The process of the KWin whose windows have numbers; absent before the first.
    std::optional<ProcessID> m_process;
    QStringList m_virtualDesktops;
    /// When a pass first found KWin without a report; absent when the last one had a report.
    std::optional<std::chrono::steady_clock::time_point> m_unreportedSince;

    mutable std::mutex m_mutex;
    std::optional<std::vector<NumberedKwinWindow>> m_windows;
    std::vector<Rect> m_screens;
    std::map<QByteArray, TakenPicture> m_taken;
    /// While KWin draws nothing.
    PicturePauses m_pauses;
    /// Of windows that gave no picture while KWin drew.
    std::map<QByteArray, PicturePauses> m_pausesOfWindows;
    /// The UUID of the window that was active last.
    QByteArray m_active;
    int m_cancelledInARow = 0;
    bool m_hasTakenOne = false;
    MainThreadNotifier m_changes;
    /// Null before anybody watches the keys, and once KWin runs the script.
    TaskHandle m_loading;
    /// Before the next attempt; zero before the first one.
    Scheduler::Duration m_loadDelay{0};
    /// Of each press of the shortcut.
    MainThreadNotifier m_summons;
    /// Of each call of the launcher.
    MainThreadNotifier m_launcherCalls;
    /// Whether `m_frames` waits for a frame, and what ends that.
    bool m_isAwaitingFrame = false;
    std::stop_source m_awaiting;
    // Last: their threads use the others.
    KwinLink m_link;
    /// Only `captureWindow` starts it, when it has ended.
    std::jthread m_frames;
};

} // namespace kelpa::kwin
