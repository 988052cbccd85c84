#include "platform/sqlite/WriteBehindSettings.h"

#include "platform/sqlite/SettingsFixture.h"
#include "platform/sqlite/SlowDisk.h"

#include <QCoreApplication>

#include <thread>

namespace kelpa {

namespace {

using namespace test;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Longer than any test runs: a call that may wait so long ends because the disk has replied.
constexpr auto always = 1h;
/// A call that may not wait at all ends although the disk has not replied.
constexpr auto never = 0ms;

class WriteBehind : public SettingsFixture
{
protected:
    std::unique_ptr<WriteBehindSettings> openBehind(std::chrono::milliseconds patience)
    {
        auto opened = std::make_unique<WriteBehindSettings>(openStore(), patience);
        m_watch = opened->watchSaves([this](bool isSaved) { ends.append(isSaved); });
        return opened;
    }

    /// What another program reads in the file.
    QList<QString> stored() const
    {
        return rowsOf(path,
                      QStringLiteral("SELECT CAST(value AS TEXT) FROM settings ORDER BY key"));
    }

    /// Runs the event loop until the end of a save is reported.
    void waitForEnd()
    {
        const qsizetype before = ends.size();
        while (ends.size() == before)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }

    SlowDisk disk;
    /// What the watcher was told.
    QList<bool> ends;

private:
    std::unique_ptr<Subscription> m_watch;
};

TEST_F(WriteBehind, On_a_healthy_disk_a_change_is_stored_before_the_call_returns)
{
    const auto settings = openBehind(always);
    for (const char* const json : {"[1]", "[2]", "[3]"}) {
        EXPECT_TRUE(settings->write({goals(json), language(QStringLiteral("de"))}));
        EXPECT_FALSE(settings->isSaving());
        EXPECT_THAT(stored(), ElementsAre(QLatin1String(json), u"de"));
    }
    QCoreApplication::processEvents();
    EXPECT_THAT(ends, IsEmpty()) << "the calls had the result";
}

TEST_F(WriteBehind, On_a_hanging_disk_no_call_waits_and_the_last_values_reach_it_afterwards)
{
    const auto settings = openBehind(never);
    disk.hang();
    for (int i = 1; i <= 100; ++i) {
        EXPECT_FALSE(settings->write({goals(QByteArray::number(i))}));
        EXPECT_EQ(settings->value(goalsKey), SettingsValue(QByteArray::number(i)));
        EXPECT_TRUE(settings->isSaving());
    }
    EXPECT_FALSE(settings->flush());
    EXPECT_FALSE(settings->finish(never));
    disk.recover();
    waitForEnd();
    EXPECT_FALSE(settings->isSaving());
    EXPECT_THAT(ends, ElementsAre(true));
    EXPECT_EQ(settings->value(goalsKey), SettingsValue(QByteArray("100")));
    EXPECT_THAT(stored(), ElementsAre(u"100"));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(WriteBehind, On_a_hanging_disk_a_call_gives_up_waiting)
{
    const auto settings = openBehind(1ms);
    disk.hang();
    // Without its limit, this would never return.
    EXPECT_FALSE(settings->write({goals("[1]")}));
    disk.waitForSync();
    EXPECT_TRUE(settings->isSaving());
    EXPECT_FALSE(settings->flush());
    EXPECT_EQ(settings->value(goalsKey), SettingsValue(QByteArray("[1]")));
    disk.recover();
    EXPECT_TRUE(settings->finish(always));
    EXPECT_THAT(stored(), ElementsAre(u"[1]"));
}

TEST_F(WriteBehind, A_late_save_is_waited_for_once)
{
    const auto settings = openBehind(always);
    EXPECT_TRUE(settings->write({goals("[0]")}));
    disk.hang();
    EXPECT_FALSE(settings->copyAside(goalsKey));
    disk.waitForSync();
    EXPECT_FALSE(settings->finish(never));
    // Each of these would wait until the disk replies.
    for (int i = 1; i <= 100; ++i)
        EXPECT_FALSE(settings->write({goals(QByteArray::number(i))}));
    disk.recover();
    EXPECT_TRUE(settings->finish(always));
    EXPECT_TRUE(settings->write({goals("[1]")})) << "the next one is not late";
}

TEST_F(WriteBehind, Saves_that_wait_are_combined_into_one)
{
    const auto settings = openBehind(never);
    EXPECT_FALSE(settings->write({goals("[0]")}));
    EXPECT_TRUE(settings->finish(always));
    disk.hang();
    settings->write({goals("[1]")});
    disk.waitForSync();
    const int before = disk.syncCount();
    for (int i = 2; i <= 100; ++i)
        settings->write({goals(QByteArray::number(i)), language(QString::number(i))});
    disk.recover();
    EXPECT_TRUE(settings->finish(always));
    EXPECT_THAT(stored(), ElementsAre(u"100", u"100"));
    EXPECT_EQ(disk.syncCount() - before, 2) << "one for the save under way, one for the others";
}

TEST_F(WriteBehind, Others_see_whole_saves_in_their_order)
{
    const auto settings = openBehind(never);
    settings->write({goals("[0]"), language(QStringLiteral("0"))});
    EXPECT_TRUE(settings->finish(always));
    disk.hang();
    settings->write({goals("[1]"), language(QStringLiteral("1"))});
    disk.waitForSync();
    settings->write({goals("[2]"), language(QStringLiteral("2"))});
    settings->write({goals("[3]")});
    EXPECT_THAT(stored(), ElementsAre(u"[0]", u"0"));

    const int before = disk.syncCount();
    disk.letOneSyncPass();
    while (disk.syncCount() == before)
        std::this_thread::yield();
    disk.waitForSync();
    EXPECT_THAT(stored(), ElementsAre(u"[1]", u"1"));
    disk.recover();
    EXPECT_TRUE(settings->finish(always));
    EXPECT_THAT(stored(), ElementsAre(u"[3]", u"2"));
}

TEST_F(WriteBehind, The_end_waits_for_the_disk)
{
    const auto settings = openBehind(never);
    disk.hang();
    settings->write({goals("[1]")});
    disk.waitForSync();
    settings->write({goals("[2]")});
    std::thread later([this] { disk.recover(); });
    EXPECT_TRUE(settings->finish(always));
    later.join();
    EXPECT_FALSE(settings->isSaving());
    EXPECT_THAT(stored(), ElementsAre(u"[2]"));
}

TEST_F(WriteBehind, What_still_waits_when_it_is_destroyed_is_written)
{
    auto settings = openBehind(never);
    disk.hang();
    settings->write({goals("[1]")});
    disk.waitForSync();
    settings->write({goals("[2]")});
    std::thread later([this] { disk.recover(); });
    settings.reset();
    later.join();
    EXPECT_THAT(stored(), ElementsAre(u"[2]"));
}

TEST_F(WriteBehind, Closing_the_file_waits_no_longer_than_it_may)
{
    const auto settings = openBehind(always);
    EXPECT_TRUE(settings->write({goals("[1]")}));
    disk.hang();
    EXPECT_FALSE(settings->close(never));
    EXPECT_FALSE(settings->isSaving()) << "the log has everything";
    disk.recover();
    EXPECT_TRUE(settings->close(always));
    EXPECT_FALSE(QFile::exists(path + QStringLiteral("-wal")));
    EXPECT_THAT(stored(), ElementsAre(u"[1]"));
}

TEST_F(WriteBehind, A_refused_save_is_reported_and_a_later_one_writes_it_too)
{
    ASSERT_TRUE(QDir().mkdir(path));
    const auto settings = openBehind(never);
    EXPECT_FALSE(settings->write({goals("[1]")}));
    waitForEnd();
    EXPECT_THAT(ends, ElementsAre(false));
    EXPECT_FALSE(settings->isSaving());
    EXPECT_EQ(settings->value(goalsKey), SettingsValue(QByteArray("[1]")));

    ASSERT_TRUE(QDir().rmdir(path));
    settings->write({language(QStringLiteral("de"))});
    waitForEnd();
    EXPECT_THAT(ends, ElementsAre(false, true));
    EXPECT_THAT(stored(), ElementsAre(u"[1]", u"de"));
}

TEST_F(WriteBehind, A_call_that_waits_returns_that_a_save_was_refused)
{
    ASSERT_TRUE(QDir().mkdir(path));
    const auto settings = openBehind(always);
    EXPECT_FALSE(settings->write({goals("[1]")}));
    EXPECT_FALSE(settings->isSaving());
    EXPECT_EQ(messages.size(), 1);
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_TRUE(settings->flush());
    EXPECT_THAT(stored(), ElementsAre(u"[1]"));
}

TEST_F(WriteBehind, What_is_wrong_is_known_after_each_attempt)
{
    ASSERT_TRUE(QDir().mkdir(path));
    const auto settings = openBehind(never);
    EXPECT_EQ(settings->status(),
              (SettingsStatus{SettingsError::isFolder, false, false, std::nullopt, false}));
    EXPECT_FALSE(settings->write({goals("[1]")}));
    EXPECT_TRUE(settings->status().hasUnsavedValues);
    waitForEnd();
    EXPECT_EQ(settings->status(),
              (SettingsStatus{SettingsError::isFolder, false, true, std::nullopt, false}));
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_TRUE(settings->finish(always));
    EXPECT_EQ(settings->status(), SettingsStatus());
}

TEST_F(WriteBehind, What_is_already_stored_is_not_written_again)
{
    const auto settings = openBehind(always);
    EXPECT_TRUE(settings->write({goals("[1]")}));
    disk.hang();
    EXPECT_TRUE(settings->write({goals("[1]")}));
    disk.recover();
}

TEST_F(WriteBehind, A_value_that_is_copied_aside_is_there_when_its_key_is_overwritten_at_once)
{
    EXPECT_TRUE(openStore()->write({goals("not JSON")}));
    const auto settings = openBehind(never);
    disk.hang();
    settings->write({language(QStringLiteral("de"))});
    disk.waitForSync();
    EXPECT_TRUE(settings->copyAside(languageKey + QStringLiteral(".none")));
    EXPECT_FALSE(settings->copyAside(goalsKey));
    settings->write({goals("[]")});
    disk.recover();
    EXPECT_TRUE(settings->finish(always));
    EXPECT_THAT(copiesAside(goalsKey), ElementsAre(u"not JSON"));
    const QStringList copies = settings->copiesAside(goalsKey);
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(settings->value(copies.first()), SettingsValue(QByteArray("not JSON")));
    EXPECT_EQ(settings->value(goalsKey), SettingsValue(QByteArray("[]")));
}

TEST_F(WriteBehind, What_could_be_read_late_is_copied_aside_unless_it_was_read)
{
    EXPECT_TRUE(openStore()->write({goals("[1]"), language(QStringLiteral("de"))}));
    const QString hidden = folder.filePath(QStringLiteral("hidden"));
    ASSERT_TRUE(QFile::rename(path, hidden));
    ASSERT_TRUE(QDir().mkdir(path));
    const auto settings = openBehind(always);
    EXPECT_FALSE(settings->isLoaded());
    EXPECT_EQ(settings->value(goalsKey), std::nullopt);
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_TRUE(QFile::rename(hidden, path));

    EXPECT_TRUE(settings->flush());
    EXPECT_TRUE(settings->isLoaded());
    EXPECT_EQ(settings->value(goalsKey), SettingsValue(QByteArray("[1]")));
    EXPECT_TRUE(settings->write({goals("[2]"), language(QStringLiteral("fr"))}));
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty()) << "who writes had been given the value";
    EXPECT_THAT(copiesAside(languageKey), ElementsAre(u"de"));
}

} // namespace

} // namespace kelpa
