#include "transfer/JsonTransfer.h"

#include "model/BoardJson.h"
#include "model/BoardJsonReading.h"
#include "transfer/TransferText.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace kelpa {

namespace {

constexpr std::string_view formatName = "kelpa-board";
constexpr std::int64_t formatVersion = 1;

/// A document of this format nests six levels: board, goals, goal, todos, todo, value.
constexpr int deepestJson = 64;
/// More values than records of the format can have, so that parsing needs a bounded memory.
constexpr qsizetype mostValues = 8 * mostImportedRecords;

/// Whether a document is small enough to be parsed, by its brackets and commas.
std::optional<ImportRefusal> boundsTrouble(QByteArrayView json)
{
    int depth = 0;
    qsizetype values = 0;
    bool isInString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (isInString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                isInString = false;
            continue;
        }
        if (c == '"')
            isInString = true;
        else if (c == '[' || c == '{')
            ++depth;
        else if (c == ']' || c == '}')
            --depth;
        if (!isInString && (c == '[' || c == '{' || c == ','))
            ++values;
        if (depth > deepestJson)
            return ImportRefusal::notThisFormat;
        if (values > mostValues)
            return ImportRefusal::tooManyRecords;
    }
    return depth > 0 || isInString ? std::optional(ImportRefusal::cutOff) : std::nullopt;
}

qsizetype recordCount(const ImportedBoard& board)
{
    qsizetype count = board.goals.size() + board.todosWithoutGoal.size();
    for (const Goal& goal : board.goals)
        count += goal.todos.size();
    return count;
}

bool hasOnlyTimes(const QList<TodoItem>& todos)
{
    return std::ranges::all_of(todos, [](const TodoItem& todo) {
        return !todo.completedAt || std::isfinite(todo.completedAt->secondsSinceReferenceDate);
    });
}

bool hasOnlyTimes(const ImportedBoard& board)
{
    return hasOnlyTimes(board.todosWithoutGoal) &&
           std::ranges::all_of(board.goals,
                               [](const Goal& goal) { return hasOnlyTimes(goal.todos); });
}

/// Gives every goal and todo a new identity that an earlier one has already, as after somebody
/// copied a record in an editor.
void makeDistinct(ImportedBoard& board)
{
    QSet<GoalID> goalIDs;
    QSet<TodoID> todoIDs;
    todoIDs.reserve(recordCount(board));
    const auto renew = [&todoIDs](QList<TodoItem>& todos) {
        for (TodoItem& todo : todos) {
            if (todoIDs.contains(todo.id))
                todo.id = TodoID::create();
            todoIDs.insert(todo.id);
        }
    };
    for (Goal& goal : board.goals) {
        if (goalIDs.contains(goal.id))
            goal.id = GoalID::create();
        goalIDs.insert(goal.id);
        renew(goal.todos);
    }
    renew(board.todosWithoutGoal);
}

} // namespace

std::optional<QByteArray> toJson(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal)
{
    const std::optional<QByteArray> goalsJson = encodeGoals(goals);
    const std::optional<QByteArray> todosJson = encodeTodos(todosWithoutGoal);
    if (!goalsJson || !todosJson)
        return std::nullopt;
    return "{\"format\":\"kelpa-board\",\"version\":1,\n\"goals\":" + *goalsJson +
           ",\n\"todos\":" + *todosJson + "}\n";
}

ImportResult fromJson(const QByteArray& bytes)
{
    const auto text = textOfFile(bytes);
    if (const auto* const refusal = std::get_if<ImportRefusal>(&text))
        return *refusal;
    const QByteArray json = std::get<QString>(text).toUtf8();
    if (!QByteArrayView(json).trimmed().startsWith('{'))
        return ImportRefusal::notThisFormat;
    if (const auto trouble = boundsTrouble(json))
        return *trouble;
    const JsonDocument document(json);
    const Json* const root = document.root();
    if (root == nullptr)
        return json.contains('"' + QByteArray(formatName.data()) + '"')
                   ? ImportRefusal::damaged
                   : ImportRefusal::notThisFormat;
    if (!root->IsObject())
        return ImportRefusal::notThisFormat;
    const Json* const version = member(*root, "version");
    const std::optional<std::int64_t> number =
        version != nullptr ? toInteger(*version) : std::nullopt;
    if (toText(member(*root, "format")) != QLatin1String(formatName.data()) || !number)
        return ImportRefusal::notThisFormat;
    if (*number > formatVersion)
        return ImportRefusal::newerVersion;

    const Json* const goals = member(*root, "goals");
    const Json* const todos = member(*root, "todos");
    auto readGoals = goals != nullptr ? toGoals(*goals) : QList<Goal>();
    auto readTodos = todos != nullptr ? toTodos(*todos) : QList<TodoItem>();
    if (!readGoals || !readTodos)
        return ImportRefusal::damaged;
    ImportedBoard board;
    board.goals = *std::move(readGoals);
    board.todosWithoutGoal = *std::move(readTodos);
    board.hasAllFields = true;
    if (recordCount(board) == 0)
        return ImportRefusal::nothingToImport;
    if (recordCount(board) > mostImportedRecords)
        return ImportRefusal::tooManyRecords;
    if (!hasOnlyTimes(board))
        return ImportRefusal::damaged;
    makeDistinct(board);
    return board;
}

} // namespace kelpa
