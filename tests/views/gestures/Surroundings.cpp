// What happens around a person: windows come and go, other programs change the board, files are
// chosen and read.
#include "views/gestures/GestureSession.h"

namespace kelpa::test {

using namespace std::chrono_literals;

std::string GestureSession::changeDesktop()
{
    const auto id = static_cast<WindowID>(1 + below(20));
    const bool isThere = desktop.onScreen.contains(id);
    std::string name = "window " + std::to_string(id);
    if (!isThere) {
        desktop.addWindow(id, 100 + below(4), QStringLiteral("Window %1").arg(id));
        name += " comes";
    } else if (chance(2)) {
        for (WindowListEntry& entry : *desktop.windowList) {
            if (entry.number == id)
                entry.name = QStringLiteral("%1 - Renamed").arg(below(100));
        }
        name += " gets another title";
    } else {
        desktop.removeWindow(id);
        name += " goes";
    }
    if (chance(3))
        desktop.captureSizes.insert(id, {640, 480});
    desktop.announceWindowChange();
    scheduler.advance(50ms);
    scheduler.runBackgroundWork();
    return name;
}

std::string GestureSession::changeFromOutside()
{
    const QList<Goal> goals = store().goals();
    const std::optional<GoalID> anyGoal =
        goals.isEmpty() ? std::nullopt
                        : std::optional(goals[below(static_cast<int>(goals.size()))].id);
    const QList<TodoItem> list = todos(anyGoal);
    const auto anyTodo = [&] { return list[below(static_cast<int>(list.size()))].id; };
    switch (below(list.isEmpty() ? 6 : 8)) {
    case 0:
        store().createGoal(QStringLiteral("Goal %1").arg(below(1000)));
        return "a program makes a goal";
    case 1:
        if (anyGoal)
            store().deleteGoal(*anyGoal);
        return "a program deletes a goal";
    case 2:
        store().addTodo(QStringLiteral("Todo %1").arg(below(1000)), anyGoal);
        return "a program adds a todo";
    case 3:
        store().assign(static_cast<WindowID>(1 + below(20)), anyGoal);
        return "a program assigns a window";
    case 4:
        store().setHidingGoalsWithoutOpenTodos(chance(2));
        return "goals without todos hide or show";
    case 5:
        store().setLanguage(allAppLanguages.at(static_cast<std::size_t>(below(6))));
        return "the language changes";
    case 6:
        store().deleteTodo(anyTodo(), anyGoal);
        return "a program deletes a todo";
    default:
        store().toggleTodo(anyTodo(), anyGoal);
        return "a program changes a todo's state";
    }
}

std::string GestureSession::answerDialogs()
{
    if (m_dialogs.isShown())
        m_dialogs.answer(chance(3) ? FileAnswer::Outcome::cancelled : FileAnswer::Outcome::chosen,
                         chance(4) ? QStringLiteral("/missing") : QStringLiteral("/list.txt"));
    scheduler.runBackgroundWork();
    scheduler.runBackgroundWork();
    return "a file is chosen and read";
}

} // namespace kelpa::test
