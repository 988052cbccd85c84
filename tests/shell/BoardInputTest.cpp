#include "shell/BoardInput.h"

#include "support/StoreFixture.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

namespace kelpa::test {
namespace {

using State = BoardNavigationState;

/// A window with a field, a button, a card as the board has them, and a place that takes nothing.
const QByteArray scene =
    "import QtQuick\n"
    "import QtQuick.Controls.Basic\n"
    "ApplicationWindow { width: 400; height: 300; visible: true\n"
    "  property int presses: 0\n"
    "  TextField { objectName: 'field'; x: 10; y: 10; width: 200; height: 40 }\n"
    "  FocusScope { objectName: 'row'; Item {}\n"
    "    TextField { objectName: 'edited'; x: 220; y: 10; width: 100; height: 40; focus: true } }\n"
    "  Button { objectName: 'button'; x: 10; y: 100; width: 100; height: 40\n"
    "    onClicked: ++parent.Window.window.presses }\n"
    "  Control { objectName: 'card'; x: 10; y: 160; width: 100; height: 40; focusPolicy: "
    "Qt.TabFocus\n"
    "    property int returns: 0; property int menus: 0\n"
    "    Keys.onReturnPressed: ++returns\n"
    "    Keys.onMenuPressed: ++menus }\n"
    "  FocusScope { id: group; x: 220; y: 60; width: 100; height: 40\n"
    "    property int leavings: 0; objectName: 'group'\n"
    "    onActiveFocusChanged: if (!activeFocus && Window.active) ++leavings\n"
    "    TextField { objectName: 'written'; width: 60; height: 40; focus: true }\n"
    "    Button { x: 60; width: 40; height: 40; onClicked: ++parent.Window.window.presses } }\n"
    "  Popup { objectName: 'sheet'; x: 10; y: 220; focus: true\n"
    "    TextField { objectName: 'inSheet' } }\n"
    "  Menu { objectName: 'menu'; MenuItem { text: 'a' } MenuItem { text: 'b' } }\n"
    "}\n";

class BoardInputTest : public StoreFixture
{
protected:
    void SetUp() override
    {
        QQmlComponent component(&engine);
        component.setData(scene, QUrl());
        window.reset(qobject_cast<QQuickWindow*>(component.create()));
        ASSERT_NE(window, nullptr) << qPrintable(component.errorString());
        input = std::make_unique<BoardInput>(*window, store());
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    void TearDown() override
    {
        input.reset();
        window.reset();
    }

    QQuickItem* item(const char* name) const
    {
        return window->findChild<QQuickItem*>(QString::fromLatin1(name));
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.get(), key, modifiers);
    }

    void clickAt(const QPoint& place)
    {
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, place);
    }

    void goElsewhereAndBack()
    {
        QWindow elsewhere;
        elsewhere.show();
        elsewhere.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// How often the group has lost the keyboard to somebody in the window.
    int leavings() const { return item("group")->property("leavings").toInt(); }

    QString typedText() const { return item("field")->property("text").toString(); }

    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<BoardInput> input;
};

TEST_F(BoardInputTest, Arrows_Space_Return_and_Escape_drive_the_board)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().assign(1, a);
    store().clearTargetSelection();

    press(Qt::Key_Right);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    press(Qt::Key_Space);
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::goal(a), 1));
    press(Qt::Key_Escape);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    press(Qt::Key_Return);
    EXPECT_EQ(store().todoEditorGoalID(), a);
    EXPECT_EQ(store().todoEditorRequestID(), 1);
    press(Qt::Key_Enter);
    EXPECT_EQ(store().todoEditorRequestID(), 2);
}

TEST_F(BoardInputTest, A_field_gets_what_is_typed_and_an_arrow_leaves_it)
{
    const GoalID a = makeGoal();
    store().requestAddTodo(a);
    item("field")->forceActiveFocus();
    press(Qt::Key_A);
    press(Qt::Key_Space);
    press(Qt::Key_B);
    press(Qt::Key_Escape);
    EXPECT_EQ(typedText(), QStringLiteral("a b"));
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));

    press(Qt::Key_Up);
    EXPECT_FALSE(item("field")->hasActiveFocus());
    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unassigned()));
}

TEST_F(BoardInputTest, A_key_that_is_pressed_with_Control_Alt_or_Super_is_somebody_elses)
{
    for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
        press(Qt::Key_Down, modifier);
    EXPECT_EQ(store().boardNavigation(), State::idle());
}

TEST_F(BoardInputTest, Control_with_Z_undoes_and_with_Shift_and_Z_or_with_Y_redoes)
{
    makeGoal();
    makeGoal();
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(store().goals().isEmpty());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(store().goals().size(), 1);
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(store().goals().size(), 2);

    press(Qt::Key_Z);
    press(Qt::Key_Z, Qt::ShiftModifier);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::MetaModifier);
    EXPECT_EQ(store().goals().size(), 2);
}

TEST_F(BoardInputTest, In_a_field_Control_with_Z_takes_back_what_was_typed_there)
{
    makeGoal();
    item("field")->forceActiveFocus();
    press(Qt::Key_A);
    ASSERT_EQ(typedText(), QStringLiteral("a"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(typedText(), QString());
    EXPECT_EQ(store().goals().size(), 1);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(typedText(), QStringLiteral("a"));
}

TEST_F(BoardInputTest, In_a_field_with_nothing_to_take_back_Control_with_Z_undoes_on_the_board)
{
    const GoalID a = makeGoal();
    makeTodo(a);
    item("field")->forceActiveFocus();
    press(Qt::Key_T);
    // As the field for a new todo does, once that is added.
    item("field")->setProperty("text", QString());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(todos(a).size(), 0);
    EXPECT_TRUE(item("field")->hasActiveFocus()) << "another todo can be typed";
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(todos(a).size(), 1);
}

TEST_F(BoardInputTest, Shift_with_an_arrow_selects_text_in_a_field)
{
    item("field")->forceActiveFocus();
    press(Qt::Key_A);
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(item("field")->property("selectedText").toString(), QStringLiteral("a"));
    EXPECT_EQ(store().boardNavigation(), State::idle());
    press(Qt::Key_Left);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
}

TEST_F(BoardInputTest,
       At_a_button_that_Tab_reached_Escape_is_the_boards_and_an_arrow_keeps_the_draft)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().activateTarget(TargetSelection::unassigned(), WindowStore::EnterWindowLayer::yes);
    item("button")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Escape);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unassigned()));
    EXPECT_TRUE(item("button")->hasActiveFocus());

    store().requestAddTodo(a);
    press(Qt::Key_Up);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unassigned()));
    EXPECT_FALSE(item("button")->hasActiveFocus());
    EXPECT_EQ(store().todoEditorGoalID(), a);
}

TEST_F(BoardInputTest,
       At_a_card_that_Tab_reached_Space_is_the_boards_and_Return_and_Menu_are_its_own)
{
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().activateTarget(TargetSelection::unassigned(), WindowStore::EnterWindowLayer::no);
    QSignalSpy menus(input.get(), &BoardInput::menuRequested);
    item("card")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::unassigned(), 1));
    press(Qt::Key_Return);
    press(Qt::Key_Menu);
    EXPECT_EQ(item("card")->property("returns").toInt(), 1);
    EXPECT_EQ(item("card")->property("menus").toInt(), 1);
    EXPECT_EQ(menus.size(), 0);
}

TEST_F(BoardInputTest, What_has_the_focus_without_a_key_leaves_the_keys_to_the_board)
{
    const GoalID a = makeGoal();
    item("card")->forceActiveFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(store().todoEditorGoalID(), a);
    EXPECT_EQ(item("card")->property("returns").toInt(), 0);
    QSignalSpy menus(input.get(), &BoardInput::menuRequested);
    press(Qt::Key_Menu);
    press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(menus.size(), 2);
    press(Qt::Key_F10);
    EXPECT_EQ(menus.size(), 2);
}

TEST_F(BoardInputTest, An_arrow_takes_the_focus_from_a_button_that_was_clicked)
{
    clickAt({50, 120});
    ASSERT_TRUE(item("button")->hasActiveFocus());
    press(Qt::Key_Right);
    EXPECT_FALSE(item("button")->hasActiveFocus());
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
}

TEST_F(BoardInputTest, Space_presses_the_button_that_Tab_reached_and_not_one_that_was_clicked)
{
    makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().activateTarget(TargetSelection::unassigned(), WindowStore::EnterWindowLayer::no);
    item("button")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(window->property("presses").toInt(), 1);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unassigned()));

    item("button")->setFocus(false);
    clickAt({50, 120});
    EXPECT_EQ(window->property("presses").toInt(), 2);
    press(Qt::Key_Space);
    EXPECT_EQ(window->property("presses").toInt(), 2);
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::unassigned(), 1));
}

TEST_F(BoardInputTest, An_open_menu_has_its_keys_to_itself)
{
    QObject* const menu = window->findChild<QObject*>(QStringLiteral("menu"));
    ASSERT_TRUE(QMetaObject::invokeMethod(menu, "open"));
    ASSERT_TRUE(QTest::qWaitFor([menu] { return menu->property("opened").toBool(); }));
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_EQ(store().boardNavigation(), State::idle());
}

TEST_F(BoardInputTest, A_click_outside_a_field_takes_its_focus_and_one_inside_does_not)
{
    item("field")->forceActiveFocus();
    clickAt({50, 30});
    EXPECT_TRUE(item("field")->hasActiveFocus());
    clickAt({300, 200});
    EXPECT_FALSE(item("field")->hasActiveFocus());
}

TEST_F(BoardInputTest, A_field_that_is_left_takes_what_it_stands_in_along)
{
    item("edited")->forceActiveFocus();
    press(Qt::Key_Down);
    EXPECT_FALSE(item("row")->hasActiveFocus());
    item("edited")->forceActiveFocus();
    clickAt({300, 200});
    EXPECT_FALSE(item("row")->hasActiveFocus());
}

TEST_F(BoardInputTest, A_click_changes_nothing_while_no_field_has_the_focus)
{
    item("button")->forceActiveFocus();
    clickAt({300, 200});
    EXPECT_TRUE(item("button")->hasActiveFocus());
}

TEST_F(BoardInputTest, A_minimised_window_consumes_no_key)
{
    window->setWindowStates(Qt::WindowMinimized);
    ASSERT_TRUE(window->isActive() && window->isVisible()) << "nothing else keeps it from the key";
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    EXPECT_FALSE(input->eventFilter(window.get(), &key));
    EXPECT_EQ(store().boardNavigation(), State::idle());
    window->setWindowStates(Qt::WindowNoState);
    EXPECT_TRUE(input->eventFilter(window.get(), &key));
}

TEST_F(BoardInputTest, A_hidden_window_consumes_no_key)
{
    // A window that belongs to it has the keyboard, so that it is active itself.
    QQuickWindow beside;
    beside.setTransientParent(window.get());
    beside.show();
    beside.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&beside));
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    EXPECT_TRUE(input->eventFilter(window.get(), &key));
    store().clearTargetSelection();
    window->hide();
    ASSERT_TRUE(window->isActive()) << "nothing else keeps it from the key";
    EXPECT_FALSE(input->eventFilter(window.get(), &key));
    EXPECT_EQ(store().boardNavigation(), State::idle());
}

TEST_F(BoardInputTest, A_button_that_belongs_to_a_field_is_not_left_with_it)
{
    item("written")->forceActiveFocus();
    clickAt({295, 80});
    EXPECT_FALSE(item("written")->hasActiveFocus());
    EXPECT_EQ(window->property("presses").toInt(), 1);
    EXPECT_EQ(leavings(), 0);
}

TEST_F(BoardInputTest, A_field_gives_up_the_keyboard_when_another_program_gets_it)
{
    item("field")->forceActiveFocus();
    press(Qt::Key_A);
    goElsewhereAndBack();
    EXPECT_FALSE(item("field")->hasActiveFocus());
    press(Qt::Key_B);
    EXPECT_EQ(typedText(), QStringLiteral("a"));
}

TEST_F(BoardInputTest, A_field_that_waits_is_left_by_a_click_beside_it_and_by_a_key_of_the_board)
{
    item("written")->forceActiveFocus();
    goElsewhereAndBack();
    EXPECT_FALSE(item("written")->hasActiveFocus());
    // The letter is nobody's, and Escape has nothing to leave.
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

TEST_F(BoardInputTest, A_click_in_a_field_that_waits_or_on_its_button_does_not_leave_it)
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

TEST_F(BoardInputTest, A_field_that_waits_may_go)
{
    item("field")->forceActiveFocus();
    goElsewhereAndBack();
    delete item("field");
    press(Qt::Key_Right);
    clickAt({300, 200});
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
}

TEST_F(BoardInputTest, A_field_in_a_sheet_keeps_its_keyboard_for_when_its_window_has_it_again)
{
    QObject* const sheet = window->findChild<QObject*>(QStringLiteral("sheet"));
    ASSERT_TRUE(QMetaObject::invokeMethod(sheet, "open"));
    ASSERT_TRUE(QTest::qWaitFor([sheet] { return sheet->property("opened").toBool(); }));
    item("inSheet")->forceActiveFocus();
    goElsewhereAndBack();
    EXPECT_TRUE(item("inSheet")->hasActiveFocus());
}

} // namespace
} // namespace kelpa::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // The window is shown to nobody.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
