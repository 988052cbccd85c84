// The keys of a todo's row.
#include "views/todos/TodoRowKeys.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

TEST(TodoRowKeys, Each_key_has_its_action)
{
    using Action = TodoRowKeys::Action;
    struct Case
    {
        int key;
        Qt::KeyboardModifiers modifiers;
        Action pressed;
        Action repeated;
    };
    const Case cases[] = {
        {Qt::Key_Return, Qt::NoModifier, Action::Edit, Action::Ignore},
        {Qt::Key_Enter, Qt::KeypadModifier, Action::Edit, Action::Ignore},
        {Qt::Key_F2, Qt::NoModifier, Action::Edit, Action::Edit},
        {Qt::Key_Menu, Qt::NoModifier, Action::OpenMenu, Action::OpenMenu},
        {Qt::Key_F10, Qt::ShiftModifier, Action::OpenMenu, Action::OpenMenu},
        {Qt::Key_F10, Qt::NoModifier, Action::PassOn, Action::PassOn},
        {Qt::Key_Delete, Qt::NoModifier, Action::Delete, Action::Ignore},
        {Qt::Key_Delete, Qt::ControlModifier, Action::PassOn, Action::PassOn},
        {Qt::Key_Delete, Qt::ShiftModifier, Action::PassOn, Action::PassOn},
        {Qt::Key_Up, Qt::AltModifier, Action::MoveUp, Action::MoveUp},
        {Qt::Key_Down, Qt::AltModifier, Action::MoveDown, Action::MoveDown},
        {Qt::Key_Up, Qt::NoModifier, Action::PassOn, Action::PassOn},
        {Qt::Key_Down, Qt::ControlModifier, Action::PassOn, Action::PassOn},
        {Qt::Key_Left, Qt::AltModifier, Action::PassOn, Action::PassOn},
        {Qt::Key_Space, Qt::NoModifier, Action::PassOn, Action::PassOn},
    };
    for (const Case& each : cases) {
        const int modifiers = static_cast<int>(each.modifiers.toInt());
        EXPECT_EQ(TodoRowKeys::action(each.key, modifiers, false), each.pressed) << each.key;
        EXPECT_EQ(TodoRowKeys::action(each.key, modifiers, true), each.repeated) << each.key;
    }
}

} // namespace
} // namespace kelpa::test
