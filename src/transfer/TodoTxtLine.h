// One line of a todo.txt file.
#pragma once

#include "model/TodoItem.h"

#include <QDate>
#include <QString>
#include <QStringView>

#include <optional>

namespace kelpa {

struct TodoTxtLine
{
    /// With everything that has no other place: dates of creation, @contexts, further +projects.
    QString title;
    /// The title of the goal that the last +project names; empty where there is none.
    QString project{};
    TodoStatus status = TodoStatus::todo;
    /// "A" … "Z"; absent where there is none. Without a project it is part of the title.
    std::optional<char> priority{};
    /// When it was completed.
    std::optional<QDate> completedOn{};

    friend bool operator==(const TodoTxtLine&, const TodoTxtLine&) = default;
};

/// Reads a line. Absent where nothing is left for the title.
std::optional<TodoTxtLine> readTodoTxtLine(QStringView line);

/// How much a line says that its reader would take for granted.
enum class TodoTxtForm : std::uint8_t {
    /// What is needed for most titles.
    brief,
    /// Everything, so that no part of the title is taken for anything else. A priority has to be
    /// given.
    full,
};

/// The line without its end; line breaks in the title become spaces.
QString writtenTodoTxtLine(const TodoTxtLine& line, TodoTxtForm form);

/// The title with a priority that no goal can take, as it was in the line.
QString withPriorityInTitle(const TodoTxtLine& line);

} // namespace kelpa
