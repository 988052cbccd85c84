// org.kelpa.Kelpa1 on a message bus of its own: every method and its command side by side, and what
// callers send that is wrong.
#include "app/AutomationCommands.h"
#include "app/AutomationService.h"
#include "app/BusClient.h"
#include "app/SingleInstance.h"
#include "automation/Methods.h"
#include "platform/qt/QtScheduler.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/MemorySettingsStore.h"
#include "support/Seed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <future>
#include <random>

using namespace std::chrono_literals;

namespace kelpa::test {
namespace {

using namespace automation;

/// A running Kelpa without views.
struct RunningBoard
{
    RunningBoard(const QString& boardPath, const MemorySettingsStore& stored)
        : path(boardPath), settings(stored)
    {
        EXPECT_TRUE(single.claim());
        desktop.virtualDesktops = {QStringLiteral("Home"), QStringLiteral("Mail")};
        desktop.addWindow(7, 100, QStringLiteral("Letter"));
        desktop.addWindow(8, 101, QStringLiteral("In the way"));
        store.startObserving();
    }

    const QString path;
    FakeDesktop desktop;
    MemorySettingsStore settings;
    QtScheduler scheduler;
    WindowStore store{desktop.platform(), settings, scheduler};
    SingleInstance single{path, scheduler};
    int forwardCount = 0;
    AutomationService service{single.automation(), store, scheduler,
                              Surroundings{[this](const QByteArray&) { ++forwardCount; }}};
};

QDBusMessage messageTo(const RunningBoard& board, const QString& method,
                       const QVariantList& arguments, const QString& interface = interfaceName)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(busNameOfBoard(board.path), objectPath, interface, method);
    message.setArguments(arguments);
    return message;
}

/// The command, in a process of its own as far as the bus knows.
CommandOutput run(const RunningBoard& board, const QStringList& words)
{
    auto running = std::async(std::launch::async, [&] {
        const auto read = readCommand(
            QStringList{QStringLiteral("kelpa"), QStringLiteral("--settings"), board.path} + words);
        return runAutomation(*read, QStringLiteral("token"));
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return running.wait_for(0s) == std::future_status::ready; },
                                busLimit));
    return running.get();
}

class AutomationBus : public testing::Test
{
protected:
    void SetUp() override
    {
        WindowStore store(desktop.platform(), stored, scheduler);
        store.setAutoSortingGoals(false);
        for (const char* const title : {"One", "Two"})
            store.createGoal(QString::fromLatin1(title));
        one = store.goals().at(0).id;
        two = store.goals().at(1).id;
        store.addTodo(QStringLiteral("a"), one);
        store.addTodo(QStringLiteral("b"), two);
        store.addTodo(QStringLiteral("c"), std::nullopt);
        a = store.goals().at(0).todos.at(0).id;
        b = store.goals().at(1).todos.at(0).id;
        store.finishSaving();
    }

    QTemporaryDir folder;
    QtScheduler scheduler;
    FakeDesktop desktop;
    MemorySettingsStore stored;
    GoalID one;
    GoalID two;
    TodoID a;
    TodoID b;
};

/// What is new has another identifier on each board.
BoardContents withoutNewIDs(BoardContents board, const QSet<QUuid>& known, const Date& now)
{
    const auto plain = [&](QList<TodoItem>& todos) {
        for (TodoItem& todo : todos) {
            if (!known.contains(todo.id.value))
                todo.id = {};
            if (todo.completedAt)
                todo.completedAt = now;
        }
    };
    for (Goal& goal : board.goals) {
        if (!known.contains(goal.id.value))
            goal.id = {};
        plain(goal.todos);
    }
    plain(board.unassignedTodos);
    return board;
}

QSet<QUuid> idsOn(const BoardContents& board)
{
    QSet<QUuid> ids;
    for (const Goal& goal : board.goals) {
        ids.insert(goal.id.value);
        for (const TodoItem& todo : goal.todos)
            ids.insert(todo.id.value);
    }
    for (const TodoItem& todo : board.unassignedTodos)
        ids.insert(todo.id.value);
    return ids;
}

/// The position of the goal that is selected; -1 without one.
qsizetype selectedGoal(const WindowStore& store)
{
    const std::optional<GoalID> goalID = store.boardNavigation().target.goalID();
    return goalID ? indexOf(store.goals(), *goalID) : -1;
}

struct Pair
{
    Request request;
    QStringList command;
};

TEST_F(AutomationBus, Every_method_and_its_command_do_the_same_to_equal_boards)
{
    RunningBoard byMethod(folder.filePath(QStringLiteral("method.sqlite")), stored);
    RunningBoard byCommand(folder.filePath(QStringLiteral("command.sqlite")), stored);
    const auto words = [](const char* text) { return QString::fromLatin1(text).split(u' '); };
    const QList<Pair> pairs{
        {ListGoals(), words("goals")},
        {ListTodos(), words("todos --all")},
        {ListWindows(), words("windows")},
        {AddGoal{QStringLiteral("Three")}, words("add-goal Three")},
        {RenameGoal{one, QStringLiteral("Eins")}, words("edit-goal One Eins")},
        {SetGoalPriority{two, GoalPriority::p0}, words("prioritize Two p0")},
        {MoveGoal{two, one, MovePlace::before}, words("move-goal Two --before Eins")},
        {AddTodo{QStringLiteral("d"), one}, words("add --goal Eins d")},
        {RenameTodo{a, QStringLiteral("A")},
         {QStringLiteral("edit"), a.text(), QStringLiteral("A")}},
        {SetTodoStatus{a, TodoStatus::ing}, words("start A")},
        {SetTodoStatus{a, TodoStatus::completed}, words("done A")},
        {SetTodoStatus{a, TodoStatus::todo}, words("reopen A")},
        {MoveTodo{b, std::nullopt}, words("move b --unsorted")},
        {MoveTodo{b, one}, words("move b --goal Eins")},
        {PlaceTodo{a, b, MovePlace::behind}, words("move A --behind b")},
        {AssignWindow{7, one}, words("assign 7 --goal Eins")},
        {DeleteTodo{b}, words("delete b")},
        {PinGoal{one, QStringLiteral("Mail")}, words("pin Eins 2")},
        {PinGoal{one, QString()}, words("pin Eins none")},
        {ShowGoal{one, QStringLiteral("token")}, words("show Eins")},
        {RaiseWindows{one}, words("raise Eins")},
        {WorkOnGoal{one}, words("work Eins")},
        {GoBack(), words("back")},
        {DeleteGoal{two}, words("delete-goal Two")},
        {Undo(), words("undo")},
        {Redo(), words("redo")},
    };
    QSet<QString> covered;
    for (const Pair& pair : pairs) {
        const QString name = methodName(pair.request);
        covered.insert(name);
        const QSet<QUuid> known = idsOn(byMethod.store.boardContents());
        const QSet<QUuid> alsoKnown = idsOn(byCommand.store.boardContents());
        const QDBusMessage answer = reply(messageTo(byMethod, name, argumentsOf(pair.request)));
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage)
            << qPrintable(name) << qPrintable(answer.errorMessage());
        const CommandOutput output = run(byCommand, pair.command);
        EXPECT_EQ(output.exitStatus, 0) << qPrintable(name) << qPrintable(output.error);
        QSet<QUuid> kept = known;
        kept.intersect(alsoKnown);
        EXPECT_EQ(withoutNewIDs(byMethod.store.boardContents(), kept, {}),
                  withoutNewIDs(byCommand.store.boardContents(), kept, {}))
            << qPrintable(name);
        EXPECT_EQ(selectedGoal(byMethod.store), selectedGoal(byCommand.store)) << qPrintable(name);
        EXPECT_EQ(byMethod.forwardCount, byCommand.forwardCount) << qPrintable(name);
    }
    EXPECT_EQ(covered.size(), methods().size());
    EXPECT_EQ(byMethod.forwardCount, 1);
    EXPECT_EQ(byMethod.store.goals().size(), 2);
}

TEST_F(AutomationBus, Lists_are_the_same_for_both_and_whole)
{
    const RunningBoard board(folder.filePath(QStringLiteral("one.sqlite")), stored);
    const QDBusMessage answer = reply(messageTo(board, QStringLiteral("ListTodos"), {}));
    ASSERT_EQ(answer.signature(), QStringLiteral("aa{sv}"));
    const auto maps = qdbus_cast<QList<QVariantMap>>(answer.arguments().at(0));
    const auto read = replyFrom(ReplyKind::todos, {QVariant::fromValue(maps)});
    ASSERT_TRUE(read);
    EXPECT_THAT(std::get<QList<TodoRecord>>(*read), testing::SizeIs(3));
    EXPECT_EQ(run(board, {QStringLiteral("todos")}).text,
              QStringLiteral("%1  [ ]  a  (One)\n%2  [ ]  b  (Two)\n%3  [ ]  c\n")
                  .arg(a.text().left(8), b.text().left(8),
                       board.store.unassignedTodos().at(0).id.text().left(8)));
    const CommandOutput unknown = run(board, {QStringLiteral("done"), QStringLiteral("nothing")});
    EXPECT_EQ(unknown.error, QStringLiteral("kelpa: there is no todo 'nothing'\n"));
    EXPECT_EQ(unknown.exitStatus, 1);
}

/// A value that no method has, or of a size that nobody types.
QVariant strangeValue(std::mt19937_64& random)
{
    switch (random() % 12) {
    case 0:
        return QString(1 << 20, u'x');
    case 1:
        return QVariant(QStringList{QStringLiteral("a"), QString()});
    case 2:
        return QVariant(QByteArray(1000, '\xFF'));
    case 3:
        return QVariant::fromValue(QDBusVariant(QVariant(3.5)));
    case 4:
        return QVariant::fromValue(QDBusObjectPath(QStringLiteral("/org/kelpa")));
    case 5:
        return QVariant(QVariantMap{{QStringLiteral("key"), 1}});
    case 6:
        return QVariant(std::numeric_limits<qlonglong>::min());
    case 7:
        return QVariant(static_cast<uint>(random()));
    case 8:
        return QVariant(random() % 2 == 0);
    case 9:
        return GoalID::create().text();
    case 10:
        return QString(QChar(0xD800)) + QStringLiteral("\u202E\n");
    default:
        return QString();
    }
}

TEST_F(AutomationBus, Whatever_callers_send_has_an_answer_and_leaves_the_board_whole)
{
    const RunningBoard board(folder.filePath(QStringLiteral("one.sqlite")), stored);
    const BoardContents before = board.store.boardContents();
    const std::uint64_t seeded = seed();
    SCOPED_TRACE(seedText(seeded));
    std::mt19937_64 random(seeded);
    for (const Method& method : methods()) {
        if (method.parameters.isEmpty() || method.name == u"AddGoal")
            continue;
        for (int i = 0; i < 40; ++i) {
            QVariantList arguments;
            for (auto count = random() % 4; count > 0; --count)
                arguments.append(strangeValue(random));
            const QDBusMessage answer = reply(messageTo(board, method.name, arguments));
            // Only a todo of "Unsorted" needs nothing that is there.
            if (method.name == u"AddTodo" && answer.type() == QDBusMessage::ReplyMessage)
                continue;
            ASSERT_EQ(answer.type(), QDBusMessage::ErrorMessage) << qPrintable(method.name);
            EXPECT_TRUE(failureKindFrom(answer.errorName())) << qPrintable(answer.errorName());
            EXPECT_LT(answer.errorMessage().size(), 300);
        }
    }
    EXPECT_EQ(board.store.goals(), before.goals);
    for (const TodoItem& todo : board.store.unassignedTodos())
        EXPECT_LE(todo.title.size(), longestTitle);
    const QDBusMessage tooMany =
        reply(messageTo(board, QStringLiteral("Undo"), {QStringLiteral("all")}));
    EXPECT_EQ(tooMany.errorName(), errorName(FailureKind::invalidArguments));
}

TEST_F(AutomationBus, The_version_can_be_read_and_nothing_else)
{
    const RunningBoard board(folder.filePath(QStringLiteral("one.sqlite")), stored);
    const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    const QString version = QStringLiteral("Version");
    const auto ask = [&](const char* method, const QVariantList& arguments) {
        return reply(messageTo(board, QLatin1String(method), arguments, properties));
    };
    EXPECT_EQ(
        ask("Get", {interfaceName, version}).arguments().value(0).value<QDBusVariant>().variant(),
        QVariant(3U));
    EXPECT_EQ(qdbus_cast<QVariantMap>(ask("GetAll", {interfaceName}).arguments().value(0)),
              (QVariantMap{{version, 3U}}));
    for (const QDBusMessage& refused :
         {ask("Get", {interfaceName, QStringLiteral("Titles")}),
          ask("Get", {QStringLiteral("org.example"), version}), ask("Get", {interfaceName}),
          ask("Set", {interfaceName, version, QVariant::fromValue(QDBusVariant(4U))}),
          reply(messageTo(board, QStringLiteral("Nothing"), {})),
          reply(messageTo(board, QStringLiteral("ListGoals"), {}, QStringLiteral("org.example")))})
        EXPECT_EQ(refused.type(), QDBusMessage::ErrorMessage);
    const QDBusMessage xml =
        reply(messageTo(board, QStringLiteral("Introspect"), {},
                        QStringLiteral("org.freedesktop.DBus.Introspectable")));
    EXPECT_TRUE(xml.arguments().value(0).toString().contains(introspection()));
}

class Listener : public QObject
{
    Q_OBJECT

public:
    QList<QStringList> parts;

public Q_SLOTS:
    void note(const QStringList& changed) { parts.append(changed); }
};

TEST_F(AutomationBus, Changes_are_announced_once_for_many)
{
    RunningBoard board(folder.filePath(QStringLiteral("one.sqlite")), stored);
    Listener listener;
    ASSERT_TRUE(client().connect(busNameOfBoard(board.path), objectPath, interfaceName,
                                 changedSignal, &listener, SLOT(note(QStringList))));
    // What the start changed is announced with a change that follows it.
    ASSERT_TRUE(QTest::qWaitFor([&] { return !board.store.windows().isEmpty(); }, busLimit));
    board.store.renameGoal(two, QStringLiteral("Zwei"));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return !listener.parts.isEmpty() &&
                   listener.parts.constLast().contains(QStringLiteral("goals"));
        },
        busLimit));
    listener.parts.clear();
    for (int i = 0; i < 50; ++i)
        board.store.addTodo(QStringLiteral("x"), std::nullopt);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !listener.parts.isEmpty(); }, busLimit));
    EXPECT_EQ(listener.parts, QList<QStringList>{{QStringLiteral("todos")}});
    board.store.assign(7, one);
    ASSERT_TRUE(QTest::qWaitFor([&] { return listener.parts.size() > 1; }, busLimit));
    EXPECT_EQ(listener.parts.at(1), QStringList{QStringLiteral("windows")});
    // Forgets the names of the virtual desktops too, and reads them again.
    board.store.stopObserving();
    ASSERT_TRUE(QTest::qWaitFor([&] { return listener.parts.size() > 2; }, busLimit));
    EXPECT_EQ(listener.parts.at(2), QStringList{QStringLiteral("windows")});
    board.store.startObserving();
    ASSERT_TRUE(QTest::qWaitFor([&] { return listener.parts.size() > 3; }, busLimit));
    EXPECT_EQ(listener.parts.at(3), QStringList{QStringLiteral("windows")});
    board.store.pinGoal(one, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return listener.parts.size() > 4; }, busLimit));
    EXPECT_EQ(listener.parts.at(4), QStringList{QStringLiteral("goals")});
}

} // namespace
} // namespace kelpa::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

#include "AutomationBusTest.moc"
