#include "platform/numbers/NamedWindowNumbers.h"

#include "support/MemoryNumbers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kelpa::test {
namespace {

using Numbers = std::vector<std::optional<WindowID>>;

class NamedNumbers : public testing::Test
{
protected:
    /// As at a start of Kelpa.
    NamedWindowNumbers start(const std::set<WindowID>& taken = {})
    {
        return {marks, names, marks.mark, taken};
    }

    MemoryReservation marks;
    MemoryNameTable names;
};

TEST_F(NamedNumbers, Each_name_has_its_own_and_keeps_it)
{
    NamedWindowNumbers numbers = start();
    numbers.begin("first run");
    EXPECT_EQ(numbers.number({"a", "b"}), (Numbers{1, 2}));
    EXPECT_EQ(numbers.number({"c", "b", "a"}), (Numbers{3, 2, 1}));
    EXPECT_EQ(numbers.number({"b", "b"}), (Numbers{2, 2}));
    // A window that is left out for a while.
    EXPECT_EQ(numbers.number({"a"}), (Numbers{1}));
}

TEST_F(NamedNumbers, Kelpa_knows_the_windows_again_within_the_run)
{
    NamedWindowNumbers before = start();
    before.begin("first run");
    before.number({"a", "b"});
    NamedWindowNumbers after = start();
    after.begin("first run");
    EXPECT_EQ(after.number({"b", "new", "a"}), (Numbers{2, 257, 1}));
}

TEST_F(NamedNumbers, Nothing_is_carried_into_another_run)
{
    NamedWindowNumbers numbers = start();
    numbers.begin("first run");
    numbers.number({"a", "b"});
    numbers.begin("second run");
    EXPECT_EQ(numbers.number({"a"}), (Numbers{3}));
    // Not even back.
    numbers.begin("first run");
    EXPECT_EQ(numbers.number({"a"}), (Numbers{4}));

    NamedWindowNumbers later = start();
    later.begin("third run");
    EXPECT_EQ(later.number({"a"}), (Numbers{257}));
}

TEST_F(NamedNumbers, A_window_that_gets_another_name_keeps_its_number)
{
    NamedWindowNumbers numbers = start();
    numbers.begin("run");
    numbers.number({"a", "b", "c"});
    numbers.rename("a", "identifier");
    // It was stored.
    numbers.rename("b", "c");
    numbers.rename("unknown", "d");
    EXPECT_EQ(numbers.number({"identifier", "c", "d"}), (Numbers{1, 3, 4}));
    EXPECT_EQ(names.table,
              (NameTable{.run = "run", .numbers = {{"identifier", 1}, {"c", 3}, {"d", 4}}}));
    NamedWindowNumbers later = start();
    later.begin("run");
    EXPECT_EQ(later.number({"identifier"}), Numbers{1});
}

TEST_F(NamedNumbers, Numbers_of_windows_that_the_board_has_assigned_are_not_given)
{
    NamedWindowNumbers numbers = start({1, 2, 4});
    numbers.begin("run");
    EXPECT_EQ(numbers.number({"a", "b"}), (Numbers{3, 5}));
}

TEST_F(NamedNumbers, A_mark_that_was_lost_is_raised_by_the_table)
{
    names.table = NameTable{.run = "run", .numbers = {{"a", 900}}};
    NamedWindowNumbers numbers = start();
    numbers.begin("run");
    EXPECT_GE(marks.mark, 900U);
    EXPECT_EQ(numbers.number({"a", "b"}), (Numbers{900, 901}));
}

TEST_F(NamedNumbers, The_disk_is_written_for_new_windows_only_and_again_when_it_refused)
{
    NamedWindowNumbers numbers = start();
    numbers.begin("run");
    numbers.number({"a", "b"});
    numbers.number({"b"});
    EXPECT_EQ(names.writes, 1);
    names.isFailing = true;
    marks.isFailing = true;
    EXPECT_EQ(numbers.number({"a", "c"}), (Numbers{1, 3}));
    EXPECT_EQ(names.writes, 2);
    names.isFailing = false;
    numbers.number({"a", "c"});
    EXPECT_EQ(names.writes, 3);
    numbers.number({"a", "c"});
    EXPECT_EQ(names.writes, 3);
    EXPECT_EQ(names.table, (NameTable{.run = "run", .numbers = {{"a", 1}, {"b", 2}, {"c", 3}}}));
}

TEST_F(NamedNumbers, A_name_that_cannot_be_one_has_no_number)
{
    NamedWindowNumbers numbers = start();
    numbers.begin("run");
    EXPECT_EQ(numbers.number({"", QByteArray(257, 'x'), QByteArray(256, 'x')}),
              (Numbers{std::nullopt, std::nullopt, 1}));
}

TEST_F(NamedNumbers, Of_very_many_windows_the_closed_ones_are_forgotten_oldest_first)
{
    NamedWindowNumbers numbers = start();
    numbers.begin("run");
    for (int pass = 0; pass < 50; ++pass) {
        std::vector<QByteArray> open{"first"};
        for (int i = 0; i < 100; ++i)
            open.push_back(QByteArray::number(pass * 100 + i));
        numbers.number(open);
    }
    ASSERT_TRUE(names.table);
    EXPECT_LE(names.table->numbers.size(), NameTable::mostWindows);
    EXPECT_TRUE(decodedNameTable(encodedNameTable(*names.table)));
    EXPECT_EQ(numbers.number({"first", "4999"}), (Numbers{1, 5001}));
    EXPECT_EQ(numbers.number({"0"}), (Numbers{5002}));
}

TEST(NameTableFile, Holds_the_table_and_believes_no_other_contents)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.windows"));
    NameTableFile file(path);
    EXPECT_EQ(file.read(), std::nullopt);
    const NameTable table{.run = "run", .numbers = {{"a", 7}}};
    EXPECT_TRUE(file.write(table));
    EXPECT_EQ(file.read(), table);
    QFile raw(path);
    ASSERT_TRUE(raw.open(QIODevice::Append));
    raw.write("1 61\n");
    raw.close();
    EXPECT_EQ(file.read(), std::nullopt);
    EXPECT_FALSE(NameTableFile(folder.filePath(QStringLiteral("none/board.windows"))).write(table));
}

TEST(NameTableFile, Reads_the_largest_table_there_can_be)
{
    const QTemporaryDir folder;
    NameTableFile file(folder.filePath(QStringLiteral("board.windows")));
    NameTable table{.run = QByteArray(32, 'r'), .numbers = {}};
    for (std::size_t i = 0; i < NameTable::mostWindows; ++i) {
        const QByteArray name = QByteArray::number(qulonglong(i));
        table.numbers.emplace(name + QByteArray(NameTable::longestName - name.size(), 'x'),
                              greatestBelievedWindow - static_cast<WindowID>(i));
    }
    ASSERT_TRUE(file.write(table));
    EXPECT_EQ(file.read(), table);
}

} // namespace
} // namespace kelpa::test
