#include "transfer/CalendarTransfer.h"

#include "model/Text.h"
#include "transfer/CalendarFile.h"
#include "transfer/CalendarTodo.h"
#include "transfer/ImportBuilder.h"
#include "transfer/TransferText.h"
#include "transfer/TransferValues.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <utility>
#include <variant>
#include <vector>

namespace kelpa {

namespace {

/// What the format's 1 … 9 mean for a goal, and back.
constexpr std::array writtenPriorities{1, 3, 5, 9};
constexpr int mediumPriority = 5;

GoalPriority goalPriority(int priority)
{
    if (priority == 1)
        return GoalPriority::p0;
    if (priority == 0 || priority == mediumPriority)
        return GoalPriority::p2;
    return priority < mediumPriority ? GoalPriority::p1 : GoalPriority::p3;
}

struct ReadTodo
{
    CalendarTodo todo;
    QList<ConditionalLine> conditional;
};

constexpr std::size_t none = std::size_t(-1);

/// The todos of a file, and which of them are goals.
class Relations
{
public:
    explicit Relations(const std::vector<ReadTodo>& todos) : m_todos(todos)
    {
        for (std::size_t i = 0; i < todos.size(); ++i) {
            if (!todos[i].todo.uid.isEmpty() && !m_byUid.contains(todos[i].todo.uid))
                m_byUid.insert(todos[i].todo.uid, i);
        }
        m_tops.assign(todos.size(), none);
        m_hasParts.assign(todos.size(), false);
        for (std::size_t i = 0; i < todos.size(); ++i) {
            if (const std::size_t top = topOf(i); top != i && top != none)
                m_hasParts[top] = true;
        }
    }

    bool isGoal(std::size_t i) const
    {
        return m_todos[i].todo.isGoal || (m_tops[i] == i && m_hasParts[i]);
    }
    /// The todo that is no part of any other, of which this one is a part; none in a circle.
    std::size_t top(std::size_t i) const { return m_tops[i]; }

private:
    std::size_t parentOf(std::size_t i) const
    {
        const CalendarTodo& todo = m_todos[i].todo;
        if (todo.parent.isEmpty() || todo.isGoal)
            return none;
        const auto parent = m_byUid.constFind(todo.parent);
        return parent == m_byUid.constEnd() || *parent == i ? none : *parent;
    }

    /// Walks each way once, however long the chains are.
    std::size_t topOf(std::size_t start)
    {
        std::vector<std::size_t> way;
        QSet<std::size_t> onWay;
        std::size_t i = start;
        std::size_t top = none;
        while (true) {
            if (m_isKnown.contains(i)) {
                top = m_tops[i];
                break;
            }
            if (onWay.contains(i))
                break;
            way.push_back(i);
            onWay.insert(i);
            const std::size_t parent = parentOf(i);
            if (parent == none) {
                top = i;
                break;
            }
            i = parent;
        }
        for (const std::size_t each : way) {
            m_tops[each] = top;
            m_isKnown.insert(each);
        }
        return m_tops[start];
    }

    const std::vector<ReadTodo>& m_todos;
    QHash<QString, std::size_t> m_byUid;
    std::vector<std::size_t> m_tops;
    std::vector<bool> m_hasParts;
    QSet<std::size_t> m_isKnown;
};

/// Turns the todos of a file into goals and their todos.
class Board
{
public:
    Board(const std::vector<ReadTodo>& todos, QString name, ImportBuilder& builder)
        : m_todos(todos), m_relations(todos), m_name(std::move(name)), m_builder(builder)
    {}

    void build()
    {
        for (std::size_t i = 0; i < m_todos.size() && !m_builder.isDone(); ++i) {
            const CalendarTodo& todo = m_todos[i].todo;
            if (!m_relations.isGoal(i))
                continue;
            m_goals.insert(i, m_builder.addGoal(todo.title, goalPriority(todo.priority)));
            // A goal is done when its todos are.
            if (todo.status != TodoStatus::todo)
                skip(i, ConditionalLine::Kind::state);
            if (!todo.categories.isEmpty())
                skip(i, ConditionalLine::Kind::categories);
        }
        for (std::size_t i = 0; i < m_todos.size() && !m_builder.isDone(); ++i) {
            if (!m_relations.isGoal(i))
                add(i);
        }
        for (const auto& [goal, priorities] : m_priorities.asKeyValueRange()) {
            if (priorities.values.size() == 1) {
                m_builder.setPriority(goal, *priorities.values.cbegin());
                continue;
            }
            for (const std::size_t i : priorities.todos)
                skipPriority(i);
        }
    }

private:
    /// Tells what the todo has and the board has no place for.
    void skip(std::size_t i, ConditionalLine::Kind kind)
    {
        for (const ConditionalLine& each : m_todos[i].conditional) {
            if (each.kind == kind)
                m_builder.skip(each.line, each.text, SkipReason::withoutPlace);
        }
    }
    /// Tells the categories of a todo that its goal is not named by.
    void skipCategoriesBeside(const QString& goalTitle, std::size_t i)
    {
        const auto hasOther = [&goalTitle](const QList<QString>& categories) {
            return std::ranges::any_of(categories, [&goalTitle](const QString& category) {
                return trimmedText(category) != goalTitle;
            });
        };
        if (!hasOther(m_todos[i].todo.categories))
            return;
        for (const ConditionalLine& each : m_todos[i].conditional) {
            if (each.kind != ConditionalLine::Kind::categories)
                continue;
            const auto read = readCalendarTodo(each.text.toUtf8(), QTimeZone::utc());
            if (!read || hasOther(read->categories))
                m_builder.skip(each.line, each.text, SkipReason::withoutPlace);
        }
    }
    void skipPriority(std::size_t i)
    {
        if (m_todos[i].todo.priority != 0)
            skip(i, ConditionalLine::Kind::priority);
    }
    void add(std::size_t i)
    {
        const CalendarTodo& todo = m_todos[i].todo;
        std::optional<ImportBuilder::GoalIndex> goal;
        if (const auto top = m_goals.constFind(m_relations.top(i)); top != m_goals.constEnd()) {
            goal = *top;
            skipPriority(i);
            const CalendarTodo& whole = m_todos[m_relations.top(i)].todo;
            // Kelpa itself writes the goal's title there, which the library may divide at a comma.
            if (!whole.isGoal)
                skipCategoriesBeside(trimmedText(whole.title), i);
        } else {
            const QString title =
                trimmedText(todo.categories.isEmpty() ? m_name : todo.categories.constFirst());
            if (title.isEmpty()) {
                skipPriority(i);
            } else {
                goal = m_builder.goalOfTitle(title);
                Priorities& priorities = m_priorities[*goal];
                priorities.values.insert(goalPriority(todo.priority));
                priorities.todos.push_back(i);
            }
            skipCategoriesBeside(title, i);
        }
        m_builder.addTodo(goal, todo.title, todo.status, todo.completedAt);
    }

    const std::vector<ReadTodo>& m_todos;
    Relations m_relations;
    QString m_name;
    ImportBuilder& m_builder;
    /// By the todo that is a goal.
    QHash<std::size_t, ImportBuilder::GoalIndex> m_goals;
    struct Priorities
    {
        QSet<GoalPriority> values;
        std::vector<std::size_t> todos;
    };
    /// Of the todos of goals that are categories. A goal has that on which they agree.
    QHash<ImportBuilder::GoalIndex, Priorities> m_priorities;
};

CalendarTodo calendarTodo(const TodoItem& todo, const Goal* goal)
{
    CalendarTodo written;
    written.uid = todo.id.text();
    written.title = trimmedText(todo.title);
    written.status = todo.status;
    written.completedAt = todo.completedAt;
    if (goal != nullptr) {
        // For programs that know nothing of parts.
        written.categories.append(trimmedText(goal->title));
        written.parent = goal->id.text();
    }
    return written;
}

} // namespace

QByteArray toCalendar(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal, Date now)
{
    struct Entry
    {
        const TodoItem* todo;
        const Goal* goal;
    };
    std::vector<Entry> entries;
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Kelpa//Kelpa//EN\r\n";
    for (const Goal& goal : goals) {
        CalendarTodo written;
        written.uid = goal.id.text();
        written.title = trimmedText(goal.title);
        written.isGoal = true;
        written.priority = writtenPriorities.at(static_cast<std::size_t>(goal.priority));
        text += writtenCalendarTodo(written, now);
        for (const TodoItem& todo : goal.todos)
            entries.push_back({&todo, &goal});
    }
    for (const TodoItem& todo : todosWithoutGoal)
        entries.push_back({&todo, nullptr});
    std::ranges::stable_sort(entries, {}, [](const Entry& entry) { return entry.todo->order; });
    for (const Entry& entry : entries)
        text += writtenCalendarTodo(calendarTodo(*entry.todo, entry.goal), now);
    return text + "END:VCALENDAR\r\n";
}

ImportResult fromCalendar(const QByteArray& bytes, const QTimeZone& zone,
                          const std::stop_token& stop)
{
    // What is too large is refused before it is copied.
    const auto text =
        textOfFile(bytes.size() > largestImport ? bytes : foldedBetweenCharacters(bytes));
    if (const auto* const refusal = std::get_if<ImportRefusal>(&text))
        return *refusal;
    ImportBuilder builder(stop);
    std::vector<ReadTodo> todos;
    CalendarFile file(std::get<QString>(text));
    while (std::optional<CalendarPiece> piece = file.next()) {
        if (stop.stop_requested() || std::cmp_greater(todos.size(), mostImportedRecords))
            return ImportRefusal::tooManyRecords;
        if (piece->skipped) {
            builder.skip(piece->line, piece->text, *piece->skipped);
            continue;
        }
        std::optional<CalendarTodo> todo = readCalendarTodo(piece->contentLines, zone);
        if (!todo)
            builder.skip(piece->line, piece->text, SkipReason::damaged);
        else if (trimmedText(todo->title).isEmpty())
            builder.skip(piece->line, piece->text, SkipReason::withoutTitle);
        else
            todos.push_back({*std::move(todo), std::move(piece->conditional)});
    }
    if (const std::optional<ImportRefusal> refusal = file.refusal())
        return *refusal;
    Board(todos, file.name(), builder).build();
    return builder.take();
}

} // namespace kelpa
