#include "platform/numbers/WindowOwners.h"
#include "platform/numbers/WindowOwnersFile.h"
#include "support/CaseName.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

#include <vector>

namespace kelpa {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t window = 0x400001;

struct OwnerCase
{
    const char* name;
    WindowOwner recorded;
    WindowOwner seen;
    bool isContradiction;
};

class Owners : public testing::TestWithParam<OwnerCase>
{};

TEST_P(Owners, Contradict_each_other_where_both_are_known_and_differ)
{
    EXPECT_EQ(contradict(GetParam().recorded, GetParam().seen), GetParam().isContradiction);
    EXPECT_EQ(contradict(GetParam().seen, GetParam().recorded), GetParam().isContradiction);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Owners,
    testing::Values(OwnerCase{"the_same_window",
                              {window, 7, 1000, QStringLiteral("a")},
                              {window, 7, 1000, QStringLiteral("a")},
                              false},
                    OwnerCase{"another_window_of_the_process",
                              {window, 7, 1000, QStringLiteral("a")},
                              {window + 1, 7, 1000, QStringLiteral("a")},
                              true},
                    OwnerCase{"a_window_of_which_nothing_is_known",
                              {},
                              {window, 7, 1000, QStringLiteral("a")},
                              false},
                    OwnerCase{"another_process_that_got_the_id",
                              {window, 7, 1000, QStringLiteral("a")},
                              {window, 8, 1000, QStringLiteral("a")},
                              true},
                    OwnerCase{"a_later_process_that_got_the_number",
                              {window, 7, 1000, QStringLiteral("a")},
                              {window, 7, 2000, QStringLiteral("a")},
                              true},
                    OwnerCase{"a_process_whose_start_is_not_known",
                              {window, 7, 1000, QStringLiteral("a")},
                              {window, 7, std::nullopt, QStringLiteral("a")},
                              false},
                    OwnerCase{"a_class_that_its_process_has_changed",
                              {window, 7, 1000, QStringLiteral("start center")},
                              {window, 7, 1000, QStringLiteral("writer")},
                              false},
                    OwnerCase{"another_class_of_an_unknown_process",
                              {window, std::nullopt, std::nullopt, QStringLiteral("a")},
                              {window, 7, 1000, QStringLiteral("b")},
                              true},
                    OwnerCase{"no_class_of_an_unknown_process",
                              {window, std::nullopt, std::nullopt, QStringLiteral("a")},
                              {window, std::nullopt, std::nullopt, QString()},
                              false}),
    test::caseName);

TEST(ProcessStart, Is_known_of_processes_that_run)
{
    EXPECT_TRUE(processStart(static_cast<ProcessID>(getpid())));
    EXPECT_EQ(processStart(static_cast<ProcessID>(getpid())),
              processStart(static_cast<ProcessID>(getpid())));
    EXPECT_EQ(processStart(0), std::nullopt);
    EXPECT_EQ(processStart(-1), std::nullopt);
}

class MemoryOwners : public OwnerStorage
{
public:
    void save(const RecordedOwners& owners) override { saved.push_back(owners); }

    std::vector<RecordedOwners> saved;
};

class WindowOwnersTest : public testing::Test
{
protected:
    static WindowOwner owner(std::uint32_t id)
    {
        const auto process = static_cast<ProcessID>(getpid());
        return {id, process, processStart(process), QStringLiteral("a")};
    }

    const WindowOwners::Time start{};
    MemoryOwners storage;
};

TEST_F(WindowOwnersTest, Only_the_window_that_got_an_assigned_number_may_bear_it_at_the_next_start)
{
    WindowOwners first(&storage, {}, {});
    first.note(1, owner(11));
    first.note(2, owner(12));
    first.note(3, owner(13));
    first.windowDestroyed(12);
    first.save(start);
    ASSERT_EQ(storage.saved.size(), 1U);

    const WindowOwners second(&storage, storage.saved.front(), {1, 2, 4});
    EXPECT_TRUE(second.mayBear(1, owner(11)));
    EXPECT_FALSE(second.mayBear(1, owner(13)));
    EXPECT_FALSE(second.mayBear(2, owner(12))) << "it was closed";
    EXPECT_TRUE(second.mayBear(3, owner(99))) << "nothing is assigned by it";
    EXPECT_TRUE(second.mayBear(4, owner(99))) << "given after the last save";
}

TEST_F(WindowOwnersTest, A_number_that_no_run_has_recorded_is_believed_after_greater_ones_too)
{
    WindowOwners first(&storage, {}, {1, 2});
    first.note(2, owner(12));
    EXPECT_TRUE(first.mayBear(1, owner(11)));
    first.save(start);
    ASSERT_EQ(storage.saved.size(), 1U);
    EXPECT_EQ(decodedOwners(encoded(storage.saved.front())), storage.saved.front());

    const WindowOwners second(&storage, storage.saved.front(), {1, 2});
    EXPECT_TRUE(second.mayBear(1, owner(11)));
    EXPECT_FALSE(second.mayBear(2, owner(11)));
}

TEST_F(WindowOwnersTest, Windows_of_processes_that_have_ended_are_forgotten)
{
    WindowOwner gone = owner(11);
    gone.processStart = *gone.processStart + 1;
    WindowOwners owners(&storage, {5, {{1, gone}, {2, owner(12)}, {3, {13, {}, {}, {}}}}}, {});
    owners.note(6, owner(16));
    owners.save(start);
    ASSERT_EQ(storage.saved.size(), 1U);
    EXPECT_EQ(storage.saved.front(),
              (RecordedOwners{6, {{2, owner(12)}, {3, {13, {}, {}, {}}}, {6, owner(16)}}}));
}

TEST_F(WindowOwnersTest, Are_saved_when_they_have_changed_and_not_more_often_than_the_interval)
{
    WindowOwners owners(&storage, {}, {});
    owners.save(start);
    EXPECT_EQ(storage.saved.size(), 0U);
    owners.note(1, owner(11));
    owners.save(start);
    owners.save(start + 1h);
    EXPECT_EQ(storage.saved.size(), 1U);
    owners.note(2, owner(12));
    owners.save(start + 1s);
    owners.save(start + WindowOwners::saveInterval - 1s);
    EXPECT_EQ(storage.saved.size(), 1U);
    owners.save(start + WindowOwners::saveInterval);
    ASSERT_EQ(storage.saved.size(), 2U);
    EXPECT_EQ(storage.saved.back(), (RecordedOwners{2, {{1, owner(11)}, {2, owner(12)}}}));
}

TEST_F(WindowOwnersTest, Of_too_many_windows_those_of_the_greatest_numbers_are_kept)
{
    WindowOwners owners(&storage, {}, {});
    const auto count = static_cast<WindowID>(WindowOwners::maxOwners) + 1;
    for (WindowID number = 1; number <= count; ++number)
        owners.note(number, owner(100 + number));
    owners.save(start);
    ASSERT_EQ(storage.saved.size(), 1U);
    EXPECT_EQ(storage.saved.front().owners.size(), WindowOwners::maxOwners);
    EXPECT_EQ(storage.saved.front().owners.begin()->first, 2U);
}

const RecordedOwners recorded{
    300,
    {{5, {0x400001, 77, 123456, QStringLiteral("XTerm")}},
     {7, {0x600003, std::nullopt, std::nullopt, QStringLiteral("Ein Name - ü\n")}},
     {300, {0xFFFFFFFF, 2147483647, 18446744073709551615U, QString()}}}};

TEST(WindowOwnersFileTest, Has_a_line_for_each_owner)
{
    EXPECT_EQ(encoded(recorded), "kelpa-window-owners 1\n"
                                 "300\n"
                                 "5 4194305 77 123456 XTerm\n"
                                 "7 6291459 - - Ein%20Name%20%2D%20%C3%BC%0A\n"
                                 "300 4294967295 2147483647 18446744073709551615 -\n"
                                 "end\n");
    EXPECT_EQ(decodedOwners(encoded(recorded)), recorded);
    EXPECT_EQ(decodedOwners(encoded({})), RecordedOwners());
}

struct MalformedCase
{
    const char* name;
    const char* content;
};

class Malformed : public testing::TestWithParam<MalformedCase>
{};

TEST_P(Malformed, Files_count_as_empty)
{
    EXPECT_EQ(decodedOwners(GetParam().content), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Such, Malformed,
    testing::Values(
        MalformedCase{"nothing", ""}, MalformedCase{"no_end", "kelpa-window-owners 1\n5\n"},
        MalformedCase{"cut_off", "kelpa-window-owners 1\n5\n1 2 3 4 a\nen"},
        MalformedCase{"another_version", "kelpa-window-owners 2\n5\nend\n"},
        MalformedCase{"something_behind", "kelpa-window-owners 1\n5\nend\n\n"},
        MalformedCase{"a_missing_word", "kelpa-window-owners 1\n5\n1 2 3 4\nend\n"},
        MalformedCase{"one_word_more", "kelpa-window-owners 1\n5\n1 2 3 4 a b\nend\n"},
        MalformedCase{"a_sign", "kelpa-window-owners 1\n5\n1 +2 3 4 a\nend\n"},
        MalformedCase{"a_leading_zero", "kelpa-window-owners 1\n5\n01 2 3 4 a\nend\n"},
        MalformedCase{"too_great_a_number", "kelpa-window-owners 1\n5\n1 4294967296 3 4 a\nend\n"},
        MalformedCase{"too_great_a_process", "kelpa-window-owners 1\n5\n1 2 2147483648 4 a\nend\n"},
        MalformedCase{"a_number_above_the_greatest", "kelpa-window-owners 1\n5\n6 2 3 4 a\nend\n"},
        MalformedCase{"one_that_leaves_too_few", "kelpa-window-owners 1\n4294967295\nend\n"},
        MalformedCase{"a_number_twice", "kelpa-window-owners 1\n5\n1 2 3 4 a\n1 2 3 4 a\nend\n"},
        MalformedCase{"another_order", "kelpa-window-owners 1\n5\n2 2 3 4 a\n1 2 3 4 a\nend\n"},
        MalformedCase{"a_class_that_is_not_encoded",
                      "kelpa-window-owners 1\n5\n1 2 3 4 a!\nend\n"}),
    test::caseName);

TEST(WindowOwnersFileTest, Gives_at_the_next_start_what_was_saved_last)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("window-owners"));
    EXPECT_EQ(WindowOwnersFile(path).read(), RecordedOwners());
    WindowOwnersFile(path).save({});
    WindowOwnersFile(path).save(recorded);
    EXPECT_EQ(WindowOwnersFile(path).read(), recorded);
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("x");
    file.close();
    EXPECT_EQ(WindowOwnersFile(path).read(), RecordedOwners());
}

TEST(WindowOwnersFileTest, A_link_in_the_place_of_the_next_file_is_replaced_and_not_followed)
{
    const QTemporaryDir folder;
    QFile precious(folder.filePath(QStringLiteral("precious")));
    ASSERT_TRUE(precious.open(QIODevice::WriteOnly));
    precious.write("kept");
    precious.close();
    const QString path = folder.filePath(QStringLiteral("window-owners"));
    ASSERT_TRUE(QFile::link(precious.fileName(), path + QStringLiteral(".new")));
    WindowOwnersFile(path).save(recorded);
    ASSERT_TRUE(precious.open(QIODevice::ReadOnly));
    EXPECT_EQ(precious.readAll(), "kept");
    EXPECT_EQ(WindowOwnersFile(path).read(), recorded);
}

TEST(WindowOwnersFileTest, That_cannot_be_written_stays_as_it_is)
{
    const QTemporaryDir folder;
    const QString nowhere = folder.filePath(QStringLiteral("none/window-owners"));
    WindowOwnersFile(nowhere).save(recorded);
    EXPECT_EQ(WindowOwnersFile(nowhere).read(), RecordedOwners());
}

} // namespace
} // namespace kelpa
