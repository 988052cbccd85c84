#include "platform/freedesktop/icons/ApplicationIcons.h"

#include "platform/freedesktop/icons/IconThemesFixture.h"

#include <chrono>
#include <utility>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

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

} // namespace
} // namespace kelpa::test
