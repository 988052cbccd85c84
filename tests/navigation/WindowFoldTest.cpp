// How many windows of "Unsorted" show.
#include "navigation/WindowFold.h"

#include <gtest/gtest.h>

#include <string>

namespace kelpa {
namespace {

using enum UnsortedFold;

struct Case
{
    const char* name;
    qsizetype count;
    UnsortedFold fold;
    bool isSearching;
    qsizetype selectedIndex;
    qsizetype shown;
};

class ShownWindows : public testing::TestWithParam<Case>
{};

TEST_P(ShownWindows, Are_two_rows_of_many)
{
    const Case& each = GetParam();
    EXPECT_EQ(shownWindowCount(each.count, each.fold, each.isSearching, each.selectedIndex),
              each.shown);
}

INSTANTIATE_TEST_SUITE_P(WindowFold, ShownWindows,
                         testing::Values(Case{"none", 0, folded, false, -1, 0},
                                         Case{"few", 8, folded, false, -1, 8},
                                         Case{"many", 9, folded, false, -1, 4},
                                         Case{"unfolded", 26, unfolded, false, -1, 26},
                                         Case{"found", 26, folded, true, -1, 26},
                                         Case{"selected_in_view", 26, folded, false, 3, 4},
                                         Case{"selected_beyond", 26, folded, false, 4, 26}),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace kelpa
