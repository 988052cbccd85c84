#include "platform/numbers/HighWaterMarkFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelpa {
namespace {

class HighWaterMarkFileTest : public testing::Test
{
protected:
    void write(const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("window-numbers"));
};

TEST_F(HighWaterMarkFileTest, A_reserved_number_is_the_mark_of_the_next_start)
{
    EXPECT_EQ(HighWaterMarkFile(path, {}).read(), 0U);
    EXPECT_TRUE(HighWaterMarkFile(path, {}).reserve(4'000'000'000));
    EXPECT_EQ(HighWaterMarkFile(path, {}).read(), 4'000'000'000U);
}

TEST_F(HighWaterMarkFileTest, An_assigned_number_above_it_raises_the_mark)
{
    write("512\n");
    EXPECT_EQ(HighWaterMarkFile(path, {12, 4127}).read(), 4127U);
    EXPECT_EQ(HighWaterMarkFile(path, {12}).read(), 512U);
}

TEST_F(HighWaterMarkFileTest, A_malformed_file_counts_as_none)
{
    for (const QByteArray& content : {QByteArray("many"), QByteArray("-7"), QByteArray(),
                                      QByteArray("4294967296"), QByteArray(1000, '9')}) {
        write(content);
        EXPECT_EQ(HighWaterMarkFile(path, {9}).read(), 9U);
    }
}

TEST_F(HighWaterMarkFileTest, A_number_that_leaves_too_few_for_new_windows_is_not_believed)
{
    for (const QByteArray& content : {QByteArray("4294967295\n"), QByteArray("4293918720\n")}) {
        write(content);
        EXPECT_EQ(HighWaterMarkFile(path, {9, 4'294'967'295, 4'293'918'720}).read(), 9U);
    }
    write("4293918719\n");
    EXPECT_EQ(HighWaterMarkFile(path, {9}).read(), 4'293'918'719U);
    EXPECT_EQ(HighWaterMarkFile(folder.filePath(QStringLiteral("none")), {4'294'967'295}).read(),
              0U);

    write("4294967295\n");
    EXPECT_TRUE(HighWaterMarkFile(path, {9}).reserve(265));
    EXPECT_EQ(HighWaterMarkFile(path, {}).read(), 265U);
}

TEST_F(HighWaterMarkFileTest, A_file_that_cannot_be_written_is_no_success)
{
    HighWaterMarkFile file(folder.filePath(QStringLiteral("late/window-numbers")), {7});
    EXPECT_FALSE(file.reserve(256));
    EXPECT_EQ(file.read(), 7U);

    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("late")));
    EXPECT_TRUE(file.reserve(256));
    EXPECT_EQ(file.read(), 256U);
}

TEST_F(HighWaterMarkFileTest, A_greater_number_in_the_file_stays)
{
    write("5000\n");
    EXPECT_TRUE(HighWaterMarkFile(path, {}).reserve(256));
    EXPECT_EQ(HighWaterMarkFile(path, {}).read(), 5000U);
}

} // namespace
} // namespace kelpa
