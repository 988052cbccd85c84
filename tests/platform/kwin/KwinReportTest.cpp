#include "platform/kwin/KwinReport.h"

#include "model/WindowItem.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace kelpa::test {
namespace {

using kwin::KwinWindow;
using kwin::windowsIn;

constexpr const char* first = "{11111111-1111-1111-1111-111111111111}";
constexpr const char* second = "{22222222-2222-2222-2222-222222222222}";

/// A row of a report with those members.
QByteArray row(const QByteArray& uuid, const QByteArray& members = {})
{
    return R"({"id":")" + uuid + '"' + (members.isEmpty() ? "" : "," + members) + '}';
}

QByteArray report(std::initializer_list<QByteArray> rows)
{
    return '[' + QByteArrayList(rows).join(',') + ']';
}

/// The only window of a report whose row has those members.
KwinWindow only(const QByteArray& members)
{
    const auto windows = windowsIn(report({row(first, members)}));
    return windows && windows->size() == 1 ? windows->front() : KwinWindow{};
}

TEST(KwinReport, A_row_is_a_window)
{
    const KwinWindow expected{.uuid = first,
                              .title = QStringLiteral("Notes \u00e9"),
                              .desktopFile = QStringLiteral("org.test.Notes"),
                              .className = QStringLiteral("notes"),
                              .instanceName = QStringLiteral("notes-bin"),
                              .role = QStringLiteral("main"),
                              .process = 42,
                              .bounds = {10, 20.5, 300, 200},
                              .isOrdinary = true,
                              .isMinimized = true,
                              .isActive = true,
                              .isHere = true,
                              .virtualDesktop = QStringLiteral("Second"),
                              .revision = 7};
    EXPECT_EQ(only(R"("title":"Notes é","file":"org.test.Notes","className":"notes",)"
                   R"("instance":"notes-bin","role":"main","process":42,"x":10,"y":20.5,)"
                   R"("width":300,"height":200,"stacking":3,"activation":1,"revision":7,)"
                   R"("isOrdinary":true,"isMinimized":true,"isActive":true,"isHere":true,)"
                   R"("desktop":" Second ","owner":"","isDialog":false)"),
              expected);
}

TEST(KwinReport, Values_that_no_window_has_are_absent)
{
    for (const char* process : {"0", "-1", "4294967296", "\"42\"", "null", "1e300", "[]"})
        EXPECT_EQ(only(QByteArray(R"("process":)") + process).process, std::nullopt) << process;
    EXPECT_EQ(only(R"("width":-5,"height":"wide","x":1e300,"y":null)").bounds,
              (Rect{1e6, 0, 0, 0}));
    EXPECT_EQ(only(R"("title":7,"isHere":"true")").title, QString());
    EXPECT_FALSE(only(R"("title":7,"isHere":"true")").isHere);
}

TEST(KwinReport, A_window_is_on_a_desktop_of_a_number_or_on_all)
{
    const auto number = [](const char* value) {
        return only(QByteArray(R"("desktopNumber":)") + value).desktopNumber;
    };
    EXPECT_EQ(number("0"), everyVirtualDesktop);
    EXPECT_EQ(number("100"), 100);
    for (const char* value : {"-1", "101", "1.5", "\"1\"", "null", "1e300", "[]"})
        EXPECT_EQ(number(value), std::nullopt) << value;
}

TEST(KwinReport, Desktops_have_names_in_their_order)
{
    EXPECT_EQ(kwin::desktopsIn(R"([" Work ","",7])"),
              (QStringList{QStringLiteral("Work"), QString(), QString()}));
    for (const char* malformed : {"", "[", "{}", "\"Work\"", "null"})
        EXPECT_TRUE(kwin::desktopsIn(malformed).isEmpty()) << malformed;
    QByteArrayList many;
    for (int index = 0; index < 200; ++index)
        many.append("\"Work\"");
    EXPECT_EQ(kwin::desktopsIn('[' + many.join(',') + ']').size(), 100);
}

TEST(KwinReport, A_row_without_a_name_of_its_own_is_left_out)
{
    const auto windows = windowsIn(
        report({row("no uuid"), row("{00000000-0000-0000-0000-000000000000}"), "7", "null",
                row(first, R"("title":"kept")"), row(first, R"("title":"again")"), row(second)}));
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2);
    EXPECT_EQ(windows->at(0).title, QStringLiteral("kept"));
    EXPECT_EQ(windows->at(1).uuid, second);
}

TEST(KwinReport, A_dialog_marks_the_window_that_it_belongs_to)
{
    constexpr const char* third = "{33333333-3333-3333-3333-333333333333}";
    const auto owned = [](const char* by) { return QByteArray(R"("owner":")") + by + '"'; };
    struct Row
    {
        const char* name;
        std::initializer_list<QByteArray> rows;
        std::vector<bool> awaiting;
    };
    const QByteArray ordinary = R"("isOrdinary":true)";
    const QByteArray dialog = R"("isDialog":true)";
    for (const Row& each :
         {Row{"a dialog", {row(first, ordinary), row(second, dialog + ',' + owned(first))}, {1, 0}},
          Row{"one that is a card too",
              {row(first, ordinary), row(second, ordinary + ',' + dialog + ',' + owned(first))},
              {1, 0}},
          Row{"no dialog", {row(first, ordinary), row(second, owned(first))}, {0, 0}},
          Row{"of nobody", {row(first, ordinary), row(second, dialog)}, {0, 0}},
          Row{"of one that is gone",
              {row(first, ordinary), row(second, dialog + ',' + owned(third))},
              {0, 0}},
          Row{"of a palette",
              {row(first, ordinary), row(second, owned(first)),
               row(third, dialog + ',' + owned(second))},
              {1, 0, 0}},
          Row{"a circle",
              {row(first, dialog + ',' + owned(second)), row(second, dialog + ',' + owned(first))},
              {0, 0}}}) {
        const auto windows = windowsIn(report(each.rows));
        ASSERT_TRUE(windows) << each.name;
        std::vector<bool> awaiting;
        for (const KwinWindow& window : *windows)
            awaiting.push_back(window.isAwaitingAnswer);
        EXPECT_EQ(awaiting, each.awaiting) << each.name;
        // The last one is the dialog.
        EXPECT_EQ(windows->back().dialogOf,
                  each.awaiting.front() ? QByteArray(first) : QByteArray())
            << each.name;
        EXPECT_EQ(windows->front().dialogOf, QByteArray()) << each.name;
    }
}

TEST(KwinReport, The_most_recently_active_come_first_then_those_in_front)
{
    constexpr const char* third = "{33333333-3333-3333-3333-333333333333}";
    const auto windows = windowsIn(report({row(first, R"("activation":0,"stacking":1)"),
                                           row(second, R"("activation":0,"stacking":5)"),
                                           row(third, R"("activation":4,"stacking":0)")}));
    ASSERT_TRUE(windows);
    std::vector<QByteArray> order;
    for (const KwinWindow& each : *windows)
        order.push_back(each.uuid);
    EXPECT_EQ(order, (std::vector<QByteArray>{third, second, first}));
}

TEST(KwinReport, What_is_no_report_is_absent)
{
    for (const char* text : {"", "{}", "7", "[", "[{]", "\xff\xfe", "null"})
        EXPECT_EQ(windowsIn(text), std::nullopt) << text;
    EXPECT_EQ(windowsIn("[]"), std::vector<KwinWindow>{});
    EXPECT_EQ(windowsIn(QByteArray(100'000, '[')), std::nullopt);
    EXPECT_EQ(windowsIn('[' + QByteArray("{},").repeated(5000) + "{}]"), std::nullopt);
    EXPECT_EQ(windowsIn('[' + QByteArray(kwin::longestReport, ' ') + ']'), std::nullopt);
}

} // namespace
} // namespace kelpa::test
