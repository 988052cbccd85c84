#include "views/entry/GoalCompletion.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

QList<EntryGoal> goalsOf(const QStringList& titles)
{
    QList<EntryGoal> goals;
    for (const QString& title : titles)
        goals.append({GoalID::create(), title, {}});
    goals.append({std::nullopt, QStringLiteral("Unsorted"), {}});
    return goals;
}

const QList<EntryGoal> goals = goalsOf({
    QStringLiteral("Spring cleaning"),
    QStringLiteral("The kitchen"),
    QStringLiteral("Kitchen renovation"),
    QStringLiteral("Kitchen"),
    QStringLiteral("Straße"),
    QStringLiteral("台所"),
    QStringLiteral("ＡＢＣ プラン"),
    QStringLiteral("Café"),
});

QString titlesFor(const char16_t* query, const QLocale& locale = QLocale::c())
{
    QStringList titles;
    for (const EntryGoal& goal : matchingGoals(goals, QString::fromUtf16(query), locale))
        titles.append(goal.title);
    return titles.join(u'|');
}

TEST(GoalCompletion, The_title_itself_comes_before_its_beginning_a_word_and_a_part_of_one)
{
    EXPECT_EQ(titlesFor(u"kitchen"), QStringLiteral("Kitchen|Kitchen renovation|The kitchen"));
    EXPECT_EQ(titlesFor(u"k"), QStringLiteral("Kitchen renovation|Kitchen|The kitchen"));
    EXPECT_EQ(titlesFor(u"ing"), QStringLiteral("Spring cleaning"));
    EXPECT_EQ(titlesFor(u"s"), QStringLiteral("Spring cleaning|Straße|Unsorted"));
}

TEST(GoalCompletion, Titles_with_spaces_are_found_as_they_are_typed)
{
    EXPECT_EQ(titlesFor(u"kitchen "), QStringLiteral("Kitchen|Kitchen renovation"));
    EXPECT_EQ(titlesFor(u"kitchen r"), QStringLiteral("Kitchen renovation"));
    EXPECT_EQ(titlesFor(u"kitchen milk"), QString());
}

TEST(GoalCompletion, Case_width_and_composition_do_not_matter)
{
    EXPECT_EQ(titlesFor(u"STRASSE"), QStringLiteral("Straße"));
    EXPECT_EQ(titlesFor(u"ｋｉｔｃｈｅｎ ｒ"), QStringLiteral("Kitchen renovation"));
    EXPECT_EQ(titlesFor(u"abc"), QStringLiteral("ＡＢＣ プラン"));
    EXPECT_EQ(titlesFor(u"ﾌﾟﾗ"), QStringLiteral("ＡＢＣ プラン"));
    EXPECT_EQ(titlesFor(u"cafe\u0301"), QStringLiteral("Café"));
    EXPECT_EQ(titlesFor(u"KİTCHEN R", QLocale(QLocale::Turkish)),
              QStringLiteral("Kitchen renovation"));
}

TEST(GoalCompletion, The_sign_alone_offers_everything_in_order)
{
    EXPECT_EQ(matchingGoals(goals, {}, QLocale::c()), goals);
}

struct NamedCase
{
    const char* name;
    const char16_t* text;
    /// "title: rest of the text"; empty for none.
    const char16_t* named;
};

class NamedGoals : public testing::TestWithParam<NamedCase>
{};

TEST_P(NamedGoals, Are_those_whose_whole_title_is_in_the_text)
{
    const QString text = QString::fromUtf16(GetParam().text);
    const std::optional<NamedGoal> named = goalNamedIn(text, goals, QLocale::c());
    const QString found =
        named ? named->goal.title + QStringLiteral(": ") + withoutMention(text, named->mention).text
              : QString();
    EXPECT_EQ(found, QString::fromUtf16(GetParam().named));
}

INSTANTIATE_TEST_SUITE_P(
    GoalCompletion, NamedGoals,
    testing::Values(
        NamedCase{"at_the_end", u"Milk #kitchen", u"Kitchen: Milk "},
        NamedCase{"in_the_middle", u"Buy #kitchen milk", u"Kitchen: Buy milk"},
        NamedCase{"the_longest", u"#Kitchen renovation plan", u"Kitchen renovation: plan"},
        NamedCase{"before_a_mark", u"For #kitchen, milk", u"Kitchen: For , milk"},
        NamedCase{"a_longer_word", u"#kitchens", u""},
        NamedCase{"an_unfinished_word", u"#kitch", u""},
        NamedCase{"a_mark_within_a_word", u"#kitchen.pdf", u""},
        NamedCase{"the_last_one", u"#Café or #Straße", u"Straße: #Café or "},
        NamedCase{"others_stay_text", u"Call #12 #Café", u"Café: Call #12 "},
        NamedCase{"only_the_first_names_a_goal", u"#Café at #12", u"Café: at #12"},
        NamedCase{"within_a_word", u"C#Café", u""}, NamedCase{"no_sign", u"Kitchen", u""},
        NamedCase{"Unsorted", u"Milk #unsorted", u"Unsorted: Milk "},
        NamedCase{"Japanese", u"牛乳を買う＃台所", u"台所: 牛乳を買う"},
        NamedCase{"priority_words_are_text", u"!high Milk p1 #Café", u"Café: !high Milk p1 "}),
    caseName);

TEST(GoalCompletion, What_was_declined_names_no_goal)
{
    const QString text = QStringLiteral("#Café #Kitchen");
    EXPECT_EQ(goalNamedIn(text, goals, QLocale::c(), 6)->goal.title, QStringLiteral("Café"));
    EXPECT_FALSE(goalNamedIn(QStringLiteral("#Café"), goals, QLocale::c(), 0));
}

TEST(GoalCompletion, The_window_in_front_proposes_before_the_last_goal)
{
    const std::optional<GoalID> first = goals.at(0).goalID;
    const std::optional<GoalID> second = goals.at(1).goalID;
    const GoalID gone = GoalID::create();
    EXPECT_EQ(proposedGoal(goals, first, second), first);
    EXPECT_EQ(proposedGoal(goals, std::nullopt, second), second);
    EXPECT_EQ(proposedGoal(goals, gone, second), second);
    EXPECT_EQ(proposedGoal(goals, std::nullopt, gone), std::nullopt);
    EXPECT_EQ(proposedGoal(goals, std::nullopt, std::nullopt), std::nullopt);
}

} // namespace
} // namespace kelpa::test
