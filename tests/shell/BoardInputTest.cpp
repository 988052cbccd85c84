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

/// A window with a field, a button and a place that takes nothing.
const QByteArray scene =
    "import QtQuick\n"
    "import QtQuick.Controls.Basic\n"
    "ApplicationWindow { width: 400; height: 300; visible: true\n"
    "  property int presses: 0\n"
    "  TextField { objectName: 'field'; x: 10; y: 10; width: 200; height: 40 }\n"
    "  Button { objectName: 'button'; x: 10; y: 100; width: 100; height: 40\n"
    "    onClicked: ++parent.Window.window.presses }\n"
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
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(store().goals().size(), 1) << "also when there is nothing left to take back";
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

TEST_F(BoardInputTest, A_click_changes_nothing_while_no_field_has_the_focus)
{
    item("button")->forceActiveFocus();
    clickAt({300, 200});
    EXPECT_TRUE(item("button")->hasActiveFocus());
}

TEST_F(BoardInputTest, A_hidden_window_consumes_no_key)
{
    window->hide();
    press(Qt::Key_Down);
    EXPECT_EQ(store().boardNavigation(), State::idle());
}

TEST_F(BoardInputTest, A_field_gives_up_the_keyboard_when_another_application_gets_it)
{
    item("field")->forceActiveFocus();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(item("field")->hasActiveFocus());
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
