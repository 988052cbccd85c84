// Kelpa's window server beside a KWin that does what a test wants.
#pragma once

#include "platform/freedesktop/bus/PrivateBus.h"
#include "platform/kwin/FakeKwin.h"
#include "platform/kwin/KwinWindowServer.h"
#include "support/ListedTitles.h"
#include "support/ManualScheduler.h"
#include "support/MemoryNumbers.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace kelpa::test {

class KwinServerTest : public testing::Test
{
protected:
    // What windows say of themselves in a report.
    static inline const QByteArray notes =
        R"({"id":"{11111111-1111-1111-1111-111111111111}","title":"Notes",)"
        R"("process":41,"x":1,"y":2,"width":300,"height":200,"isOrdinary":true,)"
        R"("isHere":true,"activation":2})";
    static inline const QByteArray mail =
        R"({"id":"{22222222-2222-2222-2222-222222222222}","title":"Mail",)"
        R"("process":42,"x":1,"y":2,"width":300,"height":200,"isOrdinary":true,)"
        R"("isMinimized":true})";
    static inline const QByteArray panel =
        R"({"id":"{33333333-3333-3333-3333-333333333333}","title":"Panel",)"
        R"("process":42,"x":0,"y":0,"width":1600,"height":40,"isHere":true})";
    static inline const QByteArray bothWindows = '[' + notes + ',' + mail + ',' + panel + ']';

    static QString text(const char* latin) { return QString::fromLatin1(latin); }

    /// For one reply.
    static constexpr std::chrono::milliseconds limit{300};

    std::unique_ptr<kwin::KwinWindowServer> start() { return start(scheduler); }

    std::unique_ptr<kwin::KwinWindowServer> start(Scheduler& givenScheduler)
    {
        return std::make_unique<kwin::KwinWindowServer>(
            kwin::KwinWindowServerNeeds{.link = {.busAddress = bus.address().toUtf8(),
                                                 .plugin = "org.kelpa.Kelpa-test",
                                                 .folder = folder.path(),
                                                 .replyLimit = limit,
                                                 .reportLimit = reportLimit},
                                        .resolver = resolver,
                                        .reservation = reservation,
                                        .names = names,
                                        .highWaterMark = reservation.mark,
                                        .scheduler = givenScheduler,
                                        .pictureLimit = pictureLimit,
                                        .frameInterval = frameInterval,
                                        .clock = [this] { return callTime(); }});
    }

    /// What `work` returns on a thread of its own, while KWin and the main thread go on.
    template <class Work>
    auto meanwhile(Work work) -> decltype(work())
    {
        std::promise<decltype(work())> promise;
        std::future<decltype(work())> result = promise.get_future();
        const std::jthread thread([&] { promise.set_value(work()); });
        while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        return result.get();
    }

    /// Absent when there is no list.
    std::optional<Titles> pass(kwin::KwinWindowServer& server)
    {
        return meanwhile([&server] { return listedTitles(server); });
    }

    std::optional<WindowCapture> capture(kwin::KwinWindowServer& server, WindowID window,
                                         CaptureNeed need = CaptureNeed::always)
    {
        return meanwhile([&] {
            return server.captureWindow({.window = window, .largest = QSize(128, 72), .need = need},
                                        {});
        });
    }

    static bool waitFor(const std::function<bool()>& isReached)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isReached()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        return true;
    }

    /// KWin with that report.
    void begin(const QByteArray& report = bothWindows)
    {
        kwin->firstReport = report;
        kwin->appear();
    }

    /// A picture of each window, of one colour.
    void givePictures()
    {
        kwin->picture = {{text("type"), text("raw")},
                         {text("width"), 2U},
                         {text("height"), 2U},
                         {text("stride"), 8U},
                         {text("format"), uint(QImage::Format_RGB32)}};
        kwin->pictureBytes = QByteArray("\x10\x20\x30\xff", 4).repeated(4);
    }

    /// The time of a call of the launcher, which another thread asks for.
    Scheduler::Time callTime()
    {
        ++calls;
        return Scheduler::Time(elapsed.load());
    }

    std::atomic<int> calls = 0;
    std::atomic<std::chrono::milliseconds> elapsed{std::chrono::milliseconds(0)};
    std::chrono::milliseconds pictureLimit = limit;
    std::chrono::milliseconds frameInterval{20};
    /// So long that a slow machine does not reach it.
    std::chrono::milliseconds reportLimit = std::chrono::minutes(10);
    PrivateBus bus;
    QTemporaryDir folder;
    NoResolver resolver;
    MemoryReservation reservation;
    MemoryNameTable names;
    ManualScheduler scheduler;
    std::unique_ptr<FakeKwin> kwin = std::make_unique<FakeKwin>(bus.address());
};

} // namespace kelpa::test
