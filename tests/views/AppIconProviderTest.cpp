// Icons of applications are read off the main thread, and a missing one is no error.
#include "views/AppIconProvider.h"

#include "support/BoardBuilders.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QQuickTextureFactory>
#include <QSemaphore>
#include <QThread>

namespace kelpa::test {
namespace {

/// Has a red icon for window 7 and none for any other, and gives each only when the gate opens.
class IconDesktop : public FakeDesktop
{
public:
    QImage icon(const WindowItem& window, int pixels) override
    {
        gate.acquire();
        readingThread = QThread::currentThread();
        if (window.id != 7)
            return {};
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::red);
        return image;
    }

    QSemaphore gate;
    QThread* readingThread = nullptr;
};

class AppIcons : public testing::Test
{
protected:
    AppIcons() { windows->set({window(7), window(8)}); }

    /// The answer to a request for `id`; the image is null when none came.
    QImage icon(const QString& id, QSize size = {40, 40})
    {
        // While the only reader waits at the gate, no answer comes before one listens for it.
        const std::unique_ptr<QQuickImageResponse> first(
            provider.requestImageResponse(QStringLiteral("8"), size));
        const std::unique_ptr<QQuickImageResponse> response(
            provider.requestImageResponse(id, size));
        QSemaphore finished;
        QObject::connect(
            response.get(), &QQuickImageResponse::finished, response.get(),
            [&finished] { finished.release(); }, Qt::DirectConnection);
        desktop.gate.release(2);
        if (!finished.tryAcquire(1, 10'000))
            return {};
        EXPECT_EQ(response->errorString(), QString());
        const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory());
        return factory->image();
    }

    IconDesktop desktop;
    std::shared_ptr<IconWindows> windows = std::make_shared<IconWindows>();
    AppIconProvider provider{desktop, windows};
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
    windows->set({});
    EXPECT_EQ(icon(QStringLiteral("7")).size(), QSize(1, 1));
}

} // namespace
} // namespace kelpa::test
