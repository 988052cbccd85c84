// Commands over the store, with the fake desktop.
#include "automation/Commands.h"
#include "automation/Listings.h"
#include "automation/Names.h"
#include "automation/Operations.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kelpa::automation {
namespace {

GoalID goalIDFrom(const char* text)
{
    return *GoalID::fromText(QString::fromLatin1(text));
}
const GoalID firstID = goalIDFrom("AAAA0000-0000-4000-8000-000000000001");
const GoalID secondID = goalIDFrom("AAAA1111-0000-4000-8000-000000000002");
const GoalID thirdID = goalIDFrom("BBBB0000-0000-4000-8000-000000000003");

TEST(CommandNames, Are_identifiers_titles_or_beginnings_of_identifiers)
{
    const QList<GoalRecord> goals{{firstID, QStringLiteral("Taxes")},
                                  {secondID, QStringLiteral("bbbb")},
                                  {thirdID, QStringLiteral("Twice")},
                                  {GoalID::create(), QStringLiteral("Twice")}};
    struct Case
    {
        QString name;
        std::variant<GoalID, FailureKind> found;
    };
    const GoalID elsewhere = GoalID::create();
    for (const Case& each :
         {Case{firstID.text(), firstID}, Case{elsewhere.text().toLower(), elsewhere},
          Case{QStringLiteral(" Taxes "), firstID}, Case{QStringLiteral("aaaa1"), secondID},
          Case{QStringLiteral("bbbb"), secondID}, Case{QStringLiteral("BBBB0"), thirdID},
          Case{QStringLiteral("aaaa"), FailureKind::ambiguousName},
          Case{QStringLiteral("Twice"), FailureKind::ambiguousName},
          Case{QStringLiteral("aaa"), FailureKind::unknownGoal},
          Case{QStringLiteral("taxes"), FailureKind::unknownGoal},
          Case{QString(), FailureKind::unknownGoal}}) {
        const auto found = goalNamed(each.name, goals);
        if (const auto* const failure = std::get_if<Failure>(&found))
            EXPECT_EQ(each.found, (std::variant<GoalID, FailureKind>(failure->kind)))
                << qPrintable(each.name);
        else
            EXPECT_EQ(each.found, (std::variant<GoalID, FailureKind>(std::get<GoalID>(found))))
                << qPrintable(each.name);
    }
    const auto several = goalNamed(QStringLiteral("aaaa"), goals);
    EXPECT_EQ(std::get<Failure>(several).message,
              QStringLiteral("'aaaa' names 2 goals; name one by its identifier:\n"
                             "  AAAA0000-0000-4000-8000-000000000001  Taxes\n"
                             "  AAAA1111-0000-4000-8000-000000000002  bbbb"));
}

TEST(CommandNames, Are_quoted_as_they_were_typed)
{
    const auto messageOf = [](const auto& named) { return std::get<Failure>(named).message; };
    const QString name = QStringLiteral("%1 of %2 %3");
    EXPECT_EQ(messageOf(goalNamed(name, {{firstID, name}, {secondID, name}})),
              QStringLiteral("'%1 of %2 %3' names 2 goals; name one by its identifier:\n"
                             "  AAAA0000-0000-4000-8000-000000000001  %1 of %2 %3\n"
                             "  AAAA1111-0000-4000-8000-000000000002  %1 of %2 %3"));
    EXPECT_EQ(messageOf(desktopNamed(name, {name, name, QString()})),
              QStringLiteral("'%1 of %2 %3' names 2 virtual desktops; name one by its number"));
    EXPECT_EQ(messageOf(desktopNamed(name, {QString(), QString()})),
              QStringLiteral("there is no virtual desktop '%1 of %2 %3'; there are 2"));
}

TEST(CommandListings, Have_a_line_for_each_record)
{
    const QList<GoalRecord> goals{{firstID, QStringLiteral("Taxes"), GoalPriority::p0, 12, 13},
                                  {thirdID, QStringLiteral("Two\nlines"), GoalPriority::p2, 0, 0}};
    EXPECT_EQ(listing(goals), QStringLiteral("AAAA0000  p0    12  Taxes\n"
                                             "BBBB0000  p2     0  Two lines\n"));
    const TodoID todo{secondID.value};
    EXPECT_EQ(listing({TodoRecord{todo, QStringLiteral("a"), TodoStatus::ing, {}, firstID}}, goals),
              QStringLiteral("AAAA1111  [~]  a  (Taxes)\n"));
    EXPECT_EQ(
        listing({WindowRecord{7, QStringLiteral("Letter"), QStringLiteral("Editor"), {}}}, goals),
        QStringLiteral("     7  Editor  Letter\n"));
    EXPECT_EQ(listing(QList<GoalRecord>{}), QString());
}

TEST(CommandListings, Name_records_whole_where_the_beginnings_are_the_same)
{
    const GoalID near = goalIDFrom("AAAA0000-0000-4000-8000-000000000009");
    const QList<GoalRecord> goals{{firstID, QStringLiteral("a")}, {near, QStringLiteral("b")}};
    EXPECT_TRUE(listing(goals).startsWith(firstID.text() + QStringLiteral("  p2")))
        << qPrintable(listing(goals));
}

class CommandRunning : public test::StoreFixture
{
protected:
    std::variant<QString, Failure> run(const QStringList& words)
    {
        const auto read = readCommand(QStringList{QStringLiteral("kelpa")} + words);
        if (!read || !std::holds_alternative<Command>(*read)) {
            ADD_FAILURE() << qPrintable(words.join(u' '));
            return QString();
        }
        return carryOut(
            std::get<Command>(*read),
            [this](const Request& request) {
                return perform(store(), {[this](const QByteArray& token) { shown = token; }},
                               request);
            },
            QStringLiteral("token"));
    }
    QString outputOf(const QStringList& words)
    {
        const auto output = run(words);
        if (const auto* const failure = std::get_if<Failure>(&output)) {
            ADD_FAILURE() << qPrintable(failure->message);
            return {};
        }
        return std::get<QString>(output);
    }
    std::optional<FailureKind> failureOf(const QStringList& words)
    {
        const auto output = run(words);
        const auto* const failure = std::get_if<Failure>(&output);
        return failure != nullptr ? std::optional(failure->kind) : std::nullopt;
    }
    QString messageOf(const QStringList& words)
    {
        const auto output = run(words);
        const auto* const failure = std::get_if<Failure>(&output);
        return failure != nullptr ? failure->message : QString();
    }
    static QStringList line(const char* text) { return QString::fromUtf8(text).split(u' '); }

    QByteArray shown;
};

TEST_F(CommandRunning, An_identifier_needs_no_list)
{
    QList<Request> asked;
    const Ask ask = [&asked](const Request& request) {
        asked.append(request);
        return Outcome(Reply(Nothing()));
    };
    const QString id = firstID.text();
    for (const QStringList& words :
         {line("kelpa done") + QStringList{id}, line("kelpa raise") + QStringList{id}})
        carryOut(std::get<Command>(*readCommand(words)), ask, {});
    EXPECT_EQ(asked, (QList<Request>{SetTodoStatus{TodoID{firstID.value}, TodoStatus::completed},
                                     RaiseWindows{firstID}}));
}

TEST_F(CommandRunning, Todos_go_their_way_by_commands)
{
    outputOf(line("add-goal Taxes"));
    const QString id = outputOf(line("add --goal Taxes Find the receipts")).trimmed();
    const GoalID goalID = store().goals().at(0).id;
    ASSERT_EQ(todos(goalID).size(), 1);
    EXPECT_EQ(id, todos(goalID).at(0).id.text());
    EXPECT_EQ(outputOf(line("start") + QStringList{id}), QString());
    EXPECT_EQ(todos(goalID).at(0).status, TodoStatus::ing);
    outputOf(QStringList{QStringLiteral("done"), QStringLiteral("Find the receipts")});
    EXPECT_EQ(todos(goalID).at(0).status, TodoStatus::completed);
    EXPECT_EQ(outputOf(line("todos")), QString());
    EXPECT_EQ(outputOf(line("todos --all")),
              id.left(8) + QStringLiteral("  [x]  Find the receipts  (Taxes)\n"));
    outputOf(QStringList{QStringLiteral("reopen"), id.left(8).toLower()});
    EXPECT_EQ(todos(goalID).at(0).status, TodoStatus::todo);
    outputOf(QStringList{QStringLiteral("edit"), id, QStringLiteral("Sort"), QStringLiteral("it")});
    EXPECT_EQ(todos(goalID).at(0).title, QStringLiteral("Sort it"));
    outputOf(QStringList{QStringLiteral("move"), id, QStringLiteral("--unsorted")});
    ASSERT_EQ(todos(std::nullopt).size(), 1);
    outputOf(line("add Second"));
    outputOf(QStringList{QStringLiteral("move"), id, QStringLiteral("--behind"),
                         QStringLiteral("Second")});
    EXPECT_EQ(outputOf(line("todos --unsorted")).split(u'\n').at(0).mid(15),
              QStringLiteral("Second"));
    EXPECT_EQ(outputOf(line("todos --goal Taxes")), QString());
    outputOf(line("delete Second"));
    EXPECT_EQ(todos(std::nullopt).size(), 1);
    outputOf(line("undo"));
    EXPECT_EQ(todos(std::nullopt).size(), 2);
    outputOf(line("redo"));
    EXPECT_EQ(todos(std::nullopt).size(), 1);
}

TEST_F(CommandRunning, Goals_and_windows_go_their_way_by_commands)
{
    store().setAutoSortingGoals(false);
    outputOf(line("add-goal One"));
    outputOf(line("add-goal Two"));
    outputOf(line("prioritize Two P0"));
    EXPECT_EQ(store().goals().at(1).priority, GoalPriority::p0);
    outputOf(line("move-goal Two --before One"));
    EXPECT_EQ(goalTitles().at(0), QStringLiteral("Two"));
    outputOf(line("edit-goal Two Another name"));
    EXPECT_EQ(goalTitles().at(0), QStringLiteral("Another name"));
    outputOf(line("show One"));
    EXPECT_EQ(shown, "token");
    desktop.addWindow(7, 100, QStringLiteral("Letter"));
    store().startObserving();
    outputOf(line("assign 7 --goal One"));
    EXPECT_TRUE(outputOf(line("windows --goal One")).endsWith(QStringLiteral("Letter  (One)\n")));
    EXPECT_EQ(outputOf(line("windows --unsorted")), QString());
    outputOf(line("assign 7 --unsorted"));
    EXPECT_EQ(goalOf(7), std::nullopt);
    EXPECT_EQ(failureOf(line("assign seven --unsorted")), FailureKind::unknownWindow);
    outputOf(line("raise One"));
    EXPECT_EQ(failureOf(line("work One")), FailureKind::noWindows);
    EXPECT_EQ(failureOf(line("back")), FailureKind::nothingToGoBackTo);
    outputOf(line("delete-goal One"));
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Another name")});
    EXPECT_EQ(failureOf(line("show One")), FailureKind::unknownGoal);
    EXPECT_EQ(failureOf(line("prioritize Another p9")), FailureKind::unknownGoal);
}

TEST_F(CommandRunning, Unsorted_may_be_named_like_a_goal_where_a_list_is_meant)
{
    outputOf(line("add-goal One"));
    outputOf(line("add Loose"));
    outputOf(line("add --goal One Bound"));
    desktop.addWindow(7, 100, QStringLiteral("Letter"));
    store().startObserving();
    for (const char* name : {"Unsorted", "unsorted", "Unsortiert"}) {
        const QString goal = QStringLiteral(" --goal ") + QLatin1String(name);
        EXPECT_EQ(outputOf((QStringLiteral("todos") + goal).split(u' ')),
                  outputOf(line("todos --unsorted")));
        EXPECT_EQ(outputOf((QStringLiteral("windows") + goal).split(u' ')),
                  outputOf(line("windows --unsorted")));
    }
    EXPECT_TRUE(outputOf(line("todos --unsorted")).contains(u"Loose"));
    EXPECT_TRUE(outputOf(line("windows --unsorted")).contains(u"Letter"));
    outputOf(line("move Bound --goal Unsorted"));
    EXPECT_EQ(todos(std::nullopt).size(), 2);

    // What is done to a goal cannot be done to it.
    EXPECT_EQ(messageOf(line("show Unsorted")),
              QStringLiteral("'Unsorted' is no goal: it has what is in none"));
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("One")});
    // A goal of that name is that goal, by its title as it is written.
    outputOf(line("add-goal unsorted"));
    EXPECT_EQ(outputOf(line("todos --goal unsorted")), QString());
    EXPECT_EQ(outputOf(line("todos --goal Unsorted")), outputOf(line("todos --unsorted")));
    outputOf(line("add-goal Unsorted"));
    EXPECT_EQ(outputOf(line("todos --goal Unsorted")), QString());
    outputOf(line("show Unsorted"));
}

TEST_F(CommandRunning, A_list_named_by_its_identifier_is_not_looked_up)
{
    outputOf(line("add-goal One"));
    QStringList asked;
    const auto run = [&](const QString& goal) {
        const Command command{
            .word = QStringLiteral("add"), .operands = {QStringLiteral("Pay")}, .goal = goal};
        asked.clear();
        const auto ask = [&](const Request& request) -> Outcome {
            if (std::holds_alternative<AddTodo>(request)) {
                asked.append(QStringLiteral("add"));
                return Reply(Added{GoalID::create().value});
            }
            asked.append(QStringLiteral("goals"));
            return Reply(QList<GoalRecord>{{firstID, QStringLiteral("One")}});
        };
        carryOut(command, ask, QString());
    };
    run(firstID.text());
    EXPECT_EQ(asked, QStringList{QStringLiteral("add")});
    run(QStringLiteral("One"));
    EXPECT_EQ(asked, (QStringList{QStringLiteral("goals"), QStringLiteral("add")}));
}

TEST_F(CommandRunning, Only_none_takes_a_pin_off)
{
    desktop.virtualDesktops = {QStringLiteral("Home"), QStringLiteral("Web")};
    store().startObserving();
    outputOf(line("add-goal One"));
    const GoalID goalID = store().goals().at(0).id;
    outputOf(line("pin One Web"));
    EXPECT_EQ(failureOf({QStringLiteral("pin"), QStringLiteral("One"), QString()}),
              FailureKind::unknownDesktop);
    EXPECT_EQ(failureOf({QStringLiteral("pin"), QStringLiteral("One"), QStringLiteral(" ")}),
              FailureKind::unknownDesktop);
    EXPECT_EQ(store().pinOf(goalID), 2);
    outputOf(line("pin One none"));
    EXPECT_EQ(store().pinOf(goalID), std::nullopt);
}

TEST_F(CommandRunning, Programs_read_JSON)
{
    outputOf(line("add-goal Taxes"));
    const QJsonObject added =
        QJsonDocument::fromJson(outputOf(line("add --goal Taxes --json Receipts")).toUtf8())
            .object();
    const GoalID goalID = store().goals().at(0).id;
    const QString id = todos(goalID).at(0).id.text();
    EXPECT_EQ(added, (QJsonObject{{QStringLiteral("id"), id}}));
    const QJsonArray list =
        QJsonDocument::fromJson(outputOf(line("todos --json")).toUtf8()).array();
    EXPECT_EQ(list, (QJsonArray{QJsonObject{{QStringLiteral("id"), id},
                                            {QStringLiteral("title"), QStringLiteral("Receipts")},
                                            {QStringLiteral("status"), QStringLiteral("todo")},
                                            {QStringLiteral("completedAt"), QString()},
                                            {QStringLiteral("goal"), goalID.text()}}}));
    EXPECT_EQ(QJsonDocument::fromJson(outputOf(line("done --json Receipts")).toUtf8()).object(),
              QJsonObject());
}

TEST_F(CommandRunning, A_list_of_a_goal_that_is_not_there_is_no_empty_list)
{
    EXPECT_EQ(failureOf({QStringLiteral("todos"), QStringLiteral("--goal"), firstID.text()}),
              FailureKind::unknownGoal);
}

} // namespace
} // namespace kelpa::automation
