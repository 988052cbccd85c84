#include "platform/freedesktop/icons/IconFile.h"

#include "platform/freedesktop/icons/IconThemesFixture.h"

#include <QElapsedTimer>

#include <thread>

#include <sys/stat.h>

namespace kelpa::test {
namespace {

/// `repeats` levels, each of which draws the one before ten times.
QByteArray drawingOfRepetitions(int repeats)
{
    QByteArray text = "<svg xmlns=\"http://www.w3.org/2000/svg\" "
                      "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"9\" height=\"9\"><defs>"
                      "<g id=\"l0\"><rect width=\"9\" height=\"9\"/></g>";
    for (int level = 1; level <= repeats; ++level) {
        text += "<g id=\"l" + QByteArray::number(level) + "\">";
        for (int i = 0; i < 10; ++i) {
            text += "<use xlink:href=\"#l" + QByteArray::number(level - 1) + "\"/>";
        }
        text += "</g>";
    }
    return text + "</defs><use xlink:href=\"#l" + QByteArray::number(repeats) + "\"/></svg>";
}

class IconFiles : public testing::Test
{
protected:
    TemporaryDataDirectory data;

    QImage load(const QByteArray& contents, int pixels)
    {
        data.write(QStringLiteral("icon"), contents);
        return iconFromFile(data.path(QStringLiteral("icon")), pixels);
    }
};

TEST_F(IconFiles, A_larger_picture_is_scaled_down_and_a_smaller_one_left_as_it_is)
{
    EXPECT_EQ(load(png(256, Qt::red), 48).size(), QSize(48, 48));
    EXPECT_EQ(load(png(256, Qt::red), 48).pixelColor(20, 20), QColor(Qt::red));
    EXPECT_EQ(load(png(16, Qt::red), 48).size(), QSize(16, 16));
}

TEST_F(IconFiles, A_picture_of_two_colours_keeps_them_when_it_is_scaled_down)
{
    QImage image(64, 64, QImage::Format_Mono);
    image.setColorTable({qRgb(200, 30, 40), qRgb(30, 60, 200)});
    image.fill(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    const QImage icon = load(bytes, 20);
    ASSERT_EQ(icon.size(), QSize(20, 20));
    EXPECT_EQ(icon.pixelColor(9, 9), QColor(200, 30, 40));
    EXPECT_EQ(icon.pixelColor(10, 9), QColor(200, 30, 40));
}

TEST_F(IconFiles, A_drawing_is_drawn_at_the_requested_size)
{
    const QImage image = load(greenDrawing, 64);
    EXPECT_EQ(image.size(), QSize(64, 64));
    EXPECT_EQ(image.pixelColor(32, 32), QColor(0, 255, 0));
}

TEST_F(IconFiles, A_drawing_can_be_drawn_on_another_thread)
{
    QImage image;
    std::jthread([&] { image = load(greenDrawing, 64); }).join();
    EXPECT_EQ(image.pixelColor(32, 32), QColor(0, 255, 0));
}

TEST_F(IconFiles, An_XPM_picture_is_read)
{
    const QImage image = load("/* XPM */\nstatic char *i[] = {\n\"2 2 1 1\",\n\"a c #0000ff\",\n"
                              "\"aa\",\n\"aa\"};\n",
                              48);
    EXPECT_EQ(image.size(), QSize(2, 2));
    EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::blue));
}

TEST_F(IconFiles, A_file_that_is_no_picture_gives_none)
{
    EXPECT_TRUE(load("", 48).isNull());
    EXPECT_TRUE(load("plain text", 48).isNull());
    EXPECT_TRUE(load(png(48, Qt::red).left(20), 48).isNull());
    EXPECT_TRUE(load("<svg xmlns=\"http://www.w3.org/2000/svg\"><rect", 48).isNull());
    EXPECT_TRUE(load("<html><body/></html>", 48).isNull());
    EXPECT_TRUE(load(QByteArray("\x1f\x8b\x08\0\0\0\0\0", 8), 48).isNull());
    EXPECT_TRUE(load(png(48, Qt::red), 0).isNull());
    EXPECT_TRUE(iconFromFile(data.path(QStringLiteral("absent")), 48).isNull());
    EXPECT_TRUE(iconFromFile(data.path(), 48).isNull());
}

TEST_F(IconFiles, A_pipe_is_not_waited_for)
{
    const QString path = data.path(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(path.toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(iconFromFile(path, 48).isNull());
}

TEST_F(IconFiles, A_picture_that_claims_a_giant_size_is_not_decoded)
{
    QByteArray giant = png(4, Qt::red);
    // Width and height of the header, then its checksum is wrong as well.
    giant.replace(16, 8, QByteArray("\0\0\xff\xff\0\0\xff\xff", 8));
    EXPECT_TRUE(load(giant, 48).isNull());
    EXPECT_TRUE(
        load("/* XPM */\nstatic char *i[] = {\n\"60000 60000 1 1\",\n\"a c #0000ff\"};\n", 48)
            .isNull());
    EXPECT_TRUE(load(png(5000, Qt::red), 48).isNull());
}

TEST_F(IconFiles, A_file_of_more_than_eight_mebibytes_is_not_read)
{
    EXPECT_TRUE(load(png(48, Qt::red) + QByteArray(9 << 20, '\0'), 48).isNull());
}

TEST_F(IconFiles, A_drawing_that_repeats_itself_a_little_is_drawn)
{
    EXPECT_EQ(load(drawingOfRepetitions(2), 9).pixelColor(4, 4), QColor(Qt::black));
}

TEST_F(IconFiles, A_drawing_of_a_thousand_million_repetitions_is_refused_at_once)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(load(drawingOfRepetitions(9), 48).isNull());
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(IconFiles, A_drawing_within_itself_is_refused)
{
    EXPECT_TRUE(load("<svg xmlns=\"http://www.w3.org/2000/svg\" "
                     "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"9\" height=\"9\">"
                     "<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\"><use "
                     "xlink:href=\"#a\"/></g></svg>",
                     48)
                    .isNull());
}

TEST_F(IconFiles, A_drawing_of_endless_depth_is_refused)
{
    QByteArray text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\">";
    text += QByteArray("<g>").repeated(100'000) + QByteArray("</g>").repeated(100'000) + "</svg>";
    EXPECT_TRUE(load(text, 48).isNull());
}

TEST_F(IconFiles, A_drawing_that_refers_to_another_file_or_declares_entities_is_refused)
{
    EXPECT_TRUE(load("<svg xmlns=\"http://www.w3.org/2000/svg\" "
                     "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"9\" height=\"9\">"
                     "<image xlink:href=\"/etc/hostname\" width=\"9\" height=\"9\"/></svg>",
                     48)
                    .isNull());
    EXPECT_TRUE(load("<!DOCTYPE svg [<!ENTITY a \"aaaa\">]><svg "
                     "xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>",
                     48)
                    .isNull());
}

} // namespace
} // namespace kelpa::test
