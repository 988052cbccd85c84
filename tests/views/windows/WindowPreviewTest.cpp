// The pictures on window cards.
#include "views/windows/WindowPreview.h"

#include "support/StoreFixture.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

#include <chrono>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

constexpr int limit = 10000;

/// Tells what it last gave the scene.
class WatchedPreview : public WindowPreview
{
public:
    const QSGNode* node = nullptr;
    int paints = 0;

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override
    {
        QSGNode* const made = WindowPreview::updatePaintNode(old, data);
        node = made;
        ++paints;
        return made;
    }
};

class Pictures : public StoreFixture
{
protected:
    Pictures()
    {
        for (const WindowID id : {8U, 7U}) {
            desktop.addWindow(id, 100, QString::number(id));
            desktop.captureSizes.insert(id, {640, 480});
        }
        store().refresh();
        controller = std::make_unique<WindowController>(store());
        preview.setParentItem(window.contentItem());
        preview.setSize({128, 72});
        preview.setWindows(controller.get());
        preview.setWindowID(7);
    }

    /// Of the window whose turn it is: 7, then 8.
    void capture()
    {
        store().refreshPreviews(scheduler.now());
        scheduler.advance(0ms);
    }

    void showPicture()
    {
        capture();
        window.resize(128, 72);
        window.show();
        preview.setRevision(1);
        ASSERT_TRUE(QTest::qWaitFor([this] { return preview.node != nullptr; }, limit));
    }

    std::unique_ptr<WindowController> controller;
    QQuickWindow window;
    WatchedPreview preview;
};

TEST_F(Pictures, The_picture_of_the_window_fills_the_item)
{
    showPicture();
    const QImage shown = window.grabWindow();
    const auto ratio = shown.width() / 128;
    EXPECT_EQ(shown.pixelColor(2 * ratio, 36 * ratio), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(125 * ratio, 36 * ratio), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(64 * ratio, 2 * ratio), QColor(Qt::red));
}

TEST_F(Pictures, A_picture_that_is_not_to_be_seen_is_let_go_of_and_comes_back)
{
    showPicture();
    preview.setVisible(false);
    // Something else has to be drawn, so that there is a frame.
    window.setColor(Qt::green);
    EXPECT_TRUE(QTest::qWaitFor([this] { return preview.node == nullptr; }, limit));
    preview.setVisible(true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return preview.node != nullptr; }, limit));
}

TEST_F(Pictures, A_window_without_a_picture_draws_nothing)
{
    preview.setWindowID(99);
    window.resize(128, 72);
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return preview.paints > 0; }, limit));
    EXPECT_EQ(preview.node, nullptr);
}

TEST_F(Pictures, Only_a_new_picture_of_the_same_window_is_drawn_again)
{
    showPicture();
    const int before = preview.paints;
    capture();
    preview.setRevision(1);
    window.setColor(Qt::green);
    window.grabWindow();
    EXPECT_EQ(preview.paints, before);
    preview.setRevision(2);
    window.grabWindow();
    EXPECT_EQ(preview.paints, before + 1);
}

TEST_F(Pictures, A_window_that_comes_into_view_gets_its_picture_at_once)
{
    store().startObserving();
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{7});
    preview.setRevision(1);
    preview.setWindowID(8);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{7}) << "it has one, as far as the item knows";
    preview.setRevision(0);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{7, 8}));
}

TEST_F(Pictures, An_item_that_is_put_away_asks_for_no_picture)
{
    preview.setParentItem(nullptr);
    store().startObserving();
    scheduler.advance(0ms);
    preview.setWindowID(8);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{7});
    preview.setParentItem(window.contentItem());
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{7, 8}));
}

TEST(RoundedPicture, Stretches_to_the_size_and_leaves_the_corners_free)
{
    QImage image(640, 480, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QImage picture = roundedPicture(image, {128, 72}, 5);
    EXPECT_EQ(picture.size(), QSize(128, 72));
    EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(127, 71).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(0, 36), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(127, 36), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(64, 71), QColor(Qt::red));
}

TEST(RoundedPicture, Is_interpolated_and_its_edges_have_the_colours_of_the_images_edges)
{
    QImage image(2, 1, QImage::Format_RGB32);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(1, 0, Qt::blue);
    const QImage picture = roundedPicture(image, {128, 72}, 5);
    EXPECT_EQ(picture.pixelColor(0, 36), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(127, 36), QColor(Qt::blue));
    const QColor middle = picture.pixelColor(64, 36);
    EXPECT_NEAR(middle.red(), 128, 16);
    EXPECT_NEAR(middle.blue(), 128, 16);
}

} // namespace
} // namespace kelpa::test
