#include "platform/freedesktop/icons/IconLookup.h"

#include "platform/freedesktop/icons/IconThemesFixture.h"

namespace kelpa::test {
namespace {

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

} // namespace
} // namespace kelpa::test
