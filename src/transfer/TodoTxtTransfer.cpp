#include "transfer/TodoTxtTransfer.h"

#include "model/Text.h"
#include "transfer/ImportBuilder.h"
#include "transfer/TodoTxtLine.h"
#include "transfer/TransferText.h"
#include "transfer/TransferValues.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>
#include <variant>
#include <vector>

namespace kelpa {

namespace {

/// A, B, C and D are the priorities of goals.
constexpr std::array letters{'A', 'B', 'C', 'D'};

char letterOf(GoalPriority priority)
{
    return letters.at(static_cast<std::size_t>(priority));
}

std::optional<GoalPriority> priorityOf(char letter)
{
    const auto found = std::ranges::find(letters, letter);
    if (found == letters.end())
        return std::nullopt;
    return allGoalPriorities.at(static_cast<std::size_t>(found - letters.begin()));
}

/// What reading the line of a todo gives.
TodoTxtLine lineOf(const TodoItem& todo, const Goal* goal, const QTimeZone& zone)
{
    TodoTxtLine line;
    line.title = trimmedText(todo.title);
    line.status = todo.status;
    if (goal != nullptr) {
        line.project = trimmedText(goal->title);
        if (goal->priority != defaultGoalPriority)
            line.priority = letterOf(goal->priority);
    }
    const bool isCompleted = todo.status == TodoStatus::completed;
    if (const auto time =
            isCompleted && todo.completedAt ? dateTimeOf(*todo.completedAt) : std::nullopt)
        line.completedOn = time->toTimeZone(zone).date();
    return line;
}

/// The priority that all lines of a project agree on. Most programs take it off a completed todo.
struct ProjectPriority
{
    std::optional<char> letter;
    bool isKnown = false;
    bool isMixed = false;

    void take(const TodoTxtLine& line)
    {
        if (line.status == TodoStatus::completed && !line.priority)
            return;
        isMixed = isMixed || (isKnown && letter != line.priority);
        letter = line.priority;
        isKnown = true;
    }
    std::optional<GoalPriority> goalPriority() const
    {
        return isMixed || !letter ? std::nullopt : priorityOf(*letter);
    }
};

/// Whether the brief lines of a goal's todos read back as these todos.
bool areClear(const QList<TodoTxtLine>& wanted, const Goal* goal)
{
    QList<TodoTxtLine> lines;
    ProjectPriority priority;
    for (const TodoTxtLine& line : wanted) {
        const auto read = readTodoTxtLine(writtenTodoTxtLine(line, TodoTxtForm::brief));
        if (!read || read->project != line.project || read->status != line.status ||
            read->completedOn != line.completedOn)
            return false;
        priority.take(*read);
        lines.append(*read);
    }
    const std::optional<GoalPriority> common = priority.goalPriority();
    if (goal != nullptr && common.value_or(defaultGoalPriority) != goal->priority)
        return false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if ((common ? lines[i].title : withPriorityInTitle(lines[i])) != wanted[i].title)
            return false;
    }
    return true;
}

/// Writes the todos of a goal, or those without one. Where the title of one looks like something
/// else, all lines say everything, since todos of different priority give the goal none.
void write(QString& text, const QList<TodoItem>& todos, const Goal* goal, const QTimeZone& zone)
{
    QList<TodoTxtLine> lines;
    for (const TodoItem& todo : inOrder(todos))
        lines.append(lineOf(todo, goal, zone));
    const bool isBrief = areClear(lines, goal);
    for (TodoTxtLine& line : lines) {
        if (!isBrief && goal != nullptr)
            line.priority = letterOf(goal->priority);
        text += writtenTodoTxtLine(line, isBrief ? TodoTxtForm::brief : TodoTxtForm::full);
        text += u'\n';
    }
}

} // namespace

QByteArray toTodoTxt(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal,
                     const QTimeZone& zone)
{
    QString text;
    for (const Goal& goal : goals)
        write(text, goal.todos, &goal, zone);
    write(text, todosWithoutGoal, nullptr, zone);
    // A byte order mark with which the first title begins would be read as that of the file.
    if (text.startsWith(QChar::ByteOrderMark))
        text.prepend(QChar::ByteOrderMark);
    return text.toUtf8();
}

ImportResult fromTodoTxt(const QByteArray& bytes, const QTimeZone& zone,
                         const std::stop_token& stop)
{
    const auto text = textOfFile(bytes);
    if (const auto* const refusal = std::get_if<ImportRefusal>(&text))
        return *refusal;
    ImportBuilder builder(stop);
    std::vector<TodoTxtLine> lines;
    QHash<QString, ProjectPriority> priorities;
    LineReader reader(std::get<QString>(text));
    while (const std::optional<QStringView> line = reader.next()) {
        if (line->trimmed().isEmpty())
            continue;
        std::optional<TodoTxtLine> read = readTodoTxtLine(*line);
        if (!read) {
            builder.skip(reader.number(), *line, SkipReason::withoutTitle);
            continue;
        }
        if (std::cmp_greater_equal(lines.size(), mostImportedRecords))
            return ImportRefusal::tooManyRecords;
        priorities[read->project].take(*read);
        lines.push_back(*std::move(read));
    }
    for (const TodoTxtLine& line : lines) {
        if (builder.isDone())
            break;
        std::optional<ImportBuilder::GoalIndex> goal;
        QString title = line.title;
        if (!line.project.isEmpty()) {
            goal = builder.goalOfTitle(line.project);
            const auto priority = priorities.value(line.project).goalPriority();
            builder.setPriority(*goal, priority.value_or(defaultGoalPriority));
            if (!priority)
                title = withPriorityInTitle(line);
        }
        builder.addTodo(goal, title, line.status,
                        line.completedOn ? std::optional(noonOf(*line.completedOn, zone))
                                         : std::nullopt);
    }
    return builder.take();
}

} // namespace kelpa
