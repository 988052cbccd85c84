#include "platform/sqlite/SettingsFixture.h"

#include <QFileInfo>

namespace kelpa {

namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

class SqliteDamage : public SettingsFixture
{
protected:
    /// A file with a goals blob of many pages and a language.
    void makeFile()
    {
        ASSERT_TRUE(openStore()->write(
            {goals(QByteArray(1'000'000, 'x')), language(QStringLiteral("de"))}));
        ASSERT_FALSE(QFile::exists(path + QStringLiteral("-wal")));
    }

    void overwrite(qint64 from, qint64 size)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(from));
        ASSERT_EQ(file.write(QByteArray(size, '\xff')), size);
    }

    void expectSavingInANewFile(SqliteSettingsStore& store)
    {
        ASSERT_EQ(messages.size(), 1);
        EXPECT_TRUE(messages[0].contains(u"It was moved to "));
        EXPECT_TRUE(store.write({goals("[1]")}));
        EXPECT_EQ(messages.size(), 1);
        EXPECT_THAT(
            rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings WHERE key = "
                                        "'kelpa.goals'")),
            ElementsAre(u"[1]"));
    }

    QString movedFile() const
    {
        const QStringList files = filesNamed(QStringLiteral("kelpa.sqlite.damaged-*Z"));
        return files.size() == 1 ? folder.filePath(files.first()) : QString();
    }
};

TEST_F(SqliteDamage, A_file_that_is_no_database_is_moved_aside_unchanged)
{
    setContents(path, "Dear diary, " + QByteArray(5000, '.'));
    const auto store = openStore();
    EXPECT_EQ(store->value(goalsKey), std::nullopt);
    EXPECT_EQ(contents(movedFile()), "Dear diary, " + QByteArray(5000, '.'));
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, The_log_and_the_index_of_a_damaged_file_go_with_it)
{
    setContents(path, QByteArray(5000, 'x'));
    setContents(path + QStringLiteral("-wal"), "log");
    const auto store = openStore();
    EXPECT_EQ(contents(movedFile() + QStringLiteral("-wal")), "log");
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, The_database_of_another_program_is_moved_aside_whole)
{
    EXPECT_TRUE(RawDatabase(path).run("PRAGMA application_id = 7; CREATE TABLE theirs(a);"
                                      "INSERT INTO theirs VALUES('kept')"));
    const auto store = openStore();
    EXPECT_THAT(rowsOf(movedFile(), QStringLiteral("SELECT a FROM theirs")), ElementsAre(u"kept"));
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, A_table_of_another_form_is_moved_aside)
{
    EXPECT_TRUE(RawDatabase(path).run("CREATE TABLE settings(name, content);"
                                      "INSERT INTO settings VALUES('a', 'kept')"));
    const auto store = openStore();
    EXPECT_THAT(rowsOf(movedFile(), QStringLiteral("SELECT content FROM settings")),
                ElementsAre(u"kept"));
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, A_damaged_page_costs_only_the_value_it_belongs_to)
{
    makeFile();
    overwrite(QFileInfo(path).size() / 2, 20'000);
    const QByteArray damaged = contents(path);
    const auto store = openStore();
    EXPECT_EQ(store->value(goalsKey), std::nullopt);
    EXPECT_EQ(store->value(languageKey), SettingsValue(QStringLiteral("de")));
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT value FROM settings")), ElementsAre(u"de"));
    EXPECT_EQ(contents(movedFile()), damaged);
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, A_file_whose_first_page_is_damaged_is_moved_aside)
{
    makeFile();
    overwrite(100, 4000);
    const QByteArray damaged = contents(path);
    const auto store = openStore();
    EXPECT_EQ(store->value(languageKey), std::nullopt);
    EXPECT_EQ(contents(movedFile()), damaged);
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, A_file_cut_short_is_moved_aside)
{
    makeFile();
    ASSERT_TRUE(QFile::resize(path, QFileInfo(path).size() / 3));
    const auto store = openStore();
    EXPECT_EQ(store->value(goalsKey), std::nullopt);
    EXPECT_FALSE(movedFile().isEmpty());
    expectSavingInANewFile(*store);
}

TEST_F(SqliteDamage, An_empty_file_is_a_new_one)
{
    setContents(path, QByteArray());
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(SqliteDamage, The_file_of_a_later_release_is_left_alone)
{
    makeFile();
    EXPECT_TRUE(RawDatabase(path).run("PRAGMA user_version = 2"));
    const QByteArray before = contents(path);
    const auto store = openStore();
    EXPECT_EQ(store->value(languageKey), std::nullopt);
    EXPECT_FALSE(store->write({language(QStringLiteral("fr"))}));
    EXPECT_FALSE(store->write({goals("[]")}));
    EXPECT_EQ(store->value(languageKey), SettingsValue(QStringLiteral("fr")));
    EXPECT_EQ(contents(path), before);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(u"a later release of Kelpa wrote it"));
}

} // namespace

} // namespace kelpa
