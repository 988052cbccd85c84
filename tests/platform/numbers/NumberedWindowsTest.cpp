#include "platform/numbers/NumberedWindows.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace kelpa {
namespace {

const std::vector<std::optional<WindowID>> someNumbers{7, std::nullopt, 3};

TEST(NumberedWindows, Each_window_has_the_number_at_its_place)
{
    const std::vector<std::string> windows{"editor", "panel", "terminal"};
    const std::vector<Numbered<std::string>> expected{
        {"editor", 7}, {"panel", std::nullopt}, {"terminal", 3}};
    EXPECT_EQ(withNumbers(windows, someNumbers), expected);
}

TEST(NumberedWindows, A_window_is_found_by_its_number)
{
    const std::vector<std::string> names{"editor", "panel", "terminal"};
    const std::vector<Numbered<std::string>> windows = withNumbers(names, someNumbers);
    EXPECT_EQ(windowNumbered(windows, 3), "terminal");
    EXPECT_EQ(windowNumbered(windows, 4), std::nullopt);
}

} // namespace
} // namespace kelpa
