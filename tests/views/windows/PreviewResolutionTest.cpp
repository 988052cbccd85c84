// In how many pixels pictures are asked for, by the screen that they are drawn on.
#include "views/windows/PreviewResolution.h"

#include "support/StoreFixture.h"

#include <QQuickWindow>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

/// Moves to another screen, as the scene would report it.
class ScreenResolution : public PreviewResolution
{
public:
    using PreviewResolution::PreviewResolution;

    void setDevicePixelRatio(qreal devicePixelRatio)
    {
        itemChange(ItemDevicePixelRatioHasChanged, devicePixelRatio);
    }
};

class PicturePixels : public StoreFixture
{
protected:
    PicturePixels()
    {
        desktop.addWindow(7, 100, QStringLiteral("a"));
        desktop.captureSizes.insert(7, {1920, 1080});
        store().refresh();
    }

    QSize captured()
    {
        store().refreshPreviews(scheduler.now());
        scheduler.advance(0ms);
        return store().previews().value(7).image.size();
    }

    QQuickWindow window;
};

TEST_F(PicturePixels, Are_those_of_the_windows_screen_from_the_start)
{
    store().setPreviewPixels({512, 288});
    const ScreenResolution resolution(store(), *window.contentItem());
    EXPECT_EQ(window.effectiveDevicePixelRatio(), 1);
    EXPECT_EQ(captured(), QSize(128, 72));
}

TEST_F(PicturePixels, Follow_the_window_to_a_screen_with_smaller_pixels_and_back)
{
    ScreenResolution resolution(store(), *window.contentItem());
    EXPECT_EQ(captured(), QSize(128, 72));
    resolution.setDevicePixelRatio(2);
    EXPECT_EQ(captured(), QSize(256, 144));
    resolution.setDevicePixelRatio(1.5);
    EXPECT_EQ(captured(), QSize(192, 108));
    resolution.setDevicePixelRatio(1);
    EXPECT_EQ(captured(), QSize(128, 72));
}

} // namespace
} // namespace kelpa::test
