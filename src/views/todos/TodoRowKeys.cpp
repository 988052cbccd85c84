#include "views/todos/TodoRowKeys.h"

namespace kelpa {

TodoRowKeys::Action TodoRowKeys::action(int key, int modifiers, bool isAutoRepeat)
{
    const bool isShift = (modifiers & Qt::ShiftModifier) != 0;
    const bool isAlt = (modifiers & Qt::AltModifier) != 0;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A held Return has just ended an edit.
        return isAutoRepeat ? Action::Ignore : Action::Edit;
    case Qt::Key_F2:
        return Action::Edit;
    case Qt::Key_Menu:
        return Action::OpenMenu;
    case Qt::Key_F10:
        return isShift ? Action::OpenMenu : Action::PassOn;
    case Qt::Key_Delete:
        if (modifiers != Qt::NoModifier)
            return Action::PassOn;
        // A held Delete would delete the todos that follow, too.
        return isAutoRepeat ? Action::Ignore : Action::Delete;
    case Qt::Key_Up:
        return isAlt ? Action::MoveUp : Action::PassOn;
    case Qt::Key_Down:
        return isAlt ? Action::MoveDown : Action::PassOn;
    default:
        return Action::PassOn;
    }
}

} // namespace kelpa
