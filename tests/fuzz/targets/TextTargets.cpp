// Texts that a person brings from another program: by a drag, by pasting, in a window's title.
#include "fuzz/FuzzTarget.h"
#include "model/Text.h"
#include "model/TodoLines.h"
#include "views/models/ColumnID.h"
#include "views/models/DragPayload.h"
#include "windows/memory/TitleIdentity.h"

namespace kelpa::fuzz {

void decodeDragText(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    const DragPayload payload = dragPayloadFromText(text);
    if (const auto* const window = std::get_if<WindowID>(&payload))
        require(dragPayloadFromText(dragText(*window)) == payload, "a window is dragged as itself");
    if (const auto* const goal = std::get_if<GoalID>(&payload))
        require(dragPayloadFromText(dragText(*goal)) == payload, "a goal is dragged as itself");
    if (const auto* const todo = std::get_if<TodoDragPayload>(&payload))
        require(dragPayloadFromText(todo->encodedValue()) == payload,
                "a todo is dragged as itself");
    todoListFromText(text);
    if (const auto column = columnFromText(text))
        require(columnFromText(columnText(column->goalID)) == column, "a column names itself");
}

void decodePastedText(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    for (const TodoLine& line : todosInLines(text)) {
        require(!line.title.isEmpty(), "no todo of a pasted text is without a title");
        require(trimmedText(line.title) == line.title, "titles of pasted todos are trimmed");
    }
    require(pastedTodoCount({}, text) != 1, "a single line is offered as no list");
}

void decodeTitle(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    const QString shown = singleLine(text);
    require(shown.size() <= longestShownText + 1, "a text that is shown has a bounded length");
    require(!shown.contains(u'\n') && !shown.contains(u'\0'), "a text is shown on a single line");
    require(beginning(text, 10).size() <= 10, "the beginning of a text is as short as asked for");
    require(visibleText(text).size() <= longestTitle, "a remembered title has a bounded length");
    const TitleIdentity identity =
        titleIdentity(text, QStringLiteral("org.test.Editor"), QStringLiteral("Editor"));
    require(!contradict(identity, identity), "no title contradicts itself");
}

} // namespace kelpa::fuzz
