// Icons of applications are read off the main thread, and a missing one is no error.
#include "views/windows/AppIconProvider.h"

#include "platform/qt/WorkerPool.h"
#include "support/BoardBuilders.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QQuickTextureFactory>
#include <QSemaphore>
#include <QThread>

#include <chrono>
#include <optional>

using namespace std::chrono_literals;

namespace kelpa::test {
namespace {

/// Has a red icon for window 7 and none for any other, and gives each only when the gate opens.
class IconDesktop : public FakeDesktop
{
public:
    QImage icon(const WindowItem& window, int pixels) override
    {
        arrivals.release();
        gate.acquire();
        readingThread = QThread::currentThread();
        if (window.id != 7)
            return {};
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::red);
        return image;
    }

    QSemaphore arrivals;
    QSemaphore gate;
    QThread* readingThread = nullptr;
};

class AppIcons : public testing::Test
{
protected:
    AppIcons() { windows->set({window(7), window(8)}); }
    void TearDown() override
    {
        desktop.gate.release(100);
        EXPECT_TRUE(readers->finish(10s));
    }

    /// The answer to a request for `id`; the image is null when none came.
    QImage icon(const QString& id, QSize size = {40, 40})
    {
        // While the only reader waits at the gate, no answer comes before one listens for it.
        const std::unique_ptr<QQuickImageResponse> first(
            provider->requestImageResponse(QStringLiteral("8"), size));
        const std::unique_ptr<QQuickImageResponse> response(
            provider->requestImageResponse(id, size));
        QSemaphore finished;
        QObject::connect(
            response.get(), &QQuickImageResponse::finished, response.get(),
            [&finished] { finished.release(); }, Qt::DirectConnection);
        desktop.gate.release(2);
        if (!finished.tryAcquire(1, 10'000))
            return {};
        // A window that is not listed does not pass the gate.
        while (desktop.gate.tryAcquire()) {
        }
        EXPECT_EQ(response->errorString(), QString());
        const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory());
        return factory->image();
    }

    IconDesktop desktop;
    std::shared_ptr<IconWindows> windows = std::make_shared<IconWindows>();
    std::shared_ptr<WorkerPool> readers = std::make_shared<WorkerPool>(1);
    std::optional<AppIconProvider> provider{std::in_place, desktop, windows, readers};
};

TEST_F(AppIcons, An_icon_comes_in_the_size_that_is_asked_for)
{
    const QImage image = icon(QStringLiteral("7"));
    EXPECT_EQ(image.size(), QSize(40, 40));
    EXPECT_EQ(image.pixelColor(20, 20), QColor(Qt::red));
}

TEST_F(AppIcons, Without_a_size_it_has_that_of_a_card)
{
    EXPECT_EQ(icon(QStringLiteral("7"), QSize()).size(), QSize(20, 20));
}

TEST_F(AppIcons, What_follows_the_number_changes_nothing)
{
    EXPECT_EQ(icon(QStringLiteral("7/org.example.App/3")).size(), QSize(40, 40));
}

TEST_F(AppIcons, It_is_not_read_on_the_thread_that_asks)
{
    icon(QStringLiteral("7"));
    EXPECT_NE(desktop.readingThread, nullptr);
    EXPECT_NE(desktop.readingThread, QThread::currentThread());
}

TEST_F(AppIcons, A_window_without_an_icon_has_one_empty_pixel)
{
    const QImage image = icon(QStringLiteral("8"));
    EXPECT_EQ(image.size(), QSize(1, 1));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

TEST_F(AppIcons, Windows_that_are_not_listed_and_malformed_addresses_have_one_too)
{
    EXPECT_EQ(icon(QStringLiteral("9")).size(), QSize(1, 1));
    EXPECT_EQ(icon(QStringLiteral("seven")).size(), QSize(1, 1));
    EXPECT_EQ(icon(QString()).size(), QSize(1, 1));
    windows->set({window(8)});
    EXPECT_EQ(icon(QStringLiteral("7")).size(), QSize(1, 1));
}

TEST_F(AppIcons, An_icon_that_is_waited_for_does_not_hold_up_the_end)
{
    std::unique_ptr<QQuickImageResponse> response(
        provider->requestImageResponse(QStringLiteral("7"), {40, 40}));
    ASSERT_TRUE(desktop.arrivals.tryAcquire(1, 10'000));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(readers->finish(50ms));
    response.reset();
    provider.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
    // What comes now finds nobody.
    desktop.gate.release();
    EXPECT_TRUE(readers->finish(10s));
}

TEST_F(AppIcons, What_is_asked_after_the_end_is_not_read)
{
    ASSERT_TRUE(readers->finish(10s));
    desktop.gate.release();
    const std::unique_ptr<QQuickImageResponse> response(
        provider->requestImageResponse(QStringLiteral("7"), {40, 40}));
    EXPECT_EQ(desktop.readingThread, nullptr);
    EXPECT_EQ(desktop.gate.available(), 1);
}

} // namespace
} // namespace kelpa::test
