#include "views/FirstFrame.h"

#include "views/ViewEngineFixture.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

namespace kelpa::test {
namespace {

class FirstFrameTest : public ViewEngineFixture
{
protected:
    void SetUp() override
    {
        goalID = makeGoal();
        makeTodo(goalID);
        navigation = store().boardNavigation();
        ASSERT_TRUE(view.load());
    }

    /// The items of a type, as far as they are shown.
    static QList<QQuickItem*> shown(const QQuickItem& item, const QByteArray& type)
    {
        QList<QQuickItem*> found;
        const QList<QQuickItem*> children = item.childItems();
        for (QQuickItem* const child : children) {
            if (!child->isVisible())
                continue;
            if (isOfType(*child, type))
                found.append(child);
            found.append(shown(*child, type));
        }
        return found;
    }
    QList<QQuickItem*> shown(const QByteArray& type) const
    {
        return shown(*view.window()->contentItem(), type);
    }
    bool areControlsThere() const { return !shown("TodoMenuButton").isEmpty(); }

    /// Where the frame shows the symbol of the todo's status, in points of the window.
    QPointF statusPlace() const
    {
        const QList<QQuickItem*> rows = shown("TodoRow");
        return rows.isEmpty() ? QPointF()
                              : rows.first()->mapToScene({14, rows.first()->height() / 2});
    }
    void send(QEvent::Type type, Qt::MouseButtons buttons)
    {
        const QPointF place = statusPlace();
        QMouseEvent event(type, place, view.window()->mapToGlobal(place), Qt::LeftButton, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(view.window(), &event);
    }
    void click()
    {
        ASSERT_NE(statusPlace(), QPointF());
        send(QEvent::MouseButtonPress, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, Qt::NoButton);
    }
    TodoStatus status() { return todos(goalID).first().status; }

    GoalID goalID;
    /// At the start.
    BoardNavigationState navigation;
};

TEST_F(FirstFrameTest, A_press_before_the_controls_of_a_row_exist_is_for_the_one_that_it_hits)
{
    QSignalSpy boardShown(&view, &ViewEngine::boardShown);
    bool wereThere = true;
    bool wasShown = true;
    // The first of all that hears of the frame, before what waits for it in the event loop.
    QObject::connect(
        view.window(), &QQuickWindow::frameSwapped, view.window(),
        [&] {
            wereThere = areControlsThere();
            wasShown = !boardShown.isEmpty();
            click();
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    ASSERT_TRUE(view.show());
    ASSERT_TRUE(boardShown.wait());
    EXPECT_FALSE(wereThere);
    EXPECT_FALSE(wasShown);
    EXPECT_EQ(status(), TodoStatus::ing);
    EXPECT_EQ(store().boardNavigation(), navigation);
    EXPECT_EQ(boardShown.size(), 1);
}

TEST_F(FirstFrameTest, A_press_before_the_frame_does_nothing)
{
    ASSERT_TRUE(view.show());
    QSignalSpy boardShown(&view, &ViewEngine::boardShown);
    click();
    EXPECT_FALSE(areControlsThere());
    ASSERT_TRUE(boardShown.wait());
    EXPECT_EQ(status(), TodoStatus::todo);
    EXPECT_EQ(store().boardNavigation(), navigation);
    EXPECT_TRUE(areControlsThere());
    click();
    EXPECT_EQ(status(), TodoStatus::ing);
}

TEST_F(FirstFrameTest, A_window_that_is_shown_again_has_had_its_first_frame)
{
    QSignalSpy boardShown(&view, &ViewEngine::boardShown);
    ASSERT_TRUE(view.show());
    ASSERT_TRUE(boardShown.wait());
    view.window()->hide();
    QSignalSpy frames(view.window(), &QQuickWindow::frameSwapped);
    ASSERT_TRUE(view.show());
    ASSERT_TRUE(frames.wait());
    QCoreApplication::processEvents();
    EXPECT_EQ(boardShown.size(), 1);
}

TEST(FirstFrameWait, Ends_after_a_second_without_a_frame_which_may_still_come)
{
    QQuickWindow window;
    FirstFrame frame(window);
    QSignalSpy controlsNeeded(&frame, &FirstFrame::controlsNeeded);
    QSignalSpy shown(&frame, &FirstFrame::shown);
    frame.limitWait();
    EXPECT_TRUE(controlsNeeded.wait());
    EXPECT_EQ(shown.size(), 0);
    window.show();
    ASSERT_TRUE(shown.wait());
    EXPECT_EQ(controlsNeeded.size(), 1);
    EXPECT_EQ(shown.size(), 1);
}

} // namespace
} // namespace kelpa::test
