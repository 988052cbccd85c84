#include "platform/kwin/KwinScript.h"
#include "platform/kwin/KwinLink.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa::test {
namespace {

using kwin::KwinAction;
using kwin::KwinOrder;
using kwin::scriptWith;

TEST(KwinScript, Has_its_parameters_in_it)
{
    const QByteArray script =
        scriptWith({.connection = ":1.42", .token = "a-token", .plugin = "org.kelpa.Kelpa-0a"});
    EXPECT_TRUE(script.contains(R"(const kelpa = ":1.42";)"));
    EXPECT_TRUE(script.contains(R"(const token = "a-token";)"));
    EXPECT_TRUE(script.contains(R"(const plugin = "org.kelpa.Kelpa-0a";)"));
    EXPECT_FALSE(script.contains('@'));
}

TEST(KwinScript, A_parameter_never_becomes_part_of_the_program)
{
    for (const char* hostile : {"\"", "\\", "a b", "\n", "a;b", "ä"}) {
        EXPECT_TRUE(scriptWith({.connection = hostile, .token = "t", .plugin = "p"}).isEmpty());
        EXPECT_TRUE(scriptWith({.connection = ":1.1", .token = hostile, .plugin = "p"}).isEmpty());
        EXPECT_TRUE(scriptWith({.connection = ":1.1", .token = "t", .plugin = hostile}).isEmpty());
    }
}

TEST(KwinScript, Orders_name_a_window_a_process_or_a_desktop)
{
    EXPECT_EQ(textOf(KwinOrder{.action = KwinAction::restore, .window = "{a}"}),
              R"({"action":"restore","window":"{a}"})");
    EXPECT_EQ(textOf(KwinOrder{.action = KwinAction::close, .process = 42}),
              R"({"action":"close","process":42})");
    EXPECT_EQ(textOf(KwinOrder{.action = KwinAction::send, .window = "{a}", .desktop = 2}),
              R"({"action":"send","desktop":2,"window":"{a}"})");
    EXPECT_EQ(textOf(KwinOrder{.action = KwinAction::showDesktop, .desktop = 2}),
              R"({"action":"showDesktop","desktop":2})");
}

TEST(KwinScript, Each_board_has_a_script_of_its_own)
{
    const QByteArray one = kwin::pluginOf(QStringLiteral("/home/kim/board.sqlite"));
    EXPECT_EQ(one, kwin::pluginOf(QStringLiteral("/home/kim/board.sqlite")));
    EXPECT_NE(one, kwin::pluginOf(QStringLiteral("/home/kim/other.sqlite")));
    EXPECT_FALSE(scriptWith({.connection = ":1.1", .token = "t", .plugin = one}).isEmpty());
}

} // namespace
} // namespace kelpa::test
