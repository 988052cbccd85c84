#include "shell/WindowRaiser.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <vector>

namespace kelpa::test {
namespace {

/// Records the requests to the desktop.
class FakeOwnWindow : public OwnWindow
{
public:
    struct Request
    {
        QWindow* window;
        ActivationContext context;
    };

    void requestFront(QWindow& window, const ActivationContext& context) override
    {
        requests.push_back({&window, context});
    }
    std::unique_ptr<Subscription> watchOcclusion(QWindow&, std::function<void(bool)>) override
    {
        return nullptr;
    }

    std::vector<Request> requests;
};

/// A window at a position chosen by the person.
class PlacedWindow
{
public:
    explicit PlacedWindow(const QRect& frame)
    {
        window.setFlags(Qt::FramelessWindowHint);
        window.setGeometry(frame);
        window.show();
        EXPECT_EQ(window.frameGeometry(), frame) << "where it is to begin with";
    }
    QRect frame() const { return window.frameGeometry(); }

    QWindow window;
    FakeOwnWindow desktop;
    WindowRaiser raiser{window, desktop};
};

QRect screenArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

TEST(WindowRaising, Requests_the_front_once_with_its_context)
{
    PlacedWindow placed({100, 100, 300, 200});
    placed.raiser.raise({.inputTime = 4711, .startupID = "kelpa-1"});
    ASSERT_EQ(placed.desktop.requests.size(), 1U);
    const FakeOwnWindow::Request& request = placed.desktop.requests.front();
    EXPECT_EQ(request.window, &placed.window);
    EXPECT_EQ(request.context.inputTime, 4711U);
    EXPECT_EQ(request.context.startupID, "kelpa-1");
}

TEST(WindowRaising, Keeps_the_size_and_place_that_the_person_gave_it_each_time)
{
    PlacedWindow placed({40, 60, 500, 300});
    for (std::size_t times = 1; times <= 3; ++times) {
        placed.raiser.raise();
        EXPECT_EQ(placed.frame(), QRect(40, 60, 500, 300));
        EXPECT_TRUE(placed.window.isVisible());
        EXPECT_EQ(placed.desktop.requests.size(), times) << "also where it is in front already";
    }
}

TEST(WindowRaising, Brings_a_window_that_lies_off_the_screen_to_its_middle)
{
    const QRect area = screenArea();
    for (const QPoint corner : {QPoint(area.right() + 1, 10), QPoint(20, area.bottom() + 1),
                                QPoint(area.left() - 400, 10), QPoint(20, area.top() - 300)}) {
        PlacedWindow placed({corner, QSize(400, 300)});
        placed.raiser.raise();
        EXPECT_EQ(placed.frame().size(), QSize(400, 300));
        EXPECT_EQ(placed.frame().center(), area.center());
        EXPECT_EQ(placed.desktop.requests.size(), 1U);
    }
}

TEST(WindowRaising, Leaves_a_window_of_which_one_pixel_is_on_the_screen)
{
    const QRect area = screenArea();
    for (const QPoint corner : {QPoint(area.right(), 10), QPoint(20, area.bottom()),
                                QPoint(area.left() - 399, 10), QPoint(20, area.top() - 299)}) {
        PlacedWindow placed({corner, QSize(400, 300)});
        placed.raiser.raise();
        EXPECT_EQ(placed.frame(), QRect(corner, QSize(400, 300)));
    }
}

TEST(WindowRaising, Shows_a_window_that_was_hidden)
{
    PlacedWindow placed({100, 100, 300, 200});
    placed.window.hide();
    placed.raiser.raise();
    EXPECT_TRUE(placed.window.isVisible());
    EXPECT_EQ(placed.frame().size(), QSize(300, 200));
    EXPECT_EQ(placed.desktop.requests.size(), 1U);
}

} // namespace
} // namespace kelpa::test
