// Captures windows through one connection, until that is lost.
#pragma once

#include "platform/WindowServer.h"
#include "platform/x11/capture/ImageReader.h"
#include "platform/x11/capture/RedirectedWindows.h"

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <vector>

namespace kelpa::x11 {

/// A window by the number that it must bear and the server's id, which may be another window's.
struct CaptureTarget
{
    WindowID number = 0;
    std::uint32_t window = 0;
};

struct CaptureLimits
{
    /// How long a window that was covered when its contents began to be kept may take to draw
    /// itself; until then there is no picture of it.
    std::chrono::milliseconds settling{150};
    /// The contents of a window that was not captured for so long are no longer kept. More than a
    /// turn of 500 windows takes.
    std::chrono::milliseconds keeping{std::chrono::minutes(10)};
    /// Larger windows are not captured: the server would stand still over their contents.
    qint64 mostPixels = qint64{64} * 1024 * 1024;
};

struct CaptureCounts
{
    /// Pictures that were read.
    std::uint64_t pictures = 0;
    /// Those of them that came through shared memory.
    std::uint64_t shared = 0;
    /// Windows that were not read because they were known to be as before.
    std::uint64_t unchanged = 0;
};

/// Used on one thread at a time.
class CaptureSession
{
public:
    /// Waits for the server. Absent when there is none or when it cannot capture windows.
    static std::unique_ptr<CaptureSession> open(DisplayConnector& connector,
                                                const CaptureLimits& limits, bool maySharePictures);

    /// As WindowServer::captureWindow. One round trip for a window that was captured before, two
    /// for another, none for one that has not changed; a covered window whose contents begin to be
    /// kept only now is given its time to draw itself. `next` are windows that will be captured
    /// soon: they begin to be kept ahead of their turn, so that they have drawn themselves by then.
    std::optional<WindowCapture> capture(const CaptureTarget& target,
                                         const std::vector<CaptureTarget>& next,
                                         const QSize& largest, CaptureNeed need,
                                         const std::stop_token& stop);

    /// Takes in what the server has said so far; false once the connection is lost.
    bool isConnected();
    /// The server takes shared memory, but not ours.
    bool hasFailedToShare() const { return m_reader.hasFailedToShare(); }

    XcbTraffic traffic() const { return m_link->connection().traffic(); }
    const CaptureCounts& counts() const { return m_counts; }

private:
    struct Reading;

    CaptureSession(std::unique_ptr<CaptureConnection> link, const CaptureLimits& limits,
                   bool maySharePictures);

    std::vector<CaptureTarget> ahead(const CaptureTarget& target,
                                     const std::vector<CaptureTarget>& next);
    void prepare(const std::vector<CaptureTarget>& targets);
    void keep(const CaptureTarget& target, const std::optional<CaptureSubject>& seen, bool isAhead);
    Reading read(const CaptureTarget& target, const RedirectedWindow& kept, const QSize& largest);
    bool isCapturable(const CaptureSubject& subject) const;
    bool accept(const CaptureTarget& target, RedirectedWindow& kept, const Reading& reading);

    std::unique_ptr<CaptureConnection> m_link;
    CaptureLimits m_limits;
    ImageReader m_reader;
    RedirectedWindows m_kept;
    /// Of the windows that came next at the last capture.
    std::set<WindowID> m_preparedAhead;
    CaptureCounts m_counts;
};

} // namespace kelpa::x11
