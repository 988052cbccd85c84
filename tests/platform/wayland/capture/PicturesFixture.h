// Pictures of the windows of a compositor in the test's own process.
#pragma once

#include "platform/wayland/capture/WindowPictures.h"
#include "support/wayland/FakeCaptures.h"
#include "support/wayland/FakeToplevels.h"

#include <QTemporaryDir>

#include <wayland-server-core.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <thread>

namespace kelpa::test {

inline constexpr QSize largest{4, 4};
/// So long that a slow machine takes no picture for one that never comes.
inline constexpr wayland::CaptureLimits patientLimits{.setup = std::chrono::seconds(20),
                                                      .picture = std::chrono::seconds(20)};

class WindowPicturesTest : public testing::Test
{
protected:
    WindowPicturesTest() { startCompositor(); }

    void startCompositor()
    {
        compositor.emplace(path);
        windows.emplace(*compositor);
        captures.emplace(*compositor);
    }

    void endCompositor()
    {
        // As one does that ends at once, without taking its globals back.
        wl_display_destroy_clients(compositor->display());
        captures.reset();
        windows.reset();
        compositor.reset();
    }

    void start(const wayland::CaptureLimits& limits = patientLimits,
               std::chrono::milliseconds idleLimit = std::chrono::minutes(1))
    {
        pictures.emplace(path, limits, idleLimit);
        ASSERT_TRUE(serveUntil([this] { return pictures->areOffered(); }));
        windows->open("First", "app", "first");
        windows->open("Second", "app", "second");
    }

    /// Serves until the condition holds; false when it takes too long.
    bool serveUntil(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            if (compositor && isServing)
                compositor->serve();
            else
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }

    std::optional<WindowCapture> capture(const wayland::PictureRequest& request)
    {
        std::optional<WindowCapture> picture;
        std::atomic<bool> isDone = false;
        const std::jthread capturing([&] {
            picture = pictures->capture(request, stop.get_token());
            isDone = true;
        });
        EXPECT_TRUE(serveUntil([&] { return isDone.load(); }));
        return picture;
    }

    std::optional<WindowCapture> capture(CaptureNeed need, const QByteArray& window = "first")
    {
        return capture({.window = window, .largest = largest, .need = need});
    }

    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("wayland")).toLocal8Bit();
    std::optional<FakeCompositor> compositor;
    std::optional<FakeIdentifiedToplevels> windows;
    std::optional<FakeCaptures> captures;
    std::optional<wayland::WindowPictures> pictures;
    std::stop_source stop;
    bool isServing = true;
};

} // namespace kelpa::test
