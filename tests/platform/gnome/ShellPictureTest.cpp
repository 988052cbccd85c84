#include "platform/gnome/ShellPicture.h"

#include "platform/FileDescriptor.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace kelpa::gnome {
namespace {

QByteArray png(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

FileDescriptor fileWith(const QByteArray& contents)
{
    FileDescriptor file(::memfd_create("picture", MFD_CLOEXEC));
    EXPECT_EQ(::write(file.number(), contents.constData(), std::size_t(contents.size())),
              contents.size());
    return file;
}

TEST(ShellPicture, Is_read_from_the_beginning_of_its_file)
{
    // Wherever the sender has left the position.
    const FileDescriptor file = fileWith(png(40, 30));
    const std::optional<QImage> image = readPicture(file.number(), {64, 48});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(40, 30));
    EXPECT_EQ(image->pixelColor(39, 29), QColor(10, 200, 30));
}

TEST(ShellPicture, Larger_than_it_was_to_be_it_is_refused)
{
    EXPECT_FALSE(readPicture(fileWith(png(65, 48)).number(), {64, 48}));
    EXPECT_FALSE(readPicture(fileWith(png(64, 49)).number(), {64, 48}));
    EXPECT_TRUE(readPicture(fileWith(png(64, 48)).number(), {64, 48}));
    EXPECT_FALSE(readPicture(fileWith(png(1, 1)).number(), {0, 0}));
}

TEST(ShellPicture, What_is_no_picture_is_refused)
{
    const QByteArray whole = png(64, 48);
    EXPECT_FALSE(readPicture(fileWith({}).number(), {64, 48}));
    EXPECT_FALSE(readPicture(fileWith("GIF89a").number(), {64, 48}));
    EXPECT_FALSE(readPicture(fileWith(whole.left(30)).number(), {64, 48}));
    EXPECT_FALSE(readPicture(-1, {64, 48}));
    // A file that is too long is not even read.
    const FileDescriptor file = fileWith(whole);
    ASSERT_EQ(::ftruncate(file.number(), 1LL << 40), 0);
    EXPECT_FALSE(readPicture(file.number(), {64, 48}));
}

TEST(ShellPicture, Nothing_is_read_from_what_might_not_answer)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileDescriptor reading(ends[0]);
    const FileDescriptor writing(ends[1]);
    EXPECT_FALSE(readPicture(reading.number(), {64, 48}));
    const FileDescriptor device(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
    EXPECT_FALSE(readPicture(device.number(), {64, 48}));
}

} // namespace
} // namespace kelpa::gnome
