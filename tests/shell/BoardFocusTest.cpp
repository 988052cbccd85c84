// Which item has the focus within the main window, and how a field loses it.
#include "shell/BoardInputFixture.h"

namespace kelpa::test {
namespace {

using State = BoardNavigationState;
using BoardFocusTest = BoardInputTest;

TEST_F(BoardFocusTest, A_click_outside_a_field_takes_its_focus_and_one_inside_does_not)
{
    item("field")->forceActiveFocus();
    clickAt({50, 30});
    EXPECT_TRUE(item("field")->hasActiveFocus());
    clickAt({300, 200});
    EXPECT_FALSE(item("field")->hasActiveFocus());
}

TEST_F(BoardFocusTest, A_field_that_is_left_takes_what_it_stands_in_along)
{
    item("edited")->forceActiveFocus();
    press(Qt::Key_Down);
    EXPECT_FALSE(item("row")->hasActiveFocus());
    item("edited")->forceActiveFocus();
    clickAt({300, 200});
    EXPECT_FALSE(item("row")->hasActiveFocus());
}

TEST_F(BoardFocusTest, A_click_elsewhere_takes_the_keyboard_from_a_button_and_from_a_card)
{
    for (const char* name : {"button", "card"}) {
        item(name)->forceActiveFocus(Qt::TabFocusReason);
        clickAt({50, name == QByteArray("button") ? 120 : 180});
        EXPECT_TRUE(item(name)->hasActiveFocus()) << name;
        clickAt({300, 200});
        EXPECT_FALSE(item(name)->hasActiveFocus()) << name;
    }
}

TEST_F(BoardFocusTest, A_click_in_a_sheet_beside_its_field_leaves_the_keyboard_there)
{
    QObject* const sheet = window->findChild<QObject*>(QStringLiteral("sheet"));
    sheet->setProperty("padding", 20);
    ASSERT_TRUE(QMetaObject::invokeMethod(sheet, "open"));
    ASSERT_TRUE(QTest::qWaitFor([sheet] { return sheet->property("opened").toBool(); }));
    item("inSheet")->forceActiveFocus();
    clickAt({15, 225});
    EXPECT_TRUE(sheet->property("opened").toBool());
    EXPECT_TRUE(item("inSheet")->hasActiveFocus());
}

TEST_F(BoardFocusTest, A_button_that_belongs_to_a_field_is_not_left_with_it)
{
    item("written")->forceActiveFocus();
    clickAt({295, 80});
    EXPECT_FALSE(item("written")->hasActiveFocus());
    EXPECT_EQ(window->property("presses").toInt(), 1);
    EXPECT_EQ(leavings(), 0);
}

TEST_F(BoardFocusTest, A_field_gives_up_the_keyboard_when_another_program_gets_it)
{
    item("field")->forceActiveFocus();
    press(Qt::Key_A);
    goElsewhereAndBack();
    EXPECT_FALSE(item("field")->hasActiveFocus());
    press(Qt::Key_B);
    EXPECT_EQ(typedText(), QStringLiteral("a"));
}

TEST_F(BoardFocusTest, A_suspended_field_is_left_by_a_click_beside_it_and_by_a_key_of_the_board)
{
    item("written")->forceActiveFocus();
    goElsewhereAndBack();
    EXPECT_FALSE(item("written")->hasActiveFocus());
    // Nothing handles the letter, and Escape has nothing to leave.
    press(Qt::Key_B);
    press(Qt::Key_Escape);
    const int before = leavings();
    clickAt({300, 200});
    EXPECT_EQ(leavings(), before + 1);
    clickAt({300, 200});
    EXPECT_EQ(leavings(), before + 1);

    item("written")->forceActiveFocus();
    goElsewhereAndBack();
    const int again = leavings();
    press(Qt::Key_Right);
    EXPECT_EQ(leavings(), again + 1);
    EXPECT_FALSE(item("written")->hasActiveFocus());
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
}

TEST_F(BoardFocusTest, Who_believes_to_be_writing_still_raises_no_window_and_undoes_nothing)
{
    const GoalID goal = makeGoal(QStringLiteral("kept"));
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    store().assign(7, goal);
    store().selectWindow(7);
    const auto type = [this] {
        for (const Qt::Key key :
             {Qt::Key_A, Qt::Key_Space, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete})
            press(key);
        press(Qt::Key_Z, Qt::ControlModifier);
        scheduler.advance(std::chrono::milliseconds(0));
    };
    const auto raised = [this] { return desktop.calls.count(QStringLiteral("raise Report")); };
    item("field")->forceActiveFocus();
    press(Qt::Key_B);
    goElsewhereAndBack();
    type();
    EXPECT_EQ(raised(), 0);
    EXPECT_EQ(store().goals().size(), 1);
    EXPECT_EQ(store().windows(goal).size(), 1);
    EXPECT_EQ(typedText(), QStringLiteral("b"));

    // The keys are the board's again as soon as the person does something there.
    press(Qt::Key_Escape);
    store().selectWindow(7);
    press(Qt::Key_Space);
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_EQ(raised(), 1);

    item("field")->forceActiveFocus();
    goElsewhereAndBack();
    clickAt({300, 200});
    press(Qt::Key_Space);
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_EQ(raised(), 2);
}

TEST_F(BoardFocusTest, The_first_Escape_after_another_program_leaves_neither_the_field_nor_the_goal)
{
    const GoalID goal = makeGoal(QStringLiteral("kept"));
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    store().assign(7, goal);
    store().selectWindow(7);
    item("written")->forceActiveFocus();
    goElsewhereAndBack();
    const int before = leavings();
    press(Qt::Key_Escape);
    hold(Qt::Key_Escape);
    EXPECT_EQ(leavings(), before);
    EXPECT_EQ(store().boardNavigation().layer, BoardNavigationLayer::windows);

    press(Qt::Key_Escape);
    EXPECT_EQ(leavings(), before + 1);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(goal)));
}

TEST_F(BoardFocusTest, A_click_in_a_suspended_field_or_on_its_button_does_not_leave_it)
{
    item("written")->forceActiveFocus();
    goElsewhereAndBack();
    const int before = leavings();
    clickAt({230, 80});
    EXPECT_TRUE(item("written")->hasActiveFocus());
    EXPECT_EQ(leavings(), before);

    goElsewhereAndBack();
    const int again = leavings();
    clickAt({295, 80});
    EXPECT_EQ(window->property("presses").toInt(), 1);
    EXPECT_EQ(leavings(), again);
}

TEST_F(BoardFocusTest, A_suspended_field_may_be_destroyed)
{
    item("field")->forceActiveFocus();
    goElsewhereAndBack();
    delete item("field");
    press(Qt::Key_Right);
    clickAt({300, 200});
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
}

TEST_F(BoardFocusTest, A_field_in_a_sheet_keeps_its_keyboard_for_when_its_window_has_it_again)
{
    QObject* const sheet = window->findChild<QObject*>(QStringLiteral("sheet"));
    ASSERT_TRUE(QMetaObject::invokeMethod(sheet, "open"));
    ASSERT_TRUE(QTest::qWaitFor([sheet] { return sheet->property("opened").toBool(); }));
    item("inSheet")->forceActiveFocus();
    goElsewhereAndBack();
    EXPECT_TRUE(item("inSheet")->hasActiveFocus());
}

TEST_F(BoardFocusTest, A_click_in_a_sheet_does_not_take_the_keyboard_to_a_suspended_field)
{
    item("written")->forceActiveFocus();
    goElsewhereAndBack();
    const int before = leavings();
    QObject* const sheet = window->findChild<QObject*>(QStringLiteral("sheet"));
    sheet->setProperty("padding", 20);
    ASSERT_TRUE(QMetaObject::invokeMethod(sheet, "open"));
    ASSERT_TRUE(QTest::qWaitFor([sheet] { return sheet->property("opened").toBool(); }));
    item("inSheet")->forceActiveFocus();
    clickAt({15, 225});
    EXPECT_TRUE(item("inSheet")->hasActiveFocus());
    // The field is left by a click once the sheet is closed.
    ASSERT_TRUE(QMetaObject::invokeMethod(sheet, "close"));
    ASSERT_TRUE(QTest::qWaitFor([sheet] { return !sheet->property("visible").toBool(); }));
    EXPECT_EQ(leavings(), before);
    clickAt({300, 200});
    EXPECT_EQ(leavings(), before + 1);
}

} // namespace
} // namespace kelpa::test
