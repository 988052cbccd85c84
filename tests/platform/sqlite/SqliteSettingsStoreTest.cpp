#include "platform/sqlite/SettingsFixture.h"

#include <QCoreApplication>

namespace kelpa {

namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

using SqliteSettings = SettingsFixture;

TEST_F(SqliteSettings, A_new_file_is_empty_and_the_persons_alone)
{
    path = folder.filePath(QStringLiteral("made/for/it/kelpa.sqlite"));
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[]")}));
    EXPECT_EQ(store->value(languageKey), std::nullopt);
    EXPECT_FALSE(store->isAlreadyInUse());
    EXPECT_THAT(messages, IsEmpty());
    for (const char* const suffix : {"", "-wal", "-shm", ".lock"}) {
        const auto permissions = QFile::permissions(path + QLatin1String(suffix));
        EXPECT_FALSE(permissions & (QFile::ReadGroup | QFile::ReadOther)) << suffix;
        EXPECT_TRUE(permissions & QFile::ReadOwner) << suffix;
    }
}

TEST_F(SqliteSettings, Texts_booleans_and_bytes_are_there_again_in_the_next_run)
{
    const QByteArray bytes("a\0\xff", 3);
    const std::vector<SettingsEntry> entries{
        {QStringLiteral("text"), QStringLiteral("zh-Hans 目标 \U0001f600")},
        {QStringLiteral("empty text"), QString()},
        {QStringLiteral("true"), true},
        {QStringLiteral("false"), false},
        {QStringLiteral("bytes"), bytes},
        {QStringLiteral("empty bytes"), QByteArray()},
        {QStringLiteral("large"), QByteArray(3'000'000, 'x')}};
    EXPECT_TRUE(openStore()->write(entries));
    const auto store = openStore();
    for (const SettingsEntry& entry : entries)
        EXPECT_EQ(store->value(entry.key), entry.value) << entry.key.toStdString();
}

TEST_F(SqliteSettings, Each_kind_of_value_has_its_own_type_in_the_file)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[]"), language(QStringLiteral("de")), {sortingKey, true}}));
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT key || ' ' || typeof(value) || ' ' || value "
                                            "FROM settings ORDER BY key")),
                ElementsAre(u"kelpa.autoSortingGoals integer 1", u"kelpa.goals blob []",
                            u"kelpa.language text de"));
}

TEST_F(SqliteSettings, The_file_can_be_read_by_others_while_it_is_open_and_says_whose_it_is)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    RawDatabase other(path);
    EXPECT_THAT(other.rows(QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                ElementsAre(u"[1]"));
    EXPECT_TRUE(store->write({goals("[2]")}));
    EXPECT_THAT(other.rows(QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                ElementsAre(u"[2]"));
    EXPECT_THAT(other.rows(QStringLiteral("PRAGMA journal_mode")), ElementsAre(u"wal"));
    EXPECT_THAT(other.rows(QStringLiteral("PRAGMA user_version")), ElementsAre(u"1"));
    EXPECT_THAT(other.rows(QStringLiteral("PRAGMA application_id")), ElementsAre(u"1265397857"));
    EXPECT_THAT(other.rows(QStringLiteral("PRAGMA integrity_check")), ElementsAre(u"ok"));
}

TEST_F(SqliteSettings, What_is_already_stored_is_not_written_again)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]"), language(QStringLiteral("de"))}));
    RawDatabase other(path);
    const auto version = [&other] { return other.rows(QStringLiteral("PRAGMA data_version")); };
    const QList<QString> before = version();
    EXPECT_TRUE(store->write({goals("[1]"), language(QStringLiteral("de"))}));
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(version(), before);
    EXPECT_TRUE(store->write({goals("[2]"), language(QStringLiteral("de"))}));
    EXPECT_NE(version(), before);
}

TEST_F(SqliteSettings, A_large_value_that_did_not_change_costs_nothing_beside_one_that_did)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals(QByteArray(1'000'000, 'x')), language(QStringLiteral("de"))}));
    const qint64 before = QFileInfo(path + QStringLiteral("-wal")).size();
    EXPECT_TRUE(store->write({goals(QByteArray(1'000'000, 'x')), language(QStringLiteral("fr"))}));
    EXPECT_LT(QFileInfo(path + QStringLiteral("-wal")).size() - before, 100'000);
}

TEST_F(SqliteSettings, The_log_stays_small_over_many_saves)
{
    const auto store = openStore();
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(store->write({goals(QByteArray(500'000, static_cast<char>('a' + i % 26)))}));
    EXPECT_LT(QFileInfo(path + QStringLiteral("-wal")).size(), 20'000'000);
}

TEST_F(SqliteSettings, A_lock_that_another_computer_holds_names_no_process_here)
{
    const auto first = openStore();
    for (const char* const words : {"7 another.example\n", "", "7", "x y\n", "-1 y\n"}) {
        setContents(path + QStringLiteral(".lock"), words);
        EXPECT_EQ(openStore()->otherProcess(), std::nullopt) << words;
    }
}

TEST_F(SqliteSettings, A_second_store_on_the_same_file_reads_it_and_writes_nothing)
{
    auto first = openStore();
    EXPECT_TRUE(first->write({goals("[1]")}));
    const auto second = openStore();
    EXPECT_TRUE(second->isAlreadyInUse());
    EXPECT_EQ(second->otherProcess(), QCoreApplication::applicationPid());
    EXPECT_EQ(first->otherProcess(), std::nullopt) << "nobody else has the file";
    EXPECT_THAT(messages, IsEmpty()) << "it is for the caller to say so, once";
    EXPECT_EQ(second->value(goalsKey), SettingsValue(QByteArray("[1]")));
    EXPECT_FALSE(second->write({goals("[2]")}));
    EXPECT_EQ(second->value(goalsKey), SettingsValue(QByteArray("[2]")));
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                ElementsAre(u"[1]"));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(u"another Kelpa is using it"));
}

TEST_F(SqliteSettings, A_file_that_is_opened_through_a_symbolic_link_is_the_same_file)
{
    const QString link = folder.filePath(QStringLiteral("link.sqlite"));
    ASSERT_TRUE(QFile::link(path, link));
    for (const auto& [firstPath, secondPath] : {std::pair(path, link), std::pair(link, path)}) {
        const SqliteSettingsStore first(firstPath);
        EXPECT_FALSE(first.isAlreadyInUse());
        EXPECT_EQ(first.path(), path);
        EXPECT_TRUE(SqliteSettingsStore(secondPath).isAlreadyInUse());
        ASSERT_TRUE(QFile::remove(path));
    }
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

TEST_F(SqliteSettings, A_folder_that_is_reached_through_a_symbolic_link_is_the_same_folder)
{
    const QString link = folder.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(folder.path(), link));
    const SqliteSettingsStore first(link + QStringLiteral("/kelpa.sqlite"));
    EXPECT_EQ(first.path(), path);
    EXPECT_TRUE(openStore()->isAlreadyInUse());
}

TEST_F(SqliteSettings, When_the_first_store_ends_the_second_saves_and_keeps_what_it_had_not_seen)
{
    auto first = openStore();
    EXPECT_TRUE(first->write({goals("[1]")}));
    const auto second = openStore();
    EXPECT_FALSE(second->write({goals("[2]")}));
    EXPECT_TRUE(first->write({goals("[3]"), language(QStringLiteral("de"))}));
    first.reset();
    EXPECT_TRUE(second->flush());
    EXPECT_EQ(second->value(goalsKey), SettingsValue(QByteArray("[2]")));
    EXPECT_EQ(second->value(languageKey), SettingsValue(QStringLiteral("de")));
    EXPECT_THAT(copiesAside(goalsKey), ElementsAre(u"[3]"));
}

TEST_F(SqliteSettings, A_value_is_copied_aside_once_and_stays_when_its_key_is_overwritten)
{
    const auto store = openStore();
    EXPECT_TRUE(store->copyAside(goalsKey));
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty());
    EXPECT_TRUE(store->write({goals("not JSON")}));
    EXPECT_TRUE(store->copyAside(goalsKey));
    EXPECT_TRUE(store->copyAside(goalsKey));
    EXPECT_TRUE(store->write({goals("[]")}));
    EXPECT_THAT(copiesAside(goalsKey), ElementsAre(u"not JSON"));
}

TEST_F(SqliteSettings, Copies_of_one_key_in_one_second_have_names_of_their_own)
{
    const auto store = openStore();
    for (const char* const json : {"bad 1", "bad 2", "bad 3"}) {
        EXPECT_TRUE(store->write({goals(json)}));
        EXPECT_TRUE(store->copyAside(goalsKey));
    }
    EXPECT_THAT(copiesAside(goalsKey), testing::UnorderedElementsAre(u"bad 1", u"bad 2", u"bad 3"));
}

TEST_F(SqliteSettings, Copies_that_hold_something_are_listed)
{
    const auto store = openStore();
    EXPECT_TRUE(
        store->write({goals("bad"), {goalsKey + QStringLiteral("Older"), QByteArray("1")}}));
    EXPECT_TRUE(store->copyAside(goalsKey));
    EXPECT_TRUE(store->write({goals("worse")}));
    EXPECT_TRUE(store->copyAside(goalsKey));
    const QStringList copies = store->copiesAside(goalsKey);
    ASSERT_EQ(copies.size(), 2);
    EXPECT_TRUE(store->write({{copies.first(), QByteArray()}}));
    EXPECT_EQ(store->copiesAside(goalsKey), QStringList(copies.last()));
    EXPECT_THAT(store->copiesAside(languageKey), IsEmpty());
}

TEST_F(SqliteSettings, A_key_that_is_written_without_having_been_read_needs_no_copy)
{
    EXPECT_TRUE(openStore()->write({goals("[1]")}));
    EXPECT_TRUE(openStore()->write({goals("[2]")}));
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty());
}

TEST_F(SqliteSettings, Values_of_other_kinds_are_left_out)
{
    openStore();
    RawDatabase other(path);
    EXPECT_TRUE(
        other.run("INSERT INTO settings VALUES('a', 1.5), ('b', NULL), ('c', 2), ('d', 1)"));
    const auto store = openStore();
    EXPECT_EQ(store->value(QStringLiteral("a")), std::nullopt);
    EXPECT_EQ(store->value(QStringLiteral("b")), std::nullopt);
    EXPECT_EQ(store->value(QStringLiteral("c")), std::nullopt);
    EXPECT_EQ(store->value(QStringLiteral("d")), SettingsValue(true));
}

TEST_F(SqliteSettings, A_path_with_every_kind_of_character_works)
{
    path = folder.filePath(QStringLiteral("a b?c#d%20é目/kelpa.sqlite"));
    EXPECT_TRUE(openStore()->write({goals("[1]")}));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(openStore()->value(goalsKey), SettingsValue(QByteArray("[1]")));
    EXPECT_THAT(messages, IsEmpty());
}

} // namespace

} // namespace kelpa
