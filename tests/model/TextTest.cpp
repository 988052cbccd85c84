#include "model/Text.h"

#include <gtest/gtest.h>

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

} // namespace

} // namespace kelpa
