#include "platform/kwin/KwinPicture.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using kwin::pictureForm;

TEST(KwinPicture, A_form_that_no_window_has_is_none)
{
    struct Row
    {
        const char* name;
        std::uint32_t width, height, stride, format;
        bool isThere;
    };
    constexpr std::uint32_t most = 0xFFFFFFFF;
    const std::array rows{
        Row{"a window", 300, 200, 1200, QImage::Format_ARGB32_Premultiplied, true},
        Row{"lines with room", 300, 200, 1280, QImage::Format_RGB32, true},
        Row{"the largest side", 16384, 1, 65536, QImage::Format_RGB32, true},
        Row{"no width", 0, 200, 1200, QImage::Format_RGB32, false},
        Row{"no height", 300, 0, 1200, QImage::Format_RGB32, false},
        Row{"lines too short", 300, 200, 1196, QImage::Format_RGB32, false},
        Row{"lines that end within a pixel", 300, 200, 1201, QImage::Format_RGB32, false},
        Row{"wider than a screen", 16385, 1, 65540, QImage::Format_RGB32, false},
        Row{"a width that wraps", 0x40000001, 1, 4, QImage::Format_RGB32, false},
        Row{"more bytes than a window", 16384, 16384, 65536, QImage::Format_RGB32, false},
        Row{"all there is", most, most, most, QImage::Format_RGB32, false},
        Row{"very long lines", 1, 16384, most - 3, QImage::Format_RGB32, false},
        Row{"8 bits", 300, 200, 1200, QImage::Format_Grayscale8, false},
        Row{"64 bits", 300, 200, 2400, QImage::Format_RGBA64, false},
        Row{"no format", 300, 200, 1200, most, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(pictureForm(row.width, row.height, row.stride, row.format).has_value(),
                  row.isThere)
            << row.name;
    }
}

TEST(KwinPicture, Lines_are_read_by_their_stride)
{
    const auto form = pictureForm(1, 2, 8, QImage::Format_RGB32);
    ASSERT_TRUE(form);
    const QByteArray bytes("\x01\x02\x03\xff....\x04\x05\x06\xff....", 16);
    const std::optional<QImage> image = pictureOf(*form, bytes);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(0, 0), qRgb(3, 2, 1));
    EXPECT_EQ(image->pixel(0, 1), qRgb(6, 5, 4));
    EXPECT_FALSE(pictureOf(*form, bytes.left(15)));
    EXPECT_FALSE(pictureOf(*form, bytes + '.'));
}

TEST(KwinPicture, A_window_is_taken_again_when_it_may_show_something_else)
{
    const std::chrono::steady_clock::time_point taken{1h};
    const kwin::TakenPicture last{.revision = 3, .time = taken};
    kwin::KwinWindow same;
    same.revision = 3;
    kwin::KwinWindow active = same;
    active.isActive = true;
    kwin::KwinWindow renamed = same;
    renamed.revision = 4;
    EXPECT_FALSE(isPictureDue(same, last, taken + 29s));
    EXPECT_TRUE(isPictureDue(same, last, taken + 30s));
    EXPECT_TRUE(isPictureDue(active, last, taken));
    EXPECT_TRUE(isPictureDue(renamed, last, taken));
}

TEST(KwinPicture, A_KWin_that_does_not_answer_is_asked_ever_less_often)
{
    std::chrono::steady_clock::time_point now{1h};
    kwin::PicturePauses pauses;
    EXPECT_FALSE(pauses.isPausing(now));
    for (int request = 0; request < 2; ++request)
        pauses.note(true, now);
    EXPECT_FALSE(pauses.isPausing(now));
    for (const std::chrono::seconds pause : {10s, 20s, 40s, 80s, 160s, 300s, 300s}) {
        pauses.note(true, now);
        EXPECT_TRUE(pauses.isPausing(now + pause - 1s)) << pause.count();
        now += pause;
        EXPECT_FALSE(pauses.isPausing(now)) << pause.count();
    }
    for (int request = 0; request < 100; ++request)
        pauses.note(true, now);
    EXPECT_TRUE(pauses.isPausing(now + 299s));
    now += 300s;
    pauses.note(false, now);
    pauses.note(true, now);
    EXPECT_FALSE(pauses.isPausing(now));
}

} // namespace
} // namespace kelpa::test
