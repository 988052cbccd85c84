#include "CaptureFixture.h"

#include "support/Seed.h"

#include <array>
#include <iterator>
#include <list>
#include <map>
#include <random>
#include <semaphore>
#include <thread>

using namespace kelpa;
using namespace kelpa::test;

namespace {

constexpr std::array<std::uint32_t, 3> colors{red, green, blue};

/// Gives one step after the other to another thread, so that windows live long enough to be met.
using Steps = std::counting_semaphore<>;

/// Opens, resizes, hides and destroys plain windows, each drawn in one colour, until told to stop.
/// The title of each is the number of its colour.
void churn(const QByteArray& display, const std::stop_token& stop, Steps& steps, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    const auto below = [&](std::uint64_t limit) { return random() % limit; };
    std::list<std::pair<TestClient, xcb_window_t>> open;
    while (true) {
        steps.acquire();
        if (stop.stop_requested()) {
            return;
        }
        const std::uint64_t choice = below(8);
        if (open.size() < 6 && choice < 3) {
            TestClient client(display);
            const std::size_t color = below(colors.size());
            const xcb_window_t id = client.open({static_cast<std::int16_t>(below(900)),
                                                 static_cast<std::int16_t>(below(500)),
                                                 200,
                                                 150,
                                                 QByteArray::number(static_cast<int>(color)),
                                                 {},
                                                 false,
                                                 colors.at(color)});
            open.emplace_back(std::move(client), id);
        } else if (!open.empty()) {
            const auto it =
                std::next(open.begin(), static_cast<std::ptrdiff_t>(below(open.size())));
            auto& [client, id] = *it;
            if (choice < 6) {
                client.resize(id, static_cast<std::uint16_t>(1 + below(1500)),
                              static_cast<std::uint16_t>(1 + below(900)));
            } else if (choice == 6) {
                client.minimize(id);
                client.map(id);
            } else {
                // The connection goes too, so that its ids are soon used again.
                client.destroy(id);
                open.erase(it);
            }
        }
    }
}

using CaptureDuringChurn = CaptureOnDisplay;

} // namespace

TEST_F(CaptureDuringChurn, Every_picture_is_whole_and_of_the_window_that_was_asked_for)
{
    const std::uint64_t first = seed();
    SCOPED_TRACE(seedText(first));
    Steps steps(0);
    std::jthread worker(
        [&](const std::stop_token& stop) { churn(xServer.display(), stop, steps, first); });

    int pictures = 0;
    int absent = 0;
    std::map<WindowID, WindowCapture> taken;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while ((pictures < 300 || absent < 5) && std::chrono::steady_clock::now() < end) {
        steps.release();
        const std::vector<WindowListEntry> windows = runDiscoveryPass(*server);
        for (const WindowListEntry& entry : windows) {
            // A dead window's id in the manager's list may name one that is not titled yet when it
            // is captured, so its colour is known only from the next look.
            const auto it = taken.find(entry.number.value_or(0));
            if (it == taken.end() || entry.name.value_or(QString()).isEmpty()) {
                continue;
            }
            ++pictures;
            const auto& [image, pixelSize] = it->second;
            EXPECT_LE(std::max(image.width(), image.height()), 720);
            EXPECT_TRUE(isPlain(image, opaque(colors.at(entry.name->toUInt()))))
                << pixelSize.width() << " by " << pixelSize.height();
        }
        taken.clear();
        for (const WindowListEntry& entry : windows) {
            steps.release();
            if (const auto result = capture(entry.number.value_or(0))) {
                taken.insert({*entry.number, *result});
            } else {
                ++absent;
            }
        }
    }
    worker.request_stop();
    steps.release();
    EXPECT_GE(pictures, 300);
    EXPECT_GE(absent, 5) << "nothing vanished meanwhile";
}
