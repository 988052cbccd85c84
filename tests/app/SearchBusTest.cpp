// The searches of GNOME Shell and Plasma on a message bus of its own: what they ask, and what
// callers send that is wrong.
#include "app/SearchInterfaces.h"
#include "app/SearchService.h"
#include "app/SingleInstance.h"
#include "automation/Methods.h"
#include "platform/freedesktop/bus/RunnerTypes.h"
#include "platform/qt/QtScheduler.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/MemorySettingsStore.h"
#include "support/Seed.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

#include <random>
#include <vector>

namespace kelpa::test {
namespace {

using automation::errorName;
using automation::FailureKind;
using automation::textOf;

constexpr int searchLimit = 20'000;

QProcessEnvironment offscreen()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

class SearchBus : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(single.claim());
        desktop.addWindow(7, 100, QStringLiteral("Tax portal"));
        store.startObserving();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !store.windows().isEmpty(); }, searchLimit));
        store.createGoal(QStringLiteral("Taxes"));
        goal = store.goals().at(0).id;
        store.addTodo(QStringLiteral("Tax form"), goal);
        store.addTodo(QStringLiteral("Call about tax"), std::nullopt);
        todo = store.goals().at(0).todos.at(0).id;
        unassigned = store.unassignedTodos().at(0).id;
        store.activateTarget(TargetSelection::unassigned(), EnterWindowLayer::no);
    }

    QDBusMessage ask(const BusObject::Description& object, const char* method,
                     const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            busNameOfBoard(path), object.path, object.interface, QLatin1String(method));
        message.setArguments(arguments);
        const QDBusPendingCall call =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("search"))
                .asyncCall(message, searchLimit);
        EXPECT_TRUE(QTest::qWaitFor([&call] { return call.isFinished(); }, searchLimit));
        return call.reply();
    }
    QDBusMessage askProvider(const char* method, const QVariantList& arguments)
    {
        return ask(searchProviderDescription(), method, arguments);
    }
    QDBusMessage askRunner(const char* method, const QVariantList& arguments)
    {
        return ask(searchRunnerDescription(), method, arguments);
    }

    const QStringList tax{QStringLiteral("tax")};
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("one.sqlite"));
    FakeDesktop desktop;
    MemorySettingsStore settings;
    QtScheduler scheduler;
    WindowStore store{desktop.platform(), settings, scheduler};
    SingleInstance single{path, scheduler};
    std::vector<ActivationContext> forward;
    SearchService service{single.searchProvider(), single.searchRunner(), store, scheduler,
                          [this](const ActivationContext& context) { forward.push_back(context); }};
    GoalID goal;
    TodoID todo;
    TodoID unassigned;
};

TEST_F(SearchBus, The_Shell_finds_and_describes)
{
    store.setLanguage(AppLanguage::english);
    const QStringList all{textOf(goal), textOf(todo), textOf(unassigned),
                          QStringLiteral("window:7")};
    EXPECT_EQ(askProvider("GetInitialResultSet", {tax}).arguments(), QVariantList{all});
    const QStringList longer{QStringLiteral("tax"), QStringLiteral("form")};
    EXPECT_EQ(askProvider("GetSubsearchResultSet", {all, longer}).arguments(),
              QVariantList{QStringList{textOf(todo)}});
    const QStringList gone{textOf(TodoID::create()), QStringLiteral("goal:nothing")};
    const QDBusMessage answer = askProvider("GetResultMetas", {gone + all});
    EXPECT_EQ(answer.signature(), QStringLiteral("aa{sv}"));
    const auto metas = qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0));
    // The Shell takes fewer descriptions than results for an error.
    ASSERT_EQ(metas.size(), 6);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(metas.at(i),
                  (QVariantMap{{QStringLiteral("id"), gone.at(i)},
                               {QStringLiteral("name"), QStringLiteral("…")},
                               {QStringLiteral("gicon"), QStringLiteral("org.kelpa.Kelpa")}}));
    }
    EXPECT_EQ(metas.at(2).value(QStringLiteral("name")), QStringLiteral("Taxes"));
    EXPECT_EQ(metas.at(2).value(QStringLiteral("description")),
              QStringLiteral("1 unfinished todo"));
    EXPECT_EQ(metas.at(3),
              (QVariantMap{{QStringLiteral("id"), textOf(todo)},
                           {QStringLiteral("name"), QStringLiteral("Tax form")},
                           {QStringLiteral("description"), QStringLiteral("Taxes")},
                           {QStringLiteral("gicon"),
                            QStringLiteral(". GThemedIcon checkbox-symbolic org.kelpa.Kelpa")}}));
    EXPECT_EQ(metas.at(5).value(QStringLiteral("name")), QStringLiteral("Tax portal"));
    EXPECT_TRUE(forward.empty());
}

TEST_F(SearchBus, Plasma_finds_in_one_call)
{
    const QDBusMessage answer = askRunner("Match", {QStringLiteral("tax")});
    ASSERT_EQ(answer.signature(), QStringLiteral("a(sssida{sv})"));
    const auto matches = qdbus_cast<QList<RunnerMatch>>(answer.arguments().value(0));
    ASSERT_EQ(matches.size(), 4);
    EXPECT_EQ(matches.at(1).id, textOf(todo));
    EXPECT_EQ(matches.at(1).text, QStringLiteral("Tax form"));
    EXPECT_EQ(matches.at(1).properties,
              (QVariantMap{{QStringLiteral("subtext"), QStringLiteral("Taxes")}}));
    EXPECT_GT(matches.at(0).relevance, matches.at(3).relevance);
    EXPECT_GT(matches.at(3).relevance, 0);
    EXPECT_EQ(askRunner("Actions", {}).signature(), QStringLiteral("a(sss)"));
    EXPECT_EQ(askRunner("Teardown", {}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(forward.empty());
}

TEST_F(SearchBus, Windows_are_not_found_while_the_board_is_closed)
{
    store.stopObserving();
    EXPECT_EQ(
        askProvider("GetInitialResultSet", {QStringList{QStringLiteral("portal")}}).arguments(),
        QVariantList{QStringList()});
}

TEST_F(SearchBus, A_goal_is_opened_on_the_board)
{
    askProvider("ActivateResult", {textOf(goal), tax, 1234U});
    EXPECT_EQ(store.boardNavigation().target, TargetSelection::goal(goal));
    ASSERT_EQ(forward.size(), 1U);
    EXPECT_EQ(forward.at(0).inputTime, std::optional<InputTime>(1234));
}

TEST_F(SearchBus, A_todo_is_revealed_in_its_goal_or_in_Unsorted)
{
    askRunner("SetActivationToken", {QStringLiteral("token")});
    askRunner("Run", {textOf(todo), QString()});
    EXPECT_EQ(store.boardNavigation().target, TargetSelection::goal(goal));
    EXPECT_EQ(store.restoredTodoID(), todo);
    EXPECT_EQ(store.restorationID(), 1);
    askRunner("Run", {textOf(unassigned), QString()});
    EXPECT_EQ(store.boardNavigation().target, TargetSelection::unassigned());
    EXPECT_EQ(store.restoredTodoID(), unassigned);
    EXPECT_EQ(store.restorationID(), 2);
    ASSERT_EQ(forward.size(), 2U);
    EXPECT_EQ(forward.at(0).startupID, QByteArray("token"));
    // It was for the first one alone.
    EXPECT_EQ(forward.at(1).startupID, QByteArray());
}

TEST_F(SearchBus, A_window_is_selected_and_the_board_stays_where_it_is)
{
    askRunner("Run", {QStringLiteral("window:7"), QString()});
    EXPECT_EQ(store.boardNavigation().selectedWindowID, std::optional<WindowID>(7));
    EXPECT_TRUE(forward.empty());
}

TEST_F(SearchBus, A_window_that_cannot_come_forward_is_selected_on_the_board)
{
    desktop.lack(DesktopAbility::actions, {.gap = AbilityGap::compositorProtocol});
    store.setSearchText(QStringLiteral("another"));
    askRunner("Run", {QStringLiteral("window:7"), QString()});
    EXPECT_EQ(store.boardNavigation().selectedWindowID, std::optional<WindowID>(7));
    EXPECT_EQ(forward.size(), 1U);
    EXPECT_EQ(store.searchText(), QString()) << "it would hide the card";
}

TEST_F(SearchBus, What_is_gone_opens_the_board)
{
    for (const QString& gone :
         {textOf(GoalID::create()), textOf(TodoID::create()), QStringLiteral("window:8")})
        EXPECT_EQ(askRunner("Run", {gone, QString()}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(forward.size(), 3U);
    EXPECT_TRUE(store.boardNavigation().target.isUnassigned());
}

TEST_F(SearchBus, The_search_continues_on_the_board)
{
    askProvider("LaunchSearch", {QStringList{QStringLiteral("tax"), QStringLiteral("form")}, 0U});
    EXPECT_EQ(store.searchText(), QStringLiteral("tax form"));
    ASSERT_EQ(forward.size(), 1U);
    EXPECT_FALSE(forward.at(0).inputTime);
}

TEST_F(SearchBus, A_start_for_a_call_that_another_has_leaves_the_board_alone)
{
    QProcess start;
    start.setProcessEnvironment(offscreen());
    start.start(QStringLiteral(KELPA_PROGRAM),
                {QStringLiteral("--settings"), path, QStringLiteral("--service")});
    EXPECT_TRUE(start.waitForFinished());
    EXPECT_EQ(start.exitCode(), 0);
    EXPECT_FALSE(start.readAllStandardError().contains("kelpa:"));
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SearchBus, A_start_for_a_search_leaves_a_board_alone_that_is_not_on_the_bus)
{
    const QString otherPath = folder.filePath(QStringLiteral("other.sqlite"));
    const SqliteSettingsStore other(otherPath);
    QProcess start;
    start.setProcessEnvironment(offscreen());
    start.start(QStringLiteral(KELPA_PROGRAM),
                {QStringLiteral("--settings"), otherPath, QStringLiteral("--service")});
    EXPECT_TRUE(start.waitForFinished());
    EXPECT_EQ(start.exitCode(), 0);
    EXPECT_FALSE(start.readAllStandardError().contains("kelpa:"));
}

TEST_F(SearchBus, Whatever_callers_send_has_an_answer)
{
    const BoardContents before = store.boardContents();
    const std::uint64_t seeded = seed();
    SCOPED_TRACE(seedText(seeded));
    std::mt19937_64 random(seeded);
    const QVariantList strange{QString(),
                               QString(1 << 20, u'x'),
                               QString(QChar(0xD800)) + QStringLiteral("\u202E\n"),
                               QStringList(),
                               QStringList(10'000, QStringLiteral("x")),
                               QByteArray(1000, '\xFF'),
                               QVariantMap{{QStringLiteral("key"), 1}},
                               7U,
                               -7,
                               true,
                               3.5};
    const auto askAny = [&](const BusObject::Description& object, const char* method) {
        QVariantList arguments;
        for (auto count = random() % 4; count > 0; --count)
            arguments.append(strange.at(static_cast<qsizetype>(random() % strange.size())));
        const QDBusMessage answer = ask(object, method, arguments);
        if (answer.type() == QDBusMessage::ReplyMessage)
            return;
        EXPECT_EQ(answer.errorName(), errorName(FailureKind::invalidArguments)) << method;
        EXPECT_LT(answer.errorMessage().size(), 300);
    };
    for (int i = 0; i < 20; ++i) {
        for (const char* const method : {"GetInitialResultSet", "GetSubsearchResultSet",
                                         "GetResultMetas", "ActivateResult", "LaunchSearch"})
            askAny(searchProviderDescription(), method);
        for (const char* const method : {"Match", "Actions", "Run", "SetActivationToken"})
            askAny(searchRunnerDescription(), method);
    }
    EXPECT_EQ(askProvider("GetInitialResultSet", {QStringLiteral("tax")}).errorName(),
              errorName(FailureKind::invalidArguments));
    EXPECT_EQ(askRunner("Run", {QStringLiteral("goal:1"), QString()}).errorName(),
              errorName(FailureKind::invalidArguments));
    EXPECT_EQ(askRunner("Configure", {}).errorName(), errorName(FailureKind::unknownMethod));
    EXPECT_EQ(store.boardContents(), before);
}

TEST_F(SearchBus, Introspection_lists_the_methods_and_no_property)
{
    const QString interface = QStringLiteral("org.freedesktop.DBus.Introspectable");
    for (BusObject::Description object : {searchProviderDescription(), searchRunnerDescription()}) {
        const QString introspection = object.introspection;
        object.interface = interface;
        const QString xml = ask(object, "Introspect", {}).arguments().value(0).toString();
        EXPECT_TRUE(xml.contains(introspection));
        object.interface = QStringLiteral("org.freedesktop.DBus.Properties");
        EXPECT_EQ(qdbus_cast<QVariantMap>(ask(object, "GetAll", {QString()}).arguments().value(0)),
                  QVariantMap());
        EXPECT_EQ(ask(object, "Get", {QString(), QStringLiteral("Version")}).type(),
                  QDBusMessage::ErrorMessage);
    }
}

} // namespace
} // namespace kelpa::test
