// A stored board that cannot be read when the store is made, and can be later.

#include "platform/sqlite/RawDatabase.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

const Goal lateGoal = goal(QStringLiteral("Stored"), {todo(QStringLiteral("s0"), 0)});
const TodoItem lateLoose = todo(QStringLiteral("s1"), 1);

QMap<QString, int> onceEach(const QStringList& signalNames)
{
    QMap<QString, int> counts;
    for (const QString& name : signalNames)
        counts.insert(name, 1);
    return counts;
}

class LateLoading : public StoreFixture
{
protected:
    LateLoading()
    {
        settings.values.insert(goalsKey, *encodeGoals({lateGoal}));
        settings.values.insert(unassignedTodosKey, *encodeTodos({lateLoose}));
        settings.values.insert(assignmentsKey,
                               encodeAssignments({{QStringLiteral("5"), lateGoal.id}}));
        settings.values.insert(languageKey, QStringLiteral("de"));
        settings.values.insert(autoSortingGoalsKey, false);
        settings.isUnreadable = true;
    }

    void becomeReadable() { settings.isUnreadable = false; }
    void becomeReadableAndWait()
    {
        becomeReadable();
        scheduler.advance(5s);
    }
};

TEST_F(LateLoading, Until_then_the_board_is_empty_and_what_is_stored_stays)
{
    const QMap<QString, SettingsValue> before = settings.values;
    EXPECT_TRUE(store().goals().isEmpty());
    makeGoal(QStringLiteral("Made"));
    scheduler.advance(60s);
    EXPECT_EQ(settings.values, before);
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Made")});
}

TEST_F(LateLoading, It_comes_to_the_board_by_itself_within_five_seconds)
{
    const QMap<QString, SettingsValue> before = settings.values;
    store();
    becomeReadable();
    scheduler.advance(4999ms);
    EXPECT_TRUE(store().goals().isEmpty());
    scheduler.advance(1ms);

    EXPECT_EQ(store().goals(), QList<Goal>{lateGoal});
    EXPECT_EQ(store().unassignedTodos(), QList<TodoItem>{lateLoose});
    EXPECT_EQ(store().assignments(), (Assignments{{QStringLiteral("5"), lateGoal.id}}));
    EXPECT_EQ(store().language(), AppLanguage::german);
    EXPECT_FALSE(store().isAutoSortingGoals());
    EXPECT_EQ(settings.values, before);
    EXPECT_EQ(takeSignals(),
              onceEach({QStringLiteral("goals"), QStringLiteral("unassignedTodos"),
                        QStringLiteral("language"), QStringLiteral("isAutoSortingGoals"),
                        QStringLiteral("trouble")}));
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(LateLoading, Windows_on_the_board_find_their_goals)
{
    desktop.addWindow(5, 100, QStringLiteral("w"));
    store().refresh();
    store().setLanguage(AppLanguage::german);
    store().setAutoSortingGoals(false);
    settings.values.remove(unassignedTodosKey);
    takeSignals();
    becomeReadableAndWait();

    EXPECT_EQ(store().windows().first().goalID, lateGoal.id);
    EXPECT_EQ(takeSignals(), onceEach({QStringLiteral("goals"), QStringLiteral("windows"),
                                       QStringLiteral("trouble")}));
}

TEST_F(LateLoading, What_was_made_meanwhile_comes_after_it_and_both_are_saved)
{
    desktop.addWindow(6, 100, QStringLiteral("w"));
    store().refresh();
    const GoalID made = makeGoal(QStringLiteral("Made"));
    const TodoID loose = makeTodo(std::nullopt, QStringLiteral("m0"));
    const TodoID inMade = makeTodo(made, QStringLiteral("m1"));
    store().assign(6, made);
    store().requestAddTodo(made);
    const BoardNavigationState navigation = store().boardNavigation();
    becomeReadableAndWait();

    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("Stored"), QStringLiteral("Made")}));
    EXPECT_EQ(store().goals().first(), lateGoal);
    EXPECT_EQ(todos(made),
              (QList<TodoItem>{{inMade, QStringLiteral("m1"), TodoStatus::todo, std::nullopt, 3}}));
    EXPECT_EQ(todos(std::nullopt),
              (QList<TodoItem>{lateLoose,
                               {loose, QStringLiteral("m0"), TodoStatus::todo, std::nullopt, 2}}));
    const Assignments assignments{{QStringLiteral("5"), lateGoal.id}, {QStringLiteral("6"), made}};
    EXPECT_EQ(store().assignments(), assignments);
    EXPECT_EQ(store().boardNavigation(), navigation);
    EXPECT_EQ(store().todoEditorGoalID(), made);

    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
    EXPECT_EQ(decodeTodos(settings.document(unassignedTodosKey)), store().unassignedTodos());
    EXPECT_EQ(decodeAssignments(settings.document(assignmentsKey)), assignments);
}

TEST_F(LateLoading, Settings_that_were_changed_meanwhile_stay_changed)
{
    store().setLanguage(AppLanguage::french);
    store().setAutoSortingGoals(false);
    store().setAutoSortingGoals(true);
    becomeReadableAndWait();

    EXPECT_EQ(store().language(), AppLanguage::french);
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Stored")});
    EXPECT_EQ(settings.values.value(languageKey), SettingsValue(QStringLiteral("fr")));
    EXPECT_EQ(settings.values.value(autoSortingGoalsKey), SettingsValue(true));
}

TEST_F(LateLoading, The_joined_goals_are_sorted_where_goals_are)
{
    settings.values.insert(autoSortingGoalsKey, true);
    store().setGoalPriority(GoalPriority::p0, makeGoal(QStringLiteral("Made")));
    becomeReadableAndWait();
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("Made"), QStringLiteral("Stored")}));
}

TEST_F(LateLoading, The_next_change_brings_it_at_once)
{
    store();
    becomeReadable();
    makeGoal(QStringLiteral("Made"));
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("Stored"), QStringLiteral("Made")}));
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
}

TEST_F(LateLoading, The_programs_end_brings_it_too)
{
    makeGoal(QStringLiteral("Made"));
    becomeReadable();
    store().finishSaving();
    EXPECT_EQ(decodeGoals(settings.document(goalsKey))->size(), 2);
}

TEST_F(LateLoading, A_document_that_does_not_decode_is_copied_aside_then)
{
    settings.values.insert(goalsKey, QByteArray("[{"));
    makeGoal(QStringLiteral("Made"));
    becomeReadableAndWait();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Made")});
    EXPECT_EQ(settings.document(goalsKey + QStringLiteral(".aside")), "[{");
}

/// The same with files, and what keeps them from being read.
class LateFile : public testing::Test
{
protected:
    LateFile()
    {
        SqliteSettingsStore stored(path, [](const QString&) {});
        EXPECT_TRUE(stored.write({{goalsKey, *encodeGoals({lateGoal})},
                                  {unassignedTodosKey, *encodeTodos({lateLoose})},
                                  {languageKey, QStringLiteral("de")}}));
    }

    struct Kelpa
    {
        explicit Kelpa(const QString& path) : settings(path, [](const QString&) {}) {}

        FakeDesktop desktop;
        ManualScheduler scheduler;
        SqliteSettingsStore settings;
        WindowStore store{desktop.platform(), settings, scheduler};
    };

    static QStringList titles(const WindowStore& store)
    {
        QStringList all;
        for (const Goal& each : store.goals())
            all.append(each.title);
        return all;
    }

    /// A store that began while the file could not be read, and from which `becomeReadable` takes
    /// what keeps it from that.
    void expectJoining(Kelpa& kelpa, const std::function<void()>& becomeReadable)
    {
        EXPECT_FALSE(kelpa.settings.isLoaded());
        EXPECT_EQ(titles(kelpa.store), QStringList());
        kelpa.store.createGoal(QStringLiteral("Made"));
        kelpa.store.setLanguage(AppLanguage::french);
        kelpa.scheduler.advance(5s);
        EXPECT_FALSE(kelpa.settings.isLoaded());

        becomeReadable();
        kelpa.scheduler.advance(5s);

        EXPECT_TRUE(kelpa.settings.isLoaded());
        EXPECT_EQ(rowsOf(path, QStringLiteral("SELECT count(*) FROM settings WHERE key = "
                                              "'kelpa.goals' AND CAST(value AS TEXT) LIKE "
                                              "'%\"Stored\"%\"Made\"%'")),
                  QList<QString>{QStringLiteral("1")});
        const QStringList both{QStringLiteral("Stored"), QStringLiteral("Made")};
        EXPECT_EQ(titles(kelpa.store), both);
        EXPECT_EQ(kelpa.store.unassignedTodos(), QList<TodoItem>{lateLoose});
        EXPECT_EQ(kelpa.scheduler.timersDue(), 0);
        EXPECT_EQ(rowsOf(path, QStringLiteral("SELECT count(*) FROM settings WHERE key GLOB "
                                              "'kelpa.goals.saved-*'")),
                  QList<QString>{QStringLiteral("0")})
            << "nothing was replaced that is not on the board";
    }

    void expectBothAfterARestart()
    {
        const Kelpa kelpa(path);
        EXPECT_EQ(titles(kelpa.store),
                  (QStringList{QStringLiteral("Stored"), QStringLiteral("Made")}));
        EXPECT_EQ(kelpa.store.language(), AppLanguage::french);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("kelpa.sqlite"));
};

TEST_F(LateFile, That_another_program_had_locked_is_joined)
{
    {
        auto other = std::make_unique<RawDatabase>(path);
        ASSERT_TRUE(other->run("PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE;"
                               "CREATE TABLE theirs(a); COMMIT"));
        Kelpa kelpa(path);
        expectJoining(kelpa, [&other] { other.reset(); });
    }
    expectBothAfterARestart();
}

TEST_F(LateFile, In_whose_place_a_folder_stood_is_joined)
{
    const QString elsewhere = folder.filePath(QStringLiteral("elsewhere"));
    ASSERT_TRUE(QFile::rename(path, elsewhere));
    ASSERT_TRUE(QDir().mkdir(path));
    {
        Kelpa kelpa(path);
        expectJoining(kelpa, [&] {
            ASSERT_TRUE(QDir().rmdir(path));
            ASSERT_TRUE(QFile::rename(elsewhere, path));
        });
    }
    expectBothAfterARestart();
}

TEST_F(LateFile, Whose_disk_was_not_there_yet_is_joined)
{
    const QString disk = folder.filePath(QStringLiteral("disk"));
    const QString file = disk + QStringLiteral("/kelpa.sqlite");
    const QString elsewhere = folder.filePath(QStringLiteral("elsewhere"));
    ASSERT_TRUE(QDir().mkdir(elsewhere));
    ASSERT_TRUE(QFile::rename(path, elsewhere + QStringLiteral("/kelpa.sqlite")));
    QFile inTheWay(disk);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    path = file;
    {
        Kelpa kelpa(path);
        expectJoining(kelpa, [&] {
            ASSERT_TRUE(inTheWay.remove());
            ASSERT_TRUE(QDir().rename(elsewhere, disk));
        });
    }
    expectBothAfterARestart();
}

TEST_F(LateFile, Of_a_later_release_that_is_replaced_by_an_older_copy_is_joined)
{
    ASSERT_TRUE(RawDatabase(path).run("PRAGMA user_version = 2"));
    {
        Kelpa kelpa(path);
        expectJoining(kelpa,
                      [&] { ASSERT_TRUE(RawDatabase(path).run("PRAGMA user_version = 1")); });
    }
    expectBothAfterARestart();
}

TEST_F(LateFile, That_does_not_exist_yet_counts_as_read)
{
    ASSERT_TRUE(QFile::remove(path));
    const Kelpa kelpa(path);
    EXPECT_TRUE(kelpa.settings.isLoaded());
    EXPECT_EQ(kelpa.scheduler.timersDue(), 0);
}

} // namespace
} // namespace kelpa::test
