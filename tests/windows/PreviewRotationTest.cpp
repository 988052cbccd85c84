#include "windows/PreviewRotation.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct DisplaySizeCase
{
    const char* name;
    QSize pixels;
    QSizeF points;
};

class PreviewDisplaySizes : public testing::TestWithParam<DisplaySizeCase>
{};

TEST_P(PreviewDisplaySizes, Bring_the_longer_side_down_and_never_up)
{
    const QSizeF size = previewDisplaySize(GetParam().pixels);
    EXPECT_DOUBLE_EQ(size.width(), GetParam().points.width());
    EXPECT_DOUBLE_EQ(size.height(), GetParam().points.height());
}

INSTANTIATE_TEST_SUITE_P(Previews, PreviewDisplaySizes,
                         testing::Values(DisplaySizeCase{"large", {1440, 900}, {720, 450}},
                                         DisplaySizeCase{"small", {300, 200}, {300, 200}},
                                         DisplaySizeCase{
                                             "exactly_the_limit", {720, 720}, {720, 720}},
                                         DisplaySizeCase{"tall", {500, 1440}, {250, 720}},
                                         DisplaySizeCase{"a_line", {10'000, 1}, {720, 1}}),
                         caseName);

} // namespace
} // namespace kelpa::test
