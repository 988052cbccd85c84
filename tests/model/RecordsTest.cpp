#include "model/Goal.h"
#include "model/UtcTime.h"
#include "model/WindowItem.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QSet>
#include <QTimeZone>

#include <functional>

namespace kelpa {

namespace {

const TodoItem exampleTodo{TodoID{QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)}, QStringLiteral("Call"),
                           TodoStatus::completed, Date{12.5}, 4};
const Goal exampleGoal{GoalID{QUuid(9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9)},
                       QStringLiteral("Move house"),
                       GoalAccent::pink,
                       GoalPriority::p1,
                       {exampleTodo}};
const WindowItem exampleWindow{7,
                               QStringLiteral("Editor"),
                               QStringLiteral("org.editor"),
                               QStringLiteral("a.txt"),
                               4321,
                               Rect{1, 2, 300, 200},
                               true,
                               false,
                               QStringLiteral("/tmp/a.txt"),
                               0,
                               exampleGoal.id};

/// Every change by itself makes another record, with (as good as always) another hash.
template <class Record>
void expectEachToMatter(const Record& record,
                        const std::vector<std::function<void(Record&)>>& changes)
{
    const QList<Record> copies{record};
    EXPECT_EQ(copies.front(), record);
    EXPECT_EQ(qHash(copies.front()), qHash(record));
    EXPECT_NE(qHash(record, 1), qHash(record, 2));
    for (std::size_t i = 0; i < changes.size(); ++i) {
        Record changed = record;
        changes[i](changed);
        EXPECT_NE(changed, record) << "change " << i;
        EXPECT_NE(qHash(changed), qHash(record)) << "change " << i;
    }
}

TEST(Records, A_todo_is_compared_and_hashed_over_all_five_fields)
{
    expectEachToMatter<TodoItem>(exampleTodo, {
                                                  [](TodoItem& t) { t.id = TodoID::create(); },
                                                  [](TodoItem& t) { t.title += u'!'; },
                                                  [](TodoItem& t) { t.status = TodoStatus::ing; },
                                                  [](TodoItem& t) { t.completedAt.reset(); },
                                                  [](TodoItem& t) { t.completedAt = Date{12.25}; },
                                                  [](TodoItem& t) { t.order = 5; },
                                              });
}

TEST(Records, A_goal_is_compared_and_hashed_over_all_five_fields)
{
    expectEachToMatter<Goal>(exampleGoal, {
                                              [](Goal& g) { g.id = GoalID::create(); },
                                              [](Goal& g) { g.title.clear(); },
                                              [](Goal& g) { g.accent = GoalAccent::blue; },
                                              [](Goal& g) { g.priority = GoalPriority::p2; },
                                              [](Goal& g) { g.todos.clear(); },
                                              [](Goal& g) { g.todos[0].order = 99; },
                                          });
}

TEST(Records, A_window_is_compared_and_hashed_over_all_its_fields)
{
    expectEachToMatter<WindowItem>(
        exampleWindow, {
                           [](WindowItem& w) { w.role = QStringLiteral("main"); },
                           [](WindowItem& w) { w.sessionID = QStringLiteral("10a1"); },
                           [](WindowItem& w) { w.instance = QStringLiteral("log"); },
                           [](WindowItem& w) { w.windowClass = QStringLiteral("Log"); },
                           [](WindowItem& w) { w.id = 8; },
                           [](WindowItem& w) { w.ownerName = QStringLiteral("Viewer"); },
                           [](WindowItem& w) { w.bundleIdentifier.reset(); },
                           [](WindowItem& w) { w.bundleIdentifier = QString(); },
                           [](WindowItem& w) { w.title = QStringLiteral("b.txt"); },
                           [](WindowItem& w) { w.processIdentifier = -1; },
                           [](WindowItem& w) { w.iconRevision = 1; },
                           [](WindowItem& w) { w.bounds.x = 1.5; },
                           [](WindowItem& w) { w.bounds.y = 1.5; },
                           [](WindowItem& w) { w.bounds.width = 1.5; },
                           [](WindowItem& w) { w.bounds.height = 1.5; },
                           [](WindowItem& w) { w.isOnScreen = false; },
                           [](WindowItem& w) { w.isMinimized = true; },
                           [](WindowItem& w) { w.accessibilityDocument.reset(); },
                           [](WindowItem& w) { w.accessibilityDocument = QString(); },
                           [](WindowItem& w) { w.goalID.reset(); },
                           [](WindowItem& w) { w.goalID = GoalID::create(); },
                       });
}

TEST(Records, An_empty_optional_text_is_not_an_absent_one)
{
    WindowItem absent;
    WindowItem empty;
    empty.bundleIdentifier = QString();
    EXPECT_NE(absent, empty);
    EXPECT_NE(qHash(absent), qHash(empty));
}

TEST(Records, A_rectangle_is_hashed_and_compared_with_non_negative_size)
{
    const Rect rect{10, 20, 30, 40};
    const Rect fromLowerRight{40, 60, -30, -40};
    const Rect fromUpperRight{40, 20, -30, 40};
    EXPECT_EQ(fromLowerRight, rect);
    EXPECT_EQ(fromUpperRight, rect);
    EXPECT_EQ(qHash(fromLowerRight), qHash(rect));
    EXPECT_EQ(qHash(fromUpperRight), qHash(rect));
    EXPECT_EQ(fromLowerRight.standardized().x, 10);
    EXPECT_EQ(fromLowerRight.standardized().y, 20);
    EXPECT_EQ(fromLowerRight.standardized().width, 30);
    EXPECT_EQ(fromLowerRight.standardized().height, 40);
}

TEST(Records, Windows_whose_frames_differ_only_in_form_are_equal_and_hash_alike)
{
    WindowItem other = exampleWindow;
    other.bounds = Rect{301, 202, -300, -200};
    EXPECT_EQ(other, exampleWindow);
    EXPECT_EQ(qHash(other), qHash(exampleWindow));
}

TEST(Records, Zero_and_minus_zero_are_one_place)
{
    EXPECT_EQ((Rect{0.0, 0.0, 1, 1}), (Rect{-0.0, -0.0, 1, 1}));
    EXPECT_EQ(qHash(Rect{0.0, 0.0, 1, 1}), qHash(Rect{-0.0, -0.0, 1, 1}));
}

TEST(Records, Records_can_be_members_of_sets)
{
    EXPECT_EQ(QSet<Goal>({exampleGoal, exampleGoal}).size(), 1);
    EXPECT_EQ(QSet<TodoItem>({exampleTodo, TodoItem{}}).size(), 2);
    EXPECT_EQ(QSet<WindowItem>({exampleWindow, exampleWindow}).size(), 1);
}

TEST(Records, A_window_is_called_by_its_trimmed_title_or_its_owner)
{
    WindowItem window = exampleWindow;
    window.title = QStringLiteral(" \n Notes \t");
    EXPECT_EQ(window.displayTitle(), u"Notes");
    window.title = QStringLiteral(" \u00a0\u3000\n");
    EXPECT_EQ(window.displayTitle(), u"Editor");
    window.title.clear();
    EXPECT_EQ(window.displayTitle(), u"Editor");
}

TEST(Records, A_date_counts_seconds_since_the_first_day_of_2001)
{
    const auto at = [](int year, int month, int day, int msec) {
        return Date::fromDateTime(utcTime(QDate(year, month, day), QTime(0, 0, 0, msec)));
    };
    EXPECT_EQ(at(2001, 1, 1, 0), Date{0});
    EXPECT_EQ(at(2001, 1, 2, 500), Date{86'400.5});
    EXPECT_EQ(at(1970, 1, 1, 0), Date{-978'307'200});
    EXPECT_EQ(Date::fromDateTime(QDateTime(QDate(2001, 1, 1), QTime(1, 0), QTimeZone(3600))),
              Date{0});
}

TEST(Records, The_distant_past_is_before_every_date_that_occurs)
{
    EXPECT_LT(Date::distantPast(), Date{-978'307'200});
    EXPECT_LT(Date::distantPast(), Date::fromDateTime(utcTime(QDate(1, 1, 3), QTime(0, 0))));
}

} // namespace

} // namespace kelpa
