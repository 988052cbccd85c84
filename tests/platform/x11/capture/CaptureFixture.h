// A desktop with windows to capture.
#pragma once

#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

#include <QImage>

namespace kelpa::test {

inline constexpr std::uint32_t red = 0xC02010;
inline constexpr std::uint32_t green = 0x10A040;
inline constexpr std::uint32_t blue = 0x2030D0;

/// Without transparency: 0xAARRGGBB with full alpha, as QImage gives it.
constexpr QRgb opaque(std::uint32_t color)
{
    return 0xFF000000U | color;
}

/// Every pixel of an image has one colour.
inline ::testing::AssertionResult isPlain(const QImage& image, QRgb color)
{
    if (image.isNull()) {
        return ::testing::AssertionFailure() << "no image";
    }
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != color) {
                return ::testing::AssertionFailure()
                       << std::hex << image.pixel(x, y) << " instead of " << color << std::dec
                       << " at " << x << ", " << y;
            }
        }
    }
    return ::testing::AssertionSuccess();
}

class CaptureOnDisplay : public ::testing::Test
{
protected:
    explicit CaptureOnDisplay(const QStringList& options = {}) : xServer(options) {}

    /// Opened, listed and shown.
    xcb_window_t open(TestClient& of, const TestWindow& window)
    {
        const xcb_window_t id = of.open(window);
        EXPECT_TRUE(waitUntil([&] { return client.isListed(id) && client.isShown(id); }));
        return id;
    }

    /// The number of a window, by a discovery pass; 0 when it has none.
    WindowID number(const char* title)
    {
        const auto entry = entryNamed(runDiscoveryPass(*server), QString::fromUtf8(title));
        return entry ? entry->number.value_or(0) : 0;
    }

    std::optional<WindowCapture> capture(WindowID window, CaptureNeed need = CaptureNeed::always,
                                         const std::vector<WindowID>& next = {})
    {
        return server->captureWindow({window, {720, 450}, need, next}, {});
    }

    /// Captures until there is a picture: an obscured window has to settle first.
    WindowCapture settled(WindowID window)
    {
        std::optional<WindowCapture> result;
        waitUntil([&] {
            result = capture(window);
            return result.has_value();
        });
        return result.value_or(WindowCapture{});
    }

    XServer xServer;
    WindowManager manager{xServer.display()};
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
    TestClient client{xServer.display()};
};

} // namespace kelpa::test
