// The fonts of the first frame while the desktop says how large texts are.
#include "views/appearance/FontLoading.h"

#include "views/appearance/ViewSettings.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

TEST(FontLoading, Begins_again_at_the_scale_that_becomes_known_meanwhile)
{
    ViewSettings settings;
    int texts = 0;
    loadFonts(settings, {}, [&] { ++texts; });
    ASSERT_GT(texts, 3);
    int all = 0;
    loadFonts(settings, {}, [&] {
        if (++all == 3)
            settings.setTextScale(1.5);
    });
    EXPECT_EQ(all, 3 + texts);
}

} // namespace
} // namespace kelpa::test
