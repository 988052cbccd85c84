#include "model/GoalAccent.h"
#include "model/GoalPriority.h"
#include "model/TodoItem.h"

#include <gtest/gtest.h>

#include <QSet>

namespace kelpa {

namespace {

TEST(Enumerations, A_status_is_stored_as_its_raw_value)
{
    EXPECT_EQ(rawValue(TodoStatus::todo), u"todo");
    EXPECT_EQ(rawValue(TodoStatus::ing), u"ing");
    EXPECT_EQ(rawValue(TodoStatus::completed), u"completed");
    EXPECT_EQ(todoStatusFromRawValue(u"todo"), TodoStatus::todo);
    EXPECT_EQ(todoStatusFromRawValue(u"ing"), TodoStatus::ing);
    EXPECT_EQ(todoStatusFromRawValue(u"completed"), TodoStatus::completed);
}

TEST(Enumerations, A_priority_is_stored_as_its_raw_value)
{
    EXPECT_EQ(rawValue(GoalPriority::p0), u"p0");
    EXPECT_EQ(rawValue(GoalPriority::p1), u"p1");
    EXPECT_EQ(rawValue(GoalPriority::p2), u"p2");
    EXPECT_EQ(rawValue(GoalPriority::p3), u"p3");
    EXPECT_EQ(goalPriorityFromRawValue(u"p0"), GoalPriority::p0);
    EXPECT_EQ(goalPriorityFromRawValue(u"p1"), GoalPriority::p1);
    EXPECT_EQ(goalPriorityFromRawValue(u"p2"), GoalPriority::p2);
    EXPECT_EQ(goalPriorityFromRawValue(u"p3"), GoalPriority::p3);
}

TEST(Enumerations, An_accent_is_stored_as_its_raw_value)
{
    EXPECT_EQ(rawValue(GoalAccent::blue), u"blue");
    EXPECT_EQ(rawValue(GoalAccent::green), u"green");
    EXPECT_EQ(rawValue(GoalAccent::orange), u"orange");
    EXPECT_EQ(rawValue(GoalAccent::purple), u"purple");
    EXPECT_EQ(rawValue(GoalAccent::pink), u"pink");
    EXPECT_EQ(goalAccentFromRawValue(u"blue"), GoalAccent::blue);
    EXPECT_EQ(goalAccentFromRawValue(u"green"), GoalAccent::green);
    EXPECT_EQ(goalAccentFromRawValue(u"orange"), GoalAccent::orange);
    EXPECT_EQ(goalAccentFromRawValue(u"purple"), GoalAccent::purple);
    EXPECT_EQ(goalAccentFromRawValue(u"pink"), GoalAccent::pink);
}

TEST(Enumerations, Any_other_text_is_no_case)
{
    for (const char16_t* const text :
         {u"", u"Todo", u"TODO", u"todo ", u" todo", u"doing", u"in", u"ingg", u"done", u"0"})
        EXPECT_EQ(todoStatusFromRawValue(QStringView(text)), std::nullopt);
    for (const char16_t* const text : {u"", u"P0", u"p", u"p4", u"p-1", u"0", u"p2 ", u"high"})
        EXPECT_EQ(goalPriorityFromRawValue(QStringView(text)), std::nullopt);
    for (const char16_t* const text : {u"", u"Blue", u"BLUE", u"red", u"systemBlue", u"blue\n"})
        EXPECT_EQ(goalAccentFromRawValue(QStringView(text)), std::nullopt);
}

TEST(Enumerations, Priorities_and_accents_are_listed_in_their_order)
{
    using enum GoalPriority;
    using enum GoalAccent;
    EXPECT_EQ(allGoalPriorities, (std::array{p0, p1, p2, p3}));
    EXPECT_EQ(allGoalAccents, (std::array{blue, green, orange, purple, pink}));
    EXPECT_EQ(defaultGoalPriority, p2);
}

TEST(Enumerations, Accents_have_five_different_opaque_colours_on_either_ground)
{
    for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
        QSet<QRgb> colors;
        for (const GoalAccent accent : allGoalAccents) {
            EXPECT_EQ(color(accent, appearance).alpha(), 255);
            colors.insert(color(accent, appearance).rgba());
        }
        EXPECT_EQ(colors.size(), 5);
    }
}

TEST(Enumerations, Each_accent_has_the_hue_of_its_name)
{
    const auto hue = [](GoalAccent accent) { return color(accent, Appearance::light).hue(); };
    EXPECT_NEAR(hue(GoalAccent::blue), 211, 10);
    EXPECT_NEAR(hue(GoalAccent::green), 130, 15);
    EXPECT_NEAR(hue(GoalAccent::orange), 35, 10);
    EXPECT_NEAR(hue(GoalAccent::purple), 280, 15);
    EXPECT_NEAR(hue(GoalAccent::pink), 349, 15);
}

} // namespace

} // namespace kelpa
