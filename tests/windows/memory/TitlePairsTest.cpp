// Whether a window is recognised by its title, over the titles of many programs.

#include "windows/memory/TitlePairs.h"
#include "windows/memory/MemoryBuilders.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <set>

namespace kelpa::test {
namespace {

WindowTraits traitsOf(const Application& application, const char16_t* title)
{
    return {QString::fromUtf16(application.id),    QString::fromUtf16(application.name), {}, {}, {},
            visibleText(QString::fromUtf16(title))};
}

PairOutcome outcome(const TitlePair& pair)
{
    const AbsentWindow before =
        absentWindow(1, GoalID::create(), traitsOf(pair.application, pair.before));
    const WindowMatches matches =
        matchedWindows({before}, {newWindow(2, traitsOf(pair.application, pair.after))});
    const bool isOneWindow =
        pair.outcome != PairOutcome::doubtful && pair.outcome != PairOutcome::apart;
    const auto match = matches.constFind(2);
    if (match == matches.constEnd())
        return isOneWindow ? PairOutcome::missed : PairOutcome::apart;
    if (match->certainty == MatchCertainty::certain)
        return PairOutcome::found;
    return isOneWindow ? PairOutcome::offered : PairOutcome::doubtful;
}

TEST(TitlePairs, Have_the_outcome_that_a_person_expects)
{
    static constexpr std::array names{"found", "offered", "missed", "doubtful", "apart"};
    std::map<PairOutcome, int> counts;
    std::set<std::string> kinds;
    for (const TitlePair& pair : titlePairs) {
        const PairOutcome actual = outcome(pair);
        EXPECT_EQ(actual, pair.outcome)
            << QString::fromUtf16(pair.before).toStdString() << " / "
            << QString::fromUtf16(pair.after).toStdString() << " is "
            << names.at(static_cast<std::size_t>(actual)) << ", not "
            << names.at(static_cast<std::size_t>(pair.outcome)) << ": \""
            << keysOf(traitsOf(pair.application, pair.before)).title.text.toStdString() << "\" / \""
            << keysOf(traitsOf(pair.application, pair.after)).title.text.toStdString() << '"';
        ++counts[actual];
        kinds.insert(pair.application.kind);
    }
    EXPECT_GE(titlePairs.size(), 200U);
    EXPECT_GE(kinds.size(), 20U);
    for (const auto& [each, count] : counts)
        std::cout << names.at(static_cast<std::size_t>(each)) << ' ' << count << '\n';
}

struct TitleCase
{
    const char* name;
    const char16_t* title;
    const char16_t* text;
    bool saysNothing;
};

class Titles : public testing::TestWithParam<TitleCase>
{};

TEST_P(Titles, Are_reduced_to_what_identifies_the_window)
{
    const TitleCase& param = GetParam();
    const TitleIdentity identity =
        titleIdentity(QString::fromUtf16(param.title), QStringLiteral("org.example.Scribe"),
                      QStringLiteral("Scribe"));
    EXPECT_EQ(identity.text, QString::fromUtf16(param.text));
    EXPECT_EQ(identity.saysNothing, param.saysNothing);
}

INSTANTIATE_TEST_SUITE_P(
    TitleIdentity, Titles,
    testing::Values(
        TitleCase{"plain", u"Minutes", u"Minutes", false},
        TitleCase{"several_at_once", u"* (3) Minutes [modified] - 45% - Scribe", u"Minutes", false},
        TitleCase{"own_name_once", u"About Scribe - Scribe", u"About Scribe", true},
        TitleCase{"own_name_with_maker", u"Minutes - Example Scribe", u"Minutes", false},
        TitleCase{"own_name_with_version", u"Minutes - Scribe 2.10", u"Minutes", false},
        TitleCase{"own_name_alone", u"Scribe", u"Scribe", true},
        TitleCase{"other_name", u"Minutes - Scribes Guild", u"Minutes - Scribes Guild", false},
        TitleCase{"number_of_a_name", u"Minutes (2)", u"Minutes (2)", false},
        TitleCase{"counter_of_a_file", u"(2) Minutes.pdf", u"(2) Minutes.pdf", false},
        TitleCase{"state_in_french", u"Compte rendu (lecture seule) - Scribe", u"Compte rendu",
                  false},
        TitleCase{"not_responding", u"Minutes (Keine Rückmeldung)", u"Minutes", false},
        TitleCase{"full_width", u"【已修改】会议纪要", u"会议纪要", false},
        TitleCase{"one_ideograph", u"山", u"山", false}, TitleCase{"one_letter", u"a", u"a", true},
        TitleCase{"empty", u"", u"", true}, TitleCase{"only_marks", u"● *", u"*", true},
        TitleCase{"directions", u"\u202eMinutes\u202c\u200f - Scribe", u"Minutes", false},
        TitleCase{"lines", u"Min\nutes\t\u2028 now", u"Min utes now", false},
        TitleCase{"joined_letters", u"ﬁne.txt - Scribe", u"fine.txt", false},
        TitleCase{"decomposed", u"Cafe\u0301", u"Café", false},
        TitleCase{"unpaired_surrogate", u"\xd83d", u"", true},
        TitleCase{"in_spanish", u"Documento sin título 3", u"Documento sin título 3", true},
        TitleCase{"in_russian", u"Без имени 1 - Scribe", u"Без имени 1", true},
        TitleCase{"shell_at_home", u"[anna@laptop ~]$", u"[anna@laptop ~]$", true},
        TitleCase{"shell_elsewhere", u"[anna@laptop src]$", u"[anna@laptop src]$", false}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(TitleIdentity, A_title_of_a_megabyte_is_cut_and_one_with_NUL_is_a_title)
{
    const QString application = QStringLiteral("scribe");
    const QString longTitle(1 << 20, u'x');
    EXPECT_EQ(titleIdentity(longTitle, application, application).text, QString(longestTitle, u'x'));
    const QString brackets(1 << 20, u'(');
    EXPECT_TRUE(titleIdentity(brackets, application, application).saysNothing);
    const QString separated = QStringLiteral(" - a").repeated(1 << 18);
    EXPECT_LE(titleIdentity(separated, application, application).text.size(), longestTitle);
    const QString null = QStringLiteral("Min") + QChar(0) + QStringLiteral("utes");
    EXPECT_EQ(titleIdentity(null, application, application).text, QStringLiteral("Min utes"));
}

} // namespace
} // namespace kelpa::test
