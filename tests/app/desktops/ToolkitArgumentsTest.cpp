#include "app/desktops/ToolkitArguments.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace kelpa::test {
namespace {

WindowSystem chosen(const QStringList& options, const QByteArray& variable = {})
{
    return chosenWindowSystem(QStringList{QStringLiteral("kelpa")} + options, variable);
}

TEST(WindowSystem, Is_X11_where_nobody_chose_and_where_the_session_prefers_Wayland)
{
    const WindowSystem x11{.isX11 = true, .display = {}, .isDefault = true};
    EXPECT_EQ(chosen({}), x11);
    EXPECT_EQ(chosen({}, "wayland"), x11);
    EXPECT_EQ(chosen({}, "wayland;xcb"), x11);
}

TEST(WindowSystem, Is_what_the_variable_says_otherwise)
{
    EXPECT_EQ(chosen({}, "offscreen"), (WindowSystem{.isX11 = false, .isDefault = false}));
    EXPECT_EQ(chosen({}, "xcb:gl=none"), (WindowSystem{.isX11 = true, .isDefault = false}));
}

TEST(WindowSystem, Is_what_the_command_line_says_before_all)
{
    EXPECT_EQ(chosen({QStringLiteral("-platform"), QStringLiteral("wayland")}, "xcb"),
              (WindowSystem{.isX11 = false, .isDefault = false}));
    EXPECT_EQ(chosen({QStringLiteral("--platform"), QStringLiteral("xcb")}, "offscreen"),
              (WindowSystem{.isX11 = true, .isDefault = false}));
}

TEST(WindowSystem, Has_the_display_that_the_command_line_names)
{
    EXPECT_EQ(chosen({QStringLiteral("-display"), QStringLiteral(":7")}).display, ":7");
    EXPECT_EQ(chosen({QStringLiteral("-display")}).display, "");
}

std::vector<std::string> givenToToolkit(const QByteArray& platform)
{
    std::string program = "kelpa";
    std::string option = "--show";
    std::array<char*, 3> values{program.data(), option.data(), nullptr};
    ToolkitArguments arguments(2, values.data(), platform);
    EXPECT_EQ(arguments.values()[arguments.count()], nullptr);
    return {arguments.values(), arguments.values() + arguments.count()};
}

TEST(ToolkitArguments, Name_the_platform_where_nobody_chose)
{
    EXPECT_EQ(givenToToolkit("wayland"),
              (std::vector<std::string>{"kelpa", "-platform", "wayland", "--show"}));
    EXPECT_EQ(givenToToolkit({}), (std::vector<std::string>{"kelpa", "--show"}));
}

} // namespace
} // namespace kelpa::test
