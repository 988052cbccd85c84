#include "platform/freedesktop/icons/IconLookup.h"

#include "platform/freedesktop/applications/TemporaryDataDirectory.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/freedesktop/icons/IconFile.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>

#include <chrono>
#include <thread>

#include <sys/stat.h>

using namespace kelpa;
using namespace std::chrono_literals;

namespace {

QByteArray png(int side, Qt::GlobalColor color)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

const QByteArray greenDrawing = R"(<?xml version="1.0"?>
<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16" viewBox="0 0 16 16">
<rect width="16" height="16" fill="#00ff00"/></svg>)";

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

class IconThemes : public testing::Test
{
protected:
    TemporaryDataDirectory data;

    void writeTheme(const QString& name, const QByteArray& inherits, const QByteArray& folders)
    {
        QByteArray list;
        for (const QByteArray& line : folders.split('\n')) {
            if (line.startsWith('[')) {
                list += line.mid(1, line.size() - 2) + ',';
            }
        }
        data.write(QStringLiteral("icons/%1/index.theme").arg(name),
                   "[Icon Theme]\nName=Theme\nInherits=" + inherits + "\nDirectories=" + list +
                       "\n" + folders);
    }

    void writeHicolor()
    {
        writeTheme(QStringLiteral("hicolor"), "",
                   "[16x16/apps]\nSize=16\nType=Fixed\n"
                   "[48x48/apps]\nSize=48\nType=Threshold\n"
                   "[24x24@2/apps]\nSize=24\nScale=2\nType=Fixed\n"
                   "[256x256/apps]\nSize=256\nType=Fixed\n"
                   "[scalable/apps]\nSize=128\nMinSize=8\nMaxSize=512\nType=Scalable\n");
    }

    void writeIcon(const QString& relative) { data.write(relative, png(1, Qt::red)); }

    QString find(const QString& theme, const QString& icon, int pixels)
    {
        const IconTheme icons(theme, {data.path(QStringLiteral("icons"))},
                              {data.path(QStringLiteral("pixmaps"))});
        const std::optional<QString> path = icons.find(icon, pixels);
        return path ? path->mid(data.path().size() + 1) : QStringLiteral("(none)");
    }
};

} // namespace

TEST_F(IconThemes, The_folder_made_for_the_size_is_taken)
{
    writeHicolor();
    for (const char* folder : {"16x16", "48x48", "256x256"}) {
        writeIcon(QStringLiteral("icons/hicolor/%1/apps/mail.png").arg(QLatin1String(folder)));
    }
    EXPECT_EQ(find({}, QStringLiteral("mail"), 16),
              QStringLiteral("icons/hicolor/16x16/apps/mail.png"));
    EXPECT_EQ(find({}, QStringLiteral("mail"), 48),
              QStringLiteral("icons/hicolor/48x48/apps/mail.png"));
    EXPECT_EQ(find({}, QStringLiteral("mail"), 50),
              QStringLiteral("icons/hicolor/48x48/apps/mail.png"));
}

TEST_F(IconThemes, The_nearest_larger_size_wins_over_a_nearer_smaller_one)
{
    writeHicolor();
    writeIcon(QStringLiteral("icons/hicolor/48x48/apps/mail.png"));
    writeIcon(QStringLiteral("icons/hicolor/256x256/apps/mail.png"));
    EXPECT_EQ(find({}, QStringLiteral("mail"), 64),
              QStringLiteral("icons/hicolor/256x256/apps/mail.png"));
    EXPECT_EQ(find({}, QStringLiteral("mail"), 24),
              QStringLiteral("icons/hicolor/48x48/apps/mail.png"));
    EXPECT_EQ(find({}, QStringLiteral("mail"), 512),
              QStringLiteral("icons/hicolor/256x256/apps/mail.png"));
}

TEST_F(IconThemes, A_drawing_serves_any_size_within_its_range)
{
    writeHicolor();
    writeIcon(QStringLiteral("icons/hicolor/16x16/apps/mail.png"));
    data.write(QStringLiteral("icons/hicolor/scalable/apps/mail.svg"), greenDrawing);
    EXPECT_EQ(find({}, QStringLiteral("mail"), 64),
              QStringLiteral("icons/hicolor/scalable/apps/mail.svg"));
}

TEST_F(IconThemes, A_folder_for_doubled_pixels_counts_by_its_pixels)
{
    writeHicolor();
    writeIcon(QStringLiteral("icons/hicolor/24x24@2/apps/mail.png"));
    writeIcon(QStringLiteral("icons/hicolor/16x16/apps/mail.png"));
    EXPECT_EQ(find({}, QStringLiteral("mail"), 40),
              QStringLiteral("icons/hicolor/24x24@2/apps/mail.png"));
}

TEST_F(IconThemes, The_theme_in_use_comes_first_then_what_it_inherits_then_hicolor)
{
    const QByteArray folder = "[48x48/apps]\nSize=48\n";
    writeHicolor();
    writeTheme(QStringLiteral("child"), "parent", folder);
    writeTheme(QStringLiteral("parent"), "hicolor,child", folder);
    for (const char* icon :
         {"child/48x48/apps/a.png", "parent/48x48/apps/a.png", "hicolor/48x48/apps/a.png",
          "parent/48x48/apps/b.png", "hicolor/48x48/apps/b.png", "hicolor/48x48/apps/c.png"}) {
        writeIcon(QStringLiteral("icons/") + QLatin1String(icon));
    }
    EXPECT_EQ(find(QStringLiteral("child"), QStringLiteral("a"), 48),
              QStringLiteral("icons/child/48x48/apps/a.png"));
    EXPECT_EQ(find(QStringLiteral("child"), QStringLiteral("b"), 48),
              QStringLiteral("icons/parent/48x48/apps/b.png"));
    EXPECT_EQ(find(QStringLiteral("child"), QStringLiteral("c"), 48),
              QStringLiteral("icons/hicolor/48x48/apps/c.png"));
    EXPECT_EQ(find(QStringLiteral("absent"), QStringLiteral("a"), 48),
              QStringLiteral("icons/hicolor/48x48/apps/a.png"));
}

TEST_F(IconThemes, Icons_of_no_theme_are_the_last_resort)
{
    writeHicolor();
    writeIcon(QStringLiteral("icons/loose.png"));
    writeIcon(QStringLiteral("pixmaps/old.xpm"));
    EXPECT_EQ(find({}, QStringLiteral("loose"), 48), QStringLiteral("icons/loose.png"));
    EXPECT_EQ(find({}, QStringLiteral("old"), 48), QStringLiteral("pixmaps/old.xpm"));
    EXPECT_EQ(find({}, QStringLiteral("old.xpm"), 48), QStringLiteral("pixmaps/old.xpm"));
}

TEST_F(IconThemes, An_absolute_path_is_taken_as_it_is)
{
    writeIcon(QStringLiteral("somewhere/own.png"));
    EXPECT_EQ(find({}, data.path(QStringLiteral("somewhere/own.png")), 48),
              QStringLiteral("somewhere/own.png"));
    EXPECT_EQ(find({}, data.path(QStringLiteral("somewhere/absent.png")), 48),
              QStringLiteral("(none)"));
}

TEST_F(IconThemes, A_name_does_not_lead_out_of_the_themes)
{
    writeHicolor();
    writeIcon(QStringLiteral("secret.png"));
    writeIcon(QStringLiteral("icons/hicolor/48x48/secret.png"));
    EXPECT_EQ(find({}, QStringLiteral("../secret"), 48), QStringLiteral("(none)"));
    EXPECT_EQ(find({}, QStringLiteral(".."), 48), QStringLiteral("(none)"));
    EXPECT_EQ(find({}, QString(), 48), QStringLiteral("(none)"));
    EXPECT_EQ(find(QStringLiteral("../../icons/hicolor"), QStringLiteral("secret"), 48),
              QStringLiteral("(none)"));
    writeTheme(QStringLiteral("climbing"), "", "[../..]\nSize=48\n");
    EXPECT_EQ(find(QStringLiteral("climbing"), QStringLiteral("secret"), 48),
              QStringLiteral("(none)"));
}

TEST_F(IconThemes, A_broken_index_is_a_theme_without_icons)
{
    writeHicolor();
    writeIcon(QStringLiteral("icons/hicolor/48x48/apps/mail.png"));
    for (const QByteArray& index : {QByteArray("\xff\xfe\0garbage", 10),
                                    QByteArray("[Icon Theme]\nDirectories=a,b\n[a]\n"
                                               "Size=-4\n[b]\nSize=99999999999\n"),
                                    QByteArray(3 << 20, '[')}) {
        data.write(QStringLiteral("icons/broken/index.theme"), index);
        EXPECT_EQ(find(QStringLiteral("broken"), QStringLiteral("mail"), 48),
                  QStringLiteral("icons/hicolor/48x48/apps/mail.png"));
    }
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

class IconsOfApplications : public IconThemes
{
protected:
    DesktopEntries entries{{data.path()}, 0ms};
    IconLookup lookup{entries, QString()};
    int asked = 0;
    ApplicationIcons icons{entries, lookup, [this](WindowID window, int pixels) {
                               ++asked;
                               QImage image(pixels, pixels, QImage::Format_ARGB32);
                               image.fill(window == 7 ? Qt::yellow : Qt::black);
                               return image;
                           }};

    QColor iconOf(std::optional<QString> id)
    {
        WindowItem window;
        window.id = 7;
        window.bundleIdentifier = std::move(id);
        return icons.icon(window, 16).pixelColor(8, 8);
    }
};

TEST_F(IconsOfApplications, An_installed_applications_icon_comes_before_the_windows_own)
{
    writeHicolor();
    data.writeEntry(QStringLiteral("mail"), "Mail", "Icon=mail-icon");
    data.write(QStringLiteral("icons/hicolor/16x16/apps/mail-icon.png"), png(16, Qt::red));
    EXPECT_EQ(iconOf(QStringLiteral("mail")), QColor(Qt::red));
    EXPECT_EQ(asked, 0);
}

TEST_F(IconsOfApplications, The_windows_own_icon_serves_where_the_application_has_none)
{
    data.writeEntry(QStringLiteral("plain"), "Plain");
    data.writeEntry(QStringLiteral("missing"), "Missing", "Icon=missing");
    data.writeEntry(QStringLiteral("broken"), "Broken",
                    "Icon=" + data.path(QStringLiteral("broken.png")).toUtf8());
    data.write(QStringLiteral("broken.png"), "broken");
    EXPECT_EQ(iconOf(QStringLiteral("plain")), QColor(Qt::yellow));
    EXPECT_EQ(iconOf(QStringLiteral("missing")), QColor(Qt::yellow));
    EXPECT_EQ(iconOf(QStringLiteral("broken")), QColor(Qt::yellow));
    EXPECT_EQ(iconOf(QStringLiteral("not-installed")), QColor(Qt::yellow));
    EXPECT_EQ(iconOf(std::nullopt), QColor(Qt::yellow));
}

TEST_F(IconsOfApplications, Without_a_source_of_window_icons_there_is_a_null_image)
{
    ApplicationIcons alone(entries, lookup, {});
    EXPECT_TRUE(alone.icon(WindowItem{}, 16).isNull());
}

TEST_F(IconsOfApplications, An_icon_is_cached_until_the_installed_applications_change)
{
    const QString file = data.path(QStringLiteral("own.png"));
    data.write(QStringLiteral("own.png"), png(16, Qt::red));
    data.writeEntry(QStringLiteral("mail"), "Mail", "Icon=" + file.toUtf8());
    data.ageEntries(1h);
    EXPECT_EQ(iconOf(QStringLiteral("mail")), QColor(Qt::red));
    data.write(QStringLiteral("own.png"), png(16, Qt::blue));
    EXPECT_EQ(iconOf(QStringLiteral("mail")), QColor(Qt::red));
    data.writeEntry(QStringLiteral("another"), "Another");
    EXPECT_EQ(iconOf(QStringLiteral("mail")), QColor(Qt::blue));
}
