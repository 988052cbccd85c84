#include "shell/BoardInputFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

using State = BoardNavigationState;

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

TEST_F(BoardInputTest, Space_and_Return_that_are_held_act_once_and_arrows_go_on)
{
    const GoalID a = makeGoal();
    desktop.addAccessibleWindow(1, 100, {});
    store().refresh();
    store().assign(1, a);
    store().activateTarget(TargetSelection::goal(a), EnterWindowLayer::no);
    desktop.calls.clear();

    press(Qt::Key_Space);
    hold(Qt::Key_Space);
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::goal(a), 1));
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(desktop.calls.filter(QStringLiteral("raise")).isEmpty());
    EXPECT_TRUE(desktop.calls.filter(QStringLiteral("activate")).isEmpty());
    press(Qt::Key_Escape);
    press(Qt::Key_Return);
    hold(Qt::Key_Return);
    EXPECT_EQ(store().todoEditorRequestID(), 1);
    press(Qt::Key_Up);
    hold(Qt::Key_Up);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::unifiedTodos()));
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

TEST_F(BoardInputTest, A_character_on_the_board_reaches_the_field_that_takes_the_focus_for_it)
{
    QObject::connect(input.get(), &BoardInput::searchStarted, item("field"),
                     [this] { item("field")->forceActiveFocus(); });
    QSignalSpy starts(input.get(), &BoardInput::searchStarted);
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_F5);
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    EXPECT_EQ(starts.size(), 0);
    item("field")->setFocus(false);
    QTest::keyClick(window.get(), 'b');
    QTest::keyClick(window.get(), ' ');
    QTest::keyClick(window.get(), '1');
    EXPECT_EQ(typedText(), QStringLiteral("b 1"));
    EXPECT_EQ(starts.size(), 1);
}

TEST_F(BoardInputTest, A_letter_with_an_accent_begins_a_search_like_any_other)
{
    QObject::connect(input.get(), &BoardInput::searchStarted, item("field"),
                     [this] { item("field")->forceActiveFocus(); });
    const auto begin = [this](Qt::Key accent) {
        item("field")->setProperty("text", QString());
        item("field")->setFocus(false);
        // The test library knows no key for an accent.
        QKeyEvent pressed(QEvent::KeyPress, accent, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &pressed);
        EXPECT_TRUE(item("field")->hasActiveFocus());
    };
    begin(Qt::Key_Dead_Acute);
    press(Qt::Key_Shift);
    QTest::keyClick(window.get(), 'e');
    QTest::keyClick(window.get(), 't');
    EXPECT_EQ(typedText(), QStringLiteral("ét"));
    // An accent that goes with no letter loses none.
    begin(Qt::Key_Dead_Diaeresis);
    QTest::keyClick(window.get(), 'q');
    QTest::keyClick(window.get(), 'u');
    EXPECT_EQ(typedText(), QStringLiteral("qu"));
    // What somebody else has written meanwhile is no part of it.
    begin(Qt::Key_Dead_Acute);
    item("field")->setProperty("text", QStringLiteral("n"));
    QTest::keyClick(window.get(), 'e');
    EXPECT_FALSE(typedText().contains(u'é')) << typedText().toStdString();
}

TEST_F(BoardInputTest, Escape_ends_a_search_once_it_leads_back_to_nothing_else)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, QStringLiteral("paper"));
    store().refresh();
    store().assign(1, a);
    store().selectWindow(1);
    store().setSearchText(QStringLiteral("paper"));
    press(Qt::Key_Escape);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    EXPECT_EQ(store().searchText(), QStringLiteral("paper"));
    item("field")->forceActiveFocus();
    press(Qt::Key_Escape);
    EXPECT_EQ(store().searchText(), QStringLiteral("paper")) << "the key was the field's";
    item("field")->setFocus(false);
    press(Qt::Key_Escape);
    EXPECT_EQ(store().searchText(), QString());
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
}

TEST_F(BoardInputTest, A_key_that_is_pressed_with_Control_Alt_or_Super_does_not_belong_to_the_board)
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

TEST_F(BoardInputTest, In_a_field_Control_with_Z_undoes_typing)
{
    makeGoal();
    item("field")->forceActiveFocus();
    press(Qt::Key_A);
    ASSERT_EQ(typedText(), QStringLiteral("a"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(typedText(), QString());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(store().goals().size(), 1) << "the key was held a moment too long";
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(typedText(), QStringLiteral("a"));
}

TEST_F(BoardInputTest, In_a_field_with_nothing_to_undo_Control_with_Z_undoes_on_the_board)
{
    const GoalID a = makeGoal();
    makeTodo(a);
    item("field")->forceActiveFocus();
    press(Qt::Key_T);
    // As the field for a new todo does once the todo is added.
    item("field")->setProperty("text", QString());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(todos(a).size(), 0);
    EXPECT_TRUE(item("field")->hasActiveFocus()) << "another todo can be typed";
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(todos(a).size(), 1);
}

TEST_F(BoardInputTest, An_arrow_that_leaves_a_field_is_reported_to_its_owner)
{
    QSignalSpy exits(input.get(), &BoardInput::editorLeft);
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().requestAddTodo(a);
    std::optional<GoalID> open;
    QObject::connect(input.get(), &BoardInput::editorLeft, input.get(),
                     [&] { open = store().todoEditorGoalID(); });
    item("field")->forceActiveFocus();
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(exits.size(), 0);
    press(Qt::Key_Left);
    EXPECT_EQ(exits.size(), 1);
    EXPECT_EQ(open, a) << "what is written in it can still be taken";
    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    press(Qt::Key_Left);
    EXPECT_EQ(exits.size(), 1) << "the field is left already";
}

TEST_F(BoardInputTest, An_arrow_during_a_composition_stays_in_the_field)
{
    item("field")->forceActiveFocus();
    QInputMethodEvent composing(QStringLiteral("にほん"), {});
    QGuiApplication::sendEvent(item("field"), &composing);
    press(Qt::Key_Down);
    EXPECT_TRUE(item("field")->hasActiveFocus());
    EXPECT_EQ(store().boardNavigation(), State::idle());
    QInputMethodEvent chosen(QString(), {});
    chosen.setCommitString(QStringLiteral("日本"));
    QGuiApplication::sendEvent(item("field"), &chosen);
    press(Qt::Key_Down);
    EXPECT_FALSE(item("field")->hasActiveFocus());
    EXPECT_EQ(typedText(), QStringLiteral("日本"));
}

TEST_F(BoardInputTest, Where_nothing_is_left_of_a_composition_an_arrow_leaves_the_field)
{
    item("field")->forceActiveFocus();
    QInputMethodEvent composing(QStringLiteral("にほん"), {});
    QGuiApplication::sendEvent(item("field"), &composing);
    // Some input methods still report the cursor position.
    QInputMethodEvent givenUp(QString(),
                              {QInputMethodEvent::Attribute(QInputMethodEvent::Cursor, 0, 1)});
    QGuiApplication::sendEvent(item("field"), &givenUp);
    press(Qt::Key_Down);
    EXPECT_FALSE(item("field")->hasActiveFocus());
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
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::yes);
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
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::no);
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
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::no);
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
    // A transient window has the keyboard, so that this one is active too.
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

} // namespace
} // namespace kelpa::test
