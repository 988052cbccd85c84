#include "model/Text.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

#include <string>

namespace kelpa {

namespace {

TEST(Text, White_space_and_newlines_go_from_both_ends_only)
{
    EXPECT_EQ(trimmedText(QStringLiteral(" \t\r\n\u00a0\u2003\u2028\u3000Buy  milk\n")),
              u"Buy  milk");
    EXPECT_EQ(trimmedText(QStringLiteral(" \n\u3000 ")), u"");
    EXPECT_EQ(trimmedText(QString()), u"");
}

TEST(Text, A_lone_half_of_a_surrogate_pair_becomes_the_replacement_character)
{
    const auto text = [](std::u16string_view units) { return QStringView(units).toString(); };
    EXPECT_EQ(trimmedText(text({u"a\xd83d"
                                u"b",
                                3})),
              u"a\ufffdb");
    EXPECT_EQ(trimmedText(text({u"\xde00"
                                u"a",
                                2})),
              u"\ufffda");
    EXPECT_EQ(trimmedText(text({u"\xd83d\xd83d\xde00", 3})), u"\ufffd\U0001f600");
    EXPECT_EQ(trimmedText(text({u"a\xd83d", 2})), u"a\ufffd");
}

TEST(Text, In_one_line_controls_and_separators_of_lines_are_spaces)
{
    EXPECT_EQ(singleLine(QStringLiteral("a\nb\r\nc\td\u2028e\u2029f\u0085g\u0007h\vi\u007fj")),
              u"a b  c d e f g h i j");
    EXPECT_EQ(singleLine(QStringLiteral("Buy  milk\u00a0\u3000\U0001f680")),
              u"Buy  milk\u00a0\u3000\U0001f680");
    EXPECT_EQ(singleLine(QString()), u"");
}

TEST(Text, Whole_surrogate_pairs_stay)
{
    EXPECT_EQ(trimmedText(QStringLiteral(" \U0001f469\u200d\U0001f680 ")),
              u"\U0001f469\u200d\U0001f680");
}

std::u16string times(qsizetype count, std::u16string_view text)
{
    std::u16string result;
    for (qsizetype i = 0; i < count; ++i)
        result += text;
    return result;
}

struct BeginningCase
{
    const char* name;
    std::u16string text;
    qsizetype length;
    std::u16string beginning;
};

class Beginning : public testing::TestWithParam<BeginningCase>
{};

TEST_P(Beginning, Ends_between_two_characters)
{
    const BeginningCase& param = GetParam();
    EXPECT_EQ(beginning(QString::fromStdU16String(param.text), param.length).toStdU16String(),
              param.beginning);
}

INSTANTIATE_TEST_SUITE_P(
    Text, Beginning,
    testing::Values(
        BeginningCase{"empty", u"", 3, u""}, BeginningCase{"shorter", u"ab", 3, u"ab"},
        BeginningCase{"as_long", u"abc", 3, u"abc"}, BeginningCase{"longer", u"abcd", 3, u"abc"},
        BeginningCase{"surrogate_pair", u"ab\U0001f680", 3, u"ab"},
        BeginningCase{"behind_a_surrogate_pair", u"a\U0001f680b", 3, u"a\U0001f680"},
        BeginningCase{"accent_of_its_own", u"abe\u0301", 3, u"ab"},
        BeginningCase{"accent_outside_of_the_first_plane", u"ab\U0001d15e\U0001d165", 4, u"ab"},
        BeginningCase{"family_of_an_emoji", u"a\U0001f469\u200d\U0001f680", 3, u"a"},
        BeginningCase{"family_of_an_emoji_before_its_joiner", u"a\U0001f469\u200d\U0001f680", 4,
                      u"a"},
        BeginningCase{"shade_of_an_emoji", u"a\U0001f44d\U0001f3fd", 3, u"a"},
        BeginningCase{"flag", u"a\U0001f1eb\U0001f1f7", 3, u"a"},
        BeginningCase{"second_flag", u"\U0001f1eb\U0001f1f7\U0001f1e9\U0001f1ea", 6,
                      u"\U0001f1eb\U0001f1f7"},
        BeginningCase{"syllable_of_hangul", u"a\u1112\u1161\u11ab", 2, u"a"},
        BeginningCase{"line_of_two_characters", u"ab\r\n", 3, u"ab"},
        BeginningCase{"one_long_character", u"e\u0301\u0301\u0301\u0301", 3, u"e\u0301\u0301"},
        BeginningCase{"one_long_character_of_pairs", u"\U0001d15e\U0001d165\U0001d165", 3,
                      u"\U0001d15e"}),
    test::caseName);

struct LineCase
{
    const char* name;
    std::u16string text;
    std::u16string line;
};

class SingleLine : public testing::TestWithParam<LineCase>
{};

TEST_P(SingleLine, Shows)
{
    const LineCase& param = GetParam();
    EXPECT_EQ(singleLine(QString::fromStdU16String(param.text)).toStdU16String(), param.line);
}

INSTANTIATE_TEST_SUITE_P(
    Text, SingleLine,
    testing::Values(
        LineCase{"the_longest", times(1000, u"x"), times(1000, u"x")},
        LineCase{"a_longer_one", times(1001, u"x"), times(1000, u"x") + u"\u2026"},
        LineCase{"five_million", times(5'000'000, u"x"), times(1000, u"x") + u"\u2026"},
        LineCase{"pairs", u"x" + times(1000, u"\U0001f680"),
                 u"x" + times(499, u"\U0001f680") + u"\u2026"},
        LineCase{"a_space_at_the_cut", times(999, u"x") + u" y", times(999, u"x") + u"\u2026"},
        LineCase{"a_million_lines", times(1'000'000, u"\n"), u"\u2026"},
        LineCase{"a_million_lines_of_text", times(1'000'000, u"x\n"),
                 times(499, u"x ") + u"x\u2026"},
        LineCase{"marks_of_a_language", u"\u05d1\u05bc\u05b0\u0591", u"\u05d1\u05bc\u05b0\u0591"},
        LineCase{"too_many_marks", u"a" + times(40, u"\u0301") + u"b",
                 u"a" + times(10, u"\u0301") + u"b"},
        LineCase{"too_many_marks_of_pairs", u"\U0001d15e" + times(40, u"\U0001d167") + u"b",
                 u"\U0001d15e" + times(10, u"\U0001d167") + u"b"},
        LineCase{"marks_for_each_character", times(20, u"a\u0301\u0302"),
                 times(20, u"a\u0301\u0302")},
        LineCase{"a_million_marks", u"a" + times(1'000'000, u"\u0301"),
                 u"a" + times(10, u"\u0301") + u"\u2026"},
        LineCase{"isolate_that_is_closed", u"a\u2067b\u2069c", u"a\u2067b\u2069c"},
        LineCase{"isolate_that_is_open", u"a\u2067b", u"a\u2067b\u2069"},
        LineCase{"override_that_is_open", u"a\u202eb", u"a\u202eb\u202c"},
        LineCase{"override_in_an_isolate", u"\u2068\u202ea", u"\u2068\u202ea\u202c\u2069"},
        LineCase{"override_that_ends_with_its_isolate", u"\u2066\u202ea\u2069b",
                 u"\u2066\u202ea\u2069b"},
        LineCase{"isolate_in_an_override", u"\u202d\u2066a\u202cb", u"\u202d\u2066ab\u2069\u202c"},
        LineCase{"closers_of_nothing", u"a\u202c\u2069b", u"ab"},
        LineCase{"isolate_that_is_cut", u"\u2067" + times(2000, u"x") + u"\u2069",
                 u"\u2067" + times(999, u"x") + u"\u2069\u2026"},
        LineCase{"a_million_isolates", times(1'000'000, u"\u2067"),
                 times(1000, u"\u2067") + times(1000, u"\u2069") + u"\u2026"}),
    test::caseName);

} // namespace

} // namespace kelpa
