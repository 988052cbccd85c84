#include "views/entry/GoalMention.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct MentionCase
{
    const char* name;
    /// With "|" at the caret.
    const char16_t* text;
    /// "start-end query"; empty for none.
    const char16_t* mention;
};

class Mentions : public testing::TestWithParam<MentionCase>
{};

TEST_P(Mentions, Are_found_where_a_person_types_one)
{
    QString text = QString::fromUtf16(GetParam().text);
    const qsizetype caret = text.indexOf(u'|');
    text.remove(caret, 1);
    const std::optional<GoalMention> mention = mentionAt(text, caret);
    const QString found =
        mention
            ? QStringLiteral("%1-%2 %3").arg(mention->start).arg(mention->end).arg(mention->query)
            : QString();
    EXPECT_EQ(found, QString::fromUtf16(GetParam().mention));
}

INSTANTIATE_TEST_SUITE_P(
    GoalMention, Mentions,
    testing::Values(MentionCase{"the_sign_alone", u"Milk #|", u"5-6 "},
                    MentionCase{"at_the_beginning", u"#ki|", u"0-3 ki"},
                    MentionCase{"the_word_goes_on_behind_the_caret", u"Milk #ki|tchen now",
                                u"5-13 ki"},
                    MentionCase{"titles_have_spaces", u"Milk #new ki|", u"5-12 new ki"},
                    MentionCase{"the_nearest_of_several", u"#a #b|", u"3-5 b"},
                    MentionCase{"the_one_before_the_caret", u"#a| #b", u"0-2 a"},
                    MentionCase{"before_the_sign", u"Milk |#ki", u""},
                    MentionCase{"no_sign", u"Milk|", u""},
                    MentionCase{"within_a_word", u"Learn C#|", u""},
                    MentionCase{"within_a_word_that_goes_on", u"a#b|", u""},
                    MentionCase{"behind_another_sign", u"##b|", u"0-3 #b"},
                    MentionCase{"in_an_address", u"example.org/#b|", u""},
                    MentionCase{"behind_a_bracket", u"(#b|", u"1-3 b"},
                    MentionCase{"behind_an_emoji", u"Milk \U0001F95B#b|", u"7-9 b"},
                    MentionCase{"white_space_behind_the_sign", u"# b|", u""},
                    MentionCase{"full_width", u"牛乳 ＃台|", u"3-5 台"},
                    MentionCase{"no_space_between_words_in_Japanese", u"牛乳を買う#台|", u"5-7 台"},
                    MentionCase{"a_long_vowel_in_Japanese", u"ミルクティー#台|", u"6-8 台"},
                    MentionCase{"Korean_has_spaces", u"우유#집|", u""},
                    MentionCase{"an_empty_text", u"|", u""}),
    caseName);

TEST(GoalMentionTest, A_text_without_its_mention_has_no_double_space)
{
    const auto without = [](const char16_t* text, qsizetype start, qsizetype end) {
        return withoutMention(QString::fromUtf16(text), {start, end, {}});
    };
    EXPECT_EQ(without(u"Buy #ki milk", 4, 7), (EditedText{QStringLiteral("Buy milk"), 4}));
    EXPECT_EQ(without(u"#ki milk", 0, 3), (EditedText{QStringLiteral("milk"), 0}));
    EXPECT_EQ(without(u"milk #ki", 5, 8), (EditedText{QStringLiteral("milk "), 5}));
    EXPECT_EQ(without(u"(#ki) milk", 1, 4), (EditedText{QStringLiteral("() milk"), 1}));
    EXPECT_EQ(without(u"牛乳#台所 買う", 2, 5), (EditedText{QStringLiteral("牛乳 買う"), 2}));
}

} // namespace
} // namespace kelpa::test
