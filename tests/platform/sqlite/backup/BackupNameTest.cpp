// The names of backups, and which of them are kept.
#include "platform/sqlite/backup/BackupName.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kelpa {

void PrintTo(const BackupName& name, std::ostream* out)
{
    *out << qPrintable(name.fileName());
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

BackupName backupAt(const std::string& text, BackupReason reason = BackupReason::daily)
{
    return {QDateTime::fromString(QString::fromStdString(text), Qt::ISODate), reason};
}

/// One backup a day at 09:00 UTC, the last on `last`.
QList<BackupName> dailyUntil(const std::string& last, int days)
{
    const BackupName newest = backupAt(last + "T09:00:00Z");
    QList<BackupName> backups;
    for (int i = 0; i < days; ++i)
        backups.append({newest.time.addDays(-i), BackupReason::daily});
    return backups;
}

std::vector<std::string> daysOf(const QList<BackupName>& backups)
{
    std::vector<std::string> days;
    for (const BackupName& backup : backups)
        days.push_back(backup.time.date().toString(Qt::ISODate).toStdString());
    return days;
}

QList<BackupName> keptOf(QList<BackupName> backups, const QTimeZone& zone = QTimeZone::utc())
{
    // The newest one was just made.
    const BackupName added = *std::ranges::max_element(backups, {}, &BackupName::time);
    for (const BackupName& removed : backupsToRemove(backups, added, zone))
        backups.removeAll(removed);
    return backups;
}

TEST(BackupName, Says_when_and_why)
{
    EXPECT_EQ(backupAt("2026-11-22T10:15:00Z").fileName(), u"2026-11-22T101500Z.sqlite");
    EXPECT_EQ(backupAt("2026-11-22T10:15:00Z", BackupReason::beforeRestore).fileName(),
              u"2026-11-22T101500Z.before-restore.sqlite");
    EXPECT_EQ(backupAt("2026-11-22T10:15:00Z", BackupReason::beforeImport).fileName(),
              u"2026-11-22T101500Z.before-import.sqlite");
    EXPECT_EQ(backupAt("2026-11-22T10:15:00Z").text(), u"2026-11-22T101500Z");
}

TEST(BackupName, Is_read_from_its_files_name)
{
    for (const BackupReason reason :
         {BackupReason::daily, BackupReason::beforeRestore, BackupReason::beforeImport}) {
        const BackupName name = backupAt("2026-02-28T23:59:59Z", reason);
        EXPECT_EQ(BackupName::fromFileName(name.fileName()), name);
    }
}

TEST(BackupName, Is_read_also_where_the_persons_clocks_skip_its_hour)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    const auto read =
        BackupName::fromFileName(QStringLiteral("2026-03-29T023000Z.before-import.sqlite"));
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    EXPECT_EQ(read, backupAt("2026-03-29T02:30:00Z", BackupReason::beforeImport));
}

TEST(BackupName, Of_any_other_form_is_none)
{
    for (const char* const name :
         {"", ".sqlite", "unfinished", "2026-11-22.sqlite", "2026-11-22T101500Z",
          "2026-02-30T101500Z.sqlite", "2026-11-22T10:15:00Z.sqlite",
          "2026-11-22T101500Z.sqlite-wal", "2026-11-22T101500.sqlite",
          "2026-11-22T101500Z.by-hand.sqlite", "my 2026-11-22T101500Z.sqlite"})
        EXPECT_EQ(BackupName::fromFileName(QString::fromLatin1(name)), std::nullopt) << name;
}

TEST(BackupsToRemove, Keeps_the_first_week_whole)
{
    EXPECT_EQ(keptOf(dailyUntil("2026-11-22", 7)).size(), 7);
}

TEST(BackupsToRemove, Keeps_seven_days_four_weeks_and_twelve_months)
{
    // 22 November 2026 is a Sunday, so the week of the 16th is the latest of the four.
    EXPECT_THAT(daysOf(keptOf(dailyUntil("2026-11-22", 500))),
                ElementsAre("2026-11-22", "2026-11-21", "2026-11-20", "2026-11-19", "2026-11-18",
                            "2026-11-17", "2026-11-16", "2026-11-15", "2026-11-08", "2026-11-01",
                            "2026-10-31", "2026-09-30", "2026-08-31", "2026-07-31", "2026-06-30",
                            "2026-05-31", "2026-04-30", "2026-03-31", "2026-02-28", "2026-01-31",
                            "2025-12-31"));
}

TEST(BackupsToRemove, Counts_only_days_that_have_a_backup)
{
    QList<BackupName> backups;
    for (int year = 2010; year <= 2026; ++year)
        backups.prepend(backupAt(std::to_string(year) + "-05-01T09:00:00Z"));
    // Twelve months that have a backup reach twelve years back.
    EXPECT_EQ(keptOf(backups).size(), 12);
    EXPECT_EQ(keptOf(backups).constLast(), backupAt("2015-05-01T09:00:00Z"));
}

TEST(BackupsToRemove, A_clock_that_is_wrong_for_a_day_removes_at_most_a_day_a_week_and_a_month)
{
    QList<BackupName> backups = keptOf(dailyUntil("2026-11-22", 500));
    const qsizetype before = backups.size();
    backups.prepend(backupAt("2126-01-01T09:00:00Z"));
    EXPECT_GE(keptOf(backups).size(), before + 1 - 3);
}

TEST(BackupsToRemove, Keeps_every_backup_of_the_latest_day_up_to_twenty)
{
    QList<BackupName> backups;
    for (int minute = 0; minute < 30; ++minute)
        backups.append(backupAt("2026-11-22T10:" + std::to_string(10 + minute) + ":00Z",
                                BackupReason::beforeRestore));
    EXPECT_EQ(keptOf(backups), backups.mid(10));
    backups.append(backupAt("2026-11-23T09:00:00Z"));
    EXPECT_THAT(keptOf(backups),
                ElementsAre(backupAt("2026-11-22T10:39:00Z", BackupReason::beforeRestore),
                            backupAt("2026-11-23T09:00:00Z")));
}

TEST(BackupsToRemove, Days_begin_where_the_person_is)
{
    // Two days in UTC, but one in Tokyo.
    const QList<BackupName> backups =
        dailyUntil("2026-11-30", 15) +
        QList{backupAt("2026-11-30T14:00:00Z"), backupAt("2026-11-29T16:00:00Z")};
    const QTimeZone tokyo("Asia/Tokyo");
    ASSERT_TRUE(tokyo.isValid());
    EXPECT_FALSE(keptOf(backups).contains(backupAt("2026-11-29T09:00:00Z")));
    EXPECT_TRUE(keptOf(backups, tokyo).contains(backupAt("2026-11-29T09:00:00Z")));
}

TEST(BackupsToRemove, The_day_of_the_one_that_was_made_keeps_twenty_whatever_later_dates_there_are)
{
    QList<BackupName> backups{backupAt("2126-01-01T09:00:00Z")};
    for (int minute = 10; minute < 14; ++minute)
        backups.append(backupAt("2026-11-22T10:" + std::to_string(minute) + ":00Z",
                                BackupReason::beforeRestore));
    EXPECT_THAT(backupsToRemove(backups, backups[2], QTimeZone::utc()), IsEmpty());
}

TEST(BackupsToRemove, The_one_that_was_made_stays_however_old_its_date_is)
{
    QList<BackupName> backups = dailyUntil("2026-11-22", 500);
    const BackupName added = backupAt("1999-01-01T09:00:00Z");
    backups.append(added);
    EXPECT_FALSE(backupsToRemove(backups, added, QTimeZone::utc()).contains(added));
}

TEST(BackupsToRemove, The_order_given_does_not_matter)
{
    QList<BackupName> backups = dailyUntil("2026-11-22", 100);
    const auto kept = daysOf(keptOf(backups));
    std::ranges::reverse(backups);
    auto reversed = daysOf(keptOf(backups));
    std::ranges::reverse(reversed);
    EXPECT_EQ(reversed, kept);
}

} // namespace

} // namespace kelpa
