// What each command takes. For the sources beside it.
#pragma once

#include <QStringView>

#include <array>
#include <cstdint>

namespace kelpa::automation {

/// Which options a command has, as a sum.
enum Options : std::uint8_t {
    noOptions = 0,
    goalOption = 1,
    unsortedOption = 2,
    placeOptions = 4,
    allOption = 8,
};

struct CommandRow
{
    const char16_t* word;
    /// As the help names them.
    const char16_t* operands;
    int operandCount;
    /// The last operand may be of several words.
    bool isLastOpen;
    unsigned options;
    const char16_t* summary;
};

inline constexpr std::array commandTable{
    CommandRow{u"goals", u"", 0, false, noOptions,
               u"List the goals: identifier, priority, open todos, title."},
    CommandRow{u"todos", u"", 0, false, goalOption | unsortedOption | allOption,
               u"List the open todos in the order of the board."},
    CommandRow{u"windows", u"", 0, false, goalOption | unsortedOption,
               u"List the windows of other programs. Needs a running Kelpa."},
    CommandRow{u"add", u"TITLE", 1, true, goalOption, u"Add a todo and print its identifier."},
    CommandRow{u"start", u"TODO", 1, false, noOptions, u"Mark a todo as in progress."},
    CommandRow{u"done", u"TODO", 1, false, noOptions, u"Mark a todo as completed."},
    CommandRow{u"reopen", u"TODO", 1, false, noOptions, u"Mark a todo as not begun."},
    CommandRow{u"edit", u"TODO TITLE", 2, true, noOptions, u"Change the title of a todo."},
    CommandRow{u"move", u"TODO", 1, false, goalOption | unsortedOption | placeOptions,
               u"Move a todo to another goal, or before or behind another todo."},
    CommandRow{u"delete", u"TODO", 1, false, noOptions, u"Delete a todo."},
    CommandRow{u"add-goal", u"TITLE", 1, true, noOptions, u"Add a goal and print its identifier."},
    CommandRow{u"edit-goal", u"GOAL TITLE", 2, true, noOptions, u"Change the title of a goal."},
    CommandRow{u"prioritize", u"GOAL PRIORITY", 2, false, noOptions,
               u"Give a goal the priority p0, p1, p2 or p3."},
    CommandRow{u"move-goal", u"GOAL", 1, false, placeOptions,
               u"Move a goal before or behind another one."},
    CommandRow{u"delete-goal", u"GOAL", 1, false, noOptions, u"Delete a goal with its todos."},
    CommandRow{u"assign", u"WINDOW", 1, false, goalOption | unsortedOption,
               u"Put a window into a goal. Needs a running Kelpa."},
    CommandRow{u"pin", u"GOAL DESKTOP", 2, true, noOptions,
               u"Pin a goal to a desktop (needs a running Kelpa), or to 'none'."},
    CommandRow{u"show", u"GOAL", 1, false, noOptions,
               u"Bring Kelpa forward with a goal selected. Needs a running Kelpa."},
    CommandRow{u"raise", u"GOAL", 1, false, noOptions,
               u"Bring the windows of a goal forward. Needs a running Kelpa."},
    CommandRow{u"work", u"GOAL", 1, false, noOptions,
               u"Raise a goal's windows, minimise others. Needs a running Kelpa."},
    CommandRow{u"back", u"", 0, false, noOptions,
               u"Restore what 'work' has changed. Needs a running Kelpa."},
    CommandRow{u"undo", u"", 0, false, noOptions,
               u"Take the last step back. Needs a running Kelpa."},
    CommandRow{u"redo", u"", 0, false, noOptions,
               u"Repeat the step that was taken back. Needs a running Kelpa."},
};

} // namespace kelpa::automation
