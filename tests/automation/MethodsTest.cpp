// The requests as methods of the bus.
#include "automation/Methods.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QXmlStreamReader>

namespace kelpa::automation {
namespace {

const GoalID goalID = GoalID::create();
const TodoID todoID = TodoID::create();
const TodoID otherID = TodoID::create();

std::optional<FailureKind> failureOf(const QString& method, const QVariantList& arguments)
{
    const auto read = requestFrom(method, arguments);
    const auto* const failure = std::get_if<Failure>(&read);
    return failure != nullptr ? std::optional(failure->kind) : std::nullopt;
}

TEST(AutomationMethods, Every_request_is_read_as_it_was_written)
{
    const QString title = QStringLiteral("Title");
    const QList<Request> requests{ListGoals(),
                                  ListTodos(),
                                  ListWindows(),
                                  AddGoal{title},
                                  RenameGoal{goalID, title},
                                  SetGoalPriority{goalID, GoalPriority::p0},
                                  MoveGoal{goalID, GoalID::create(), MovePlace::behind},
                                  DeleteGoal{goalID},
                                  AddTodo{title, goalID},
                                  AddTodo{title, std::nullopt},
                                  RenameTodo{todoID, title},
                                  SetTodoStatus{todoID, TodoStatus::ing},
                                  MoveTodo{todoID, goalID},
                                  PlaceTodo{todoID, otherID, MovePlace::behind},
                                  DeleteTodo{todoID},
                                  AssignWindow{4'000'000'000U, std::nullopt},
                                  PinGoal{goalID, title},
                                  ShowGoal{goalID, title},
                                  RaiseWindows{goalID},
                                  WorkOnGoal{goalID},
                                  GoBack(),
                                  Undo(),
                                  Redo()};
    QSet<QString> names;
    for (const Request& request : requests) {
        names.insert(methodName(request));
        const auto read = requestFrom(methodName(request), argumentsOf(request));
        ASSERT_TRUE(std::holds_alternative<Request>(read)) << qPrintable(methodName(request));
        EXPECT_EQ(std::get<Request>(read), request) << qPrintable(methodName(request));
    }
    EXPECT_EQ(names.size(), methods().size());
}

TEST(AutomationMethods, Wrong_arguments_of_every_method_are_refused)
{
    const QVariantList values{QStringLiteral("a"), 1U,         2,        true, 1.5, QStringList(),
                              QVariantMap(),       QVariant(), qint64(3)};
    for (const Method& method : methods()) {
        QVariantList right;
        for (const Parameter& parameter : method.parameters)
            right.append(parameter.type == u"u"   ? QVariant(1U)
                         : parameter.type == u"b" ? QVariant(true)
                                                  : QVariant(goalID.text()));
        EXPECT_EQ(failureOf(method.name, right + QVariantList{1U}), FailureKind::invalidArguments);
        for (qsizetype i = 0; i < right.size(); ++i) {
            EXPECT_EQ(failureOf(method.name, right.mid(i + 1)), FailureKind::invalidArguments);
            for (const QVariant& value : values) {
                if (value.userType() == right.at(i).userType())
                    continue;
                QVariantList wrong = right;
                wrong[i] = value;
                EXPECT_EQ(failureOf(method.name, wrong), FailureKind::invalidArguments)
                    << qPrintable(method.name) << i << value.typeName();
            }
        }
    }
}

struct WordCase
{
    const char* method;
    QVariantList arguments;
    std::optional<FailureKind> failure;
};

TEST(AutomationMethods, Texts_that_name_nothing_say_what_is_wrong)
{
    const QString goal = goalID.text();
    const QString todo = todoID.text();
    const QList<WordCase> cases{
        {"RenameGoal", {QStringLiteral("Taxes"), QString()}, FailureKind::unknownGoal},
        {"RenameGoal", {QString(), QString()}, FailureKind::unknownGoal},
        {"RenameGoal", {u'{' + goal + u'}', QString()}, FailureKind::unknownGoal},
        {"RenameGoal", {goal.toLower(), QString()}, std::nullopt},
        {"DeleteTodo", {QStringLiteral("x")}, FailureKind::unknownTodo},
        {"AddTodo", {QString(), QStringLiteral("x")}, FailureKind::unknownGoal},
        {"SetGoalPriority", {goal, QStringLiteral("P1")}, std::nullopt},
        {"SetGoalPriority", {goal, QStringLiteral("p4")}, FailureKind::invalidArguments},
        {"SetTodoStatus", {todo, QStringLiteral("done")}, FailureKind::invalidArguments},
        {"Nothing", {}, FailureKind::unknownMethod},
        {"listGoals", {}, FailureKind::unknownMethod},
    };
    for (const WordCase& each : cases)
        EXPECT_EQ(failureOf(QLatin1String(each.method), each.arguments), each.failure)
            << each.method;
}

TEST(AutomationMethods, Replies_are_read_as_they_were_written)
{
    const QList<std::pair<ReplyKind, Reply>> replies{
        {ReplyKind::nothing, Nothing()},
        {ReplyKind::identifier, Added{goalID.value}},
        {ReplyKind::goals,
         QList<GoalRecord>{{goalID, QStringLiteral("Taxes"), GoalPriority::p1, 2, 3}}},
        {ReplyKind::todos,
         QList<TodoRecord>{
             {todoID, QStringLiteral("a"), TodoStatus::ing, {}, goalID},
             {otherID, QStringLiteral("b"), TodoStatus::completed, QStringLiteral("2001"), {}}}},
        {ReplyKind::windows,
         QList<WindowRecord>{{7, QStringLiteral("w"), QStringLiteral("App"), goalID, true}}}};
    for (const auto& [kind, reply] : replies) {
        EXPECT_EQ(replyFrom(kind, toWire(reply)), reply);
        for (const auto& [other, otherReply] : replies) {
            if (other != kind) {
                EXPECT_EQ(replyFrom(other, toWire(reply)), std::nullopt);
            }
        }
    }
}

TEST(AutomationMethods, A_goal_of_an_earlier_version_is_pinned_to_none)
{
    const QString key = QStringLiteral("desktop");
    const QList<GoalRecord> pinned{{goalID, QStringLiteral("Taxes"), GoalPriority::p1, 2, 3, 4}};
    auto maps = toWire(Reply(pinned)).constFirst().value<QList<QVariantMap>>();
    const auto read = [&maps] { return replyFrom(ReplyKind::goals, {QVariant::fromValue(maps)}); };
    EXPECT_EQ(read(), Reply(pinned));
    maps[0][key] = QStringLiteral("4");
    EXPECT_EQ(read(), std::nullopt);
    maps[0].remove(key);
    QList<GoalRecord> unpinned = pinned;
    unpinned[0].desktop = 0;
    EXPECT_EQ(read(), Reply(unpinned));
    maps[0].remove(QStringLiteral("todos"));
    EXPECT_EQ(read(), std::nullopt);
}

TEST(AutomationMethods, A_reply_has_a_limit)
{
    QList<TodoRecord> todos;
    TodoRecord todo;
    todo.title = QString(50'000, u'a');
    for (int i = 0; i < 100; ++i)
        todos.append(todo);
    EXPECT_FALSE(isTooLarge(todos));
    for (int i = 0; i < 20; ++i)
        todos.append(todo);
    EXPECT_TRUE(isTooLarge(todos));
}

TEST(AutomationMethods, Errors_have_names_of_their_own)
{
    EXPECT_EQ(errorName(FailureKind::unknownGoal),
              QStringLiteral("org.kelpa.Kelpa1.Error.UnknownGoal"));
    for (int i = 0; i <= static_cast<int>(FailureKind::unexpectedReply); ++i) {
        const auto kind = static_cast<FailureKind>(i);
        EXPECT_EQ(failureKindFrom(errorName(kind)), kind);
    }
    EXPECT_EQ(failureKindFrom(QStringLiteral("org.freedesktop.DBus.Error.Failed")), std::nullopt);
}

/// Elements with their attributes, without what people read.
QStringList elementsOf(const QString& xml)
{
    QXmlStreamReader reader(xml);
    QStringList elements;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        QString element = reader.name().toString();
        for (const QXmlStreamAttribute& attribute : reader.attributes())
            element += QStringLiteral(" %1=%2").arg(attribute.name(), attribute.value());
        elements.append(element);
    }
    EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
    return elements;
}

TEST(AutomationMethods, The_interface_that_is_shipped_is_the_one_that_is_served)
{
    QFile file(QStringLiteral(KELPA_INTERFACE));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList shipped = elementsOf(QString::fromUtf8(file.readAll()));
    ASSERT_EQ(shipped.takeFirst(), QStringLiteral("node"));
    EXPECT_EQ(shipped, elementsOf(introspection()));
}

} // namespace
} // namespace kelpa::automation
