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

TEST_F(HighWaterMarkFileTest, A_reserved_number_is_the_floor_of_the_next_start)
{
    EXPECT_EQ(HighWaterMarkFile(path, {}).floor(), 0U);
    EXPECT_TRUE(HighWaterMarkFile(path, {}).reserve(4'000'000'000));
    EXPECT_EQ(HighWaterMarkFile(path, {}).floor(), 4'000'000'000U);
}

TEST_F(HighWaterMarkFileTest, An_assigned_number_above_it_raises_the_floor)
{
    write("512\n");
    EXPECT_EQ(HighWaterMarkFile(path, {12, 4127}).floor(), 4127U);
    EXPECT_EQ(HighWaterMarkFile(path, {12}).floor(), 512U);
}

TEST_F(HighWaterMarkFileTest, A_file_with_anything_else_counts_as_none)
{
    for (const QByteArray& content : {QByteArray("many"), QByteArray("-7"), QByteArray(),
                                      QByteArray("4294967296"), QByteArray(1000, '9')}) {
        write(content);
        EXPECT_EQ(HighWaterMarkFile(path, {9}).floor(), 9U);
    }
}

TEST_F(HighWaterMarkFileTest, A_number_that_leaves_too_few_for_new_windows_is_not_believed)
{
    for (const QByteArray& content : {QByteArray("4294967295\n"), QByteArray("4293918720\n")}) {
        write(content);
        EXPECT_EQ(HighWaterMarkFile(path, {9, 4'294'967'295, 4'293'918'720}).floor(), 9U);
    }
    write("4293918719\n");
    EXPECT_EQ(HighWaterMarkFile(path, {9}).floor(), 4'293'918'719U);
    EXPECT_EQ(HighWaterMarkFile(folder.filePath(QStringLiteral("none")), {4'294'967'295}).floor(),
              0U);

    write("4294967295\n");
    EXPECT_TRUE(HighWaterMarkFile(path, {9}).reserve(265));
    EXPECT_EQ(HighWaterMarkFile(path, {}).floor(), 265U);
}

TEST_F(HighWaterMarkFileTest, A_place_that_cannot_be_written_is_no_success)
{
    HighWaterMarkFile file(folder.filePath(QStringLiteral("late/window-numbers")), {7});
    EXPECT_FALSE(file.reserve(256));
    EXPECT_EQ(file.floor(), 7U);

    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("late")));
    EXPECT_TRUE(file.reserve(256));
    EXPECT_EQ(file.floor(), 256U);
}

TEST_F(HighWaterMarkFileTest, A_greater_number_in_the_file_stays)
{
    write("5000\n");
    EXPECT_TRUE(HighWaterMarkFile(path, {}).reserve(256));
    EXPECT_EQ(HighWaterMarkFile(path, {}).floor(), 5000U);
}

} // namespace
} // namespace kelpa
