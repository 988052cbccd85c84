// Finds what a command names, and turns it into a request.

#include "automation/Commands.h"
#include "automation/Listings.h"
#include "automation/Names.h"
#include "automation/WireValues.h"
#include "model/Text.h"

#include <algorithm>
#include <utility>

namespace kelpa::automation {

namespace {

/// Ends the command; caught by `carryOut` alone.
struct Stop
{
    Failure failure;
};

class Running
{
public:
    Running(const Command& command, const Ask& ask, const QString& activationToken)
        : m_command(command), m_ask(ask), m_token(activationToken)
    {}

    QString output()
    {
        const QString& word = m_command.word;
        if (word == u"goals")
            return goals();
        if (word == u"todos")
            return todos();
        if (word == u"windows")
            return windows();
        const Reply reply = asked<Reply>(request(word));
        if (m_command.isJson)
            return json(reply);
        const auto* const added = std::get_if<Added>(&reply);
        return added != nullptr ? uuidText(added->id) + u'\n' : QString();
    }

private:
    template <class Value>
    Value asked(const Request& request) const
    {
        Outcome outcome = m_ask(request);
        if (auto* const failure = std::get_if<Failure>(&outcome))
            throw Stop{std::move(*failure)};
        if constexpr (std::is_same_v<Value, Reply>)
            return std::get<Reply>(std::move(outcome));
        else
            return std::get<Value>(std::get<Reply>(std::move(outcome)));
    }

    template <class Value>
    static Value need(std::variant<Value, Failure> value)
    {
        if (auto* const failure = std::get_if<Failure>(&value))
            throw Stop{std::move(*failure)};
        return std::get<Value>(std::move(value));
    }

    template <class Value>
    static Value word(const QString& text)
    {
        Value value{};
        if (auto failure = fromWire(QVariant(text), value))
            throw Stop{*std::move(failure)};
        return value;
    }

    const QList<GoalRecord>& allGoals()
    {
        if (!m_goals)
            m_goals = asked<QList<GoalRecord>>(ListGoals());
        return *m_goals;
    }
    const QList<TodoRecord>& allTodos()
    {
        if (!m_todos)
            m_todos = asked<QList<TodoRecord>>(ListTodos());
        return *m_todos;
    }
    // An identifier needs no list.
    GoalID goalOf(const QString& name)
    {
        const std::optional<GoalID> id = GoalID::fromText(name);
        if (!id && isNameOfUnsorted(name, allGoals()))
            throw Stop{
                {FailureKind::unknownGoal,
                 QStringLiteral("'%1' is no goal: it has what is in none").arg(singleLine(name))}};
        return id ? *id : need(goalNamed(name, allGoals()));
    }
    TodoID todoOf(const QString& name)
    {
        const std::optional<TodoID> id = TodoID::fromText(name);
        return id ? *id : need(todoNamed(name, allTodos()));
    }
    GoalID goal() { return goalOf(m_command.operands.at(0)); }
    TodoID todo() { return todoOf(m_command.operands.at(0)); }
    /// None for "Unsorted", which a person may name like a goal, unless one has that title.
    std::optional<GoalID> list()
    {
        if (!m_command.goal)
            return std::nullopt;
        const QString& name = *m_command.goal;
        if (!GoalID::fromText(name) && isNameOfUnsorted(name, allGoals()))
            return std::nullopt;
        return goalOf(name);
    }
    const QString& placeName() const
    {
        return m_command.before ? *m_command.before : *m_command.behind;
    }
    MovePlace place() const { return m_command.before ? MovePlace::before : MovePlace::behind; }

    /// Those that the options leave.
    template <class Record>
    QList<Record> chosen(QList<Record> records)
    {
        const bool isListChosen = m_command.goal.has_value() || m_command.isUnsorted;
        const std::optional<GoalID> goal = list();
        // An identifier that no goal has would list nothing, as if the goal were empty.
        if (goal && std::ranges::find(allGoals(), *goal, &GoalRecord::id) == allGoals().end())
            throw Stop{{FailureKind::unknownGoal,
                        QStringLiteral("there is no goal %1").arg(goal->text())}};
        records.removeIf([&](const Record& record) { return isListChosen && record.goal != goal; });
        return records;
    }

    QString goals() { return m_command.isJson ? json(allGoals()) : listing(allGoals()); }
    QString todos()
    {
        QList<TodoRecord> found = chosen(allTodos());
        found.removeIf([this](const TodoRecord& each) {
            return !m_command.isAll && each.status == TodoStatus::completed;
        });
        return m_command.isJson ? json(found) : listing(found, allGoals());
    }
    QString windows()
    {
        const auto found = chosen(asked<QList<WindowRecord>>(ListWindows()));
        return m_command.isJson ? json(found) : listing(found, allGoals());
    }

    Request request(const QString& word)
    {
        const QStringList& operands = m_command.operands;
        if (word == u"add")
            return AddTodo{operands.at(0), list()};
        if (word == u"start")
            return SetTodoStatus{todo(), TodoStatus::ing};
        if (word == u"done")
            return SetTodoStatus{todo(), TodoStatus::completed};
        if (word == u"reopen")
            return SetTodoStatus{todo(), TodoStatus::todo};
        if (word == u"edit")
            return RenameTodo{todo(), operands.at(1)};
        if (word == u"move")
            return move();
        if (word == u"delete")
            return DeleteTodo{todo()};
        if (word == u"assign")
            return AssignWindow{window(operands.at(0)), list()};
        if (word == u"back")
            return GoBack();
        if (word == u"undo")
            return Undo();
        if (word == u"redo")
            return Redo();
        return requestOfGoal(word);
    }

    Request requestOfGoal(const QString& word)
    {
        const QStringList& operands = m_command.operands;
        if (word == u"add-goal")
            return AddGoal{operands.at(0)};
        if (word == u"edit-goal")
            return RenameGoal{goal(), operands.at(1)};
        if (word == u"prioritize")
            return SetGoalPriority{goal(), this->word<GoalPriority>(operands.at(1))};
        if (word == u"move-goal")
            return MoveGoal{goal(), goalOf(placeName()), place()};
        if (word == u"delete-goal")
            return DeleteGoal{goal()};
        if (word == u"pin")
            return PinGoal{goal(), desktop(operands.at(1))};
        if (word == u"raise")
            return RaiseWindows{goal()};
        if (word == u"work")
            return WorkOnGoal{goal()};
        return ShowGoal{goal(), m_token};
    }

    Request move()
    {
        if (m_command.before || m_command.behind)
            return PlaceTodo{todo(), todoOf(placeName()), place()};
        return MoveTodo{todo(), list()};
    }

    /// Empty for none, as the request has it.
    static QString desktop(const QString& name)
    {
        if (name.isEmpty())
            throw Stop{{FailureKind::unknownDesktop,
                        QStringLiteral("an empty name names no virtual desktop; 'none' takes the "
                                       "pin off")}};
        return name == u"none" ? QString() : name;
    }

    static WindowID window(const QString& number)
    {
        bool isNumber = false;
        const WindowID id = number.toUInt(&isNumber);
        if (!isNumber)
            throw Stop{{FailureKind::unknownWindow,
                        QStringLiteral("'%1' is no number of a window; 'kelpa windows' lists them")
                            .arg(number)}};
        return id;
    }

    const Command& m_command;
    const Ask& m_ask;
    const QString& m_token;
    std::optional<QList<GoalRecord>> m_goals;
    std::optional<QList<TodoRecord>> m_todos;
};

} // namespace

std::variant<QString, Failure> carryOut(const Command& command, const Ask& ask,
                                        const QString& activationToken)
{
    try {
        return Running(command, ask, activationToken).output();
    } catch (Stop& stop) {
        return std::move(stop.failure);
    }
}

} // namespace kelpa::automation
