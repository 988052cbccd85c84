#include "windows/WindowSearch.h"

#include "support/BoardBuilders.h"
#include "support/CaseName.h"

#include <QSet>

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct MatchCase
{
    const char* name;
    const char16_t* text;
    const char16_t* query;
    const char* locale;
    bool matches;
};

TEST(WindowSearch, Of_a_very_long_text_the_first_fifty_thousand_characters_are_searched)
{
    const TextSearch search(QStringLiteral("Needle"), QLocale(QStringLiteral("en_US")));
    EXPECT_TRUE(search.matches(QString(49994, u'x') + QStringLiteral("needle") + QString(5, u'x')));
    EXPECT_FALSE(search.matches(QString(49995, u'x') + QStringLiteral("needle")));
}

class CaseInsensitiveSearch : public testing::TestWithParam<MatchCase>
{};

TEST_P(CaseInsensitiveSearch, Follows_the_locale)
{
    const MatchCase& param = GetParam();
    EXPECT_EQ(
        TextSearch(QString::fromUtf16(param.query), QLocale(QString::fromLatin1(param.locale)))
            .matches(QString::fromUtf16(param.text)),
        param.matches);
}

INSTANTIATE_TEST_SUITE_P(
    WindowSearch, CaseInsensitiveSearch,
    testing::Values(MatchCase{"case_differs", u"Quarterly Report", u"rEPORT", "en_US", true},
                    MatchCase{"other_text", u"Quarterly Report", u"invoice", "en_US", false},
                    MatchCase{"sharp_s", u"Hauptstraße", u"STRASSE", "de_DE", true},
                    MatchCase{"final_sigma", u"ΟΔΟΣ", u"οδος", "el_GR", true},
                    MatchCase{"sigma_within", u"οδος", u"ΟΔΟΣ", "el_GR", true},
                    MatchCase{"cyrillic", u"Привет", u"пРИВЕТ", "ru_RU", true},
                    MatchCase{"turkish_dotless_i", u"DIŞ", u"dış", "tr_TR", true},
                    MatchCase{"turkish_i_is_another_letter", u"IŞIK", u"işik", "tr_TR", false},
                    MatchCase{"latin_i_elsewhere", u"INBOX", u"inbox", "en_US", true},
                    MatchCase{"composed_and_decomposed", u"caf\u00e9", u"CAFE\u0301", "fr_FR",
                              true},
                    MatchCase{"accents_count", u"café", u"cafe", "fr_FR", false},
                    MatchCase{"chinese", u"打开的窗口", u"窗口", "zh_CN", true},
                    MatchCase{"emoji", u"Notes 🦀", u"🦀", "en_US", true}),
    caseName);

const QList<WindowItem> threeWindows{
    window(1, QStringLiteral("Term paper"), QStringLiteral("Editor")),
    window(2, QStringLiteral("~"), QStringLiteral("XTERM")),
    window(3, QStringLiteral("Inbox"), QStringLiteral("Mail"))};

TEST(FilteredWindows, Keep_those_whose_title_or_owner_contains_the_trimmed_text_in_any_case)
{
    EXPECT_EQ(idsOf(filteredWindows(threeWindows, QStringLiteral("  term\n"), QLocale::c())),
              (QList<WindowID>{1, 2}));
}

TEST(FilteredWindows, Are_all_windows_when_the_text_is_blank)
{
    EXPECT_EQ(filteredWindows(threeWindows, QStringLiteral(" \t\n"), QLocale::c()), threeWindows);
    EXPECT_EQ(filteredWindows(threeWindows, QString(), QLocale::c()), threeWindows);
}

TEST(FilteredWindows, Are_none_when_nothing_matches)
{
    EXPECT_TRUE(filteredWindows(threeWindows, QStringLiteral("zzz"), QLocale::c()).isEmpty());
}

TEST(WindowsByGoal, Put_those_with_a_preview_first_and_keep_the_order_otherwise)
{
    const GoalID goalA = GoalID::create();
    QList<WindowItem> windows{window(1), window(2), window(3), window(4), window(5), window(6)};
    for (const qsizetype i : {0, 1, 3, 4})
        windows[i].goalID = goalA;
    const QSet<WindowID> previewed{4, 2, 6};

    const WindowsByGoal groups =
        windowsByGoal(windows, [&previewed](WindowID id) { return previewed.contains(id); });

    EXPECT_EQ(idsOf(groups.of(goalA)), (QList<WindowID>{2, 4, 1, 5}));
    EXPECT_EQ(idsOf(groups.of(std::nullopt)), (QList<WindowID>{6, 3}));
    EXPECT_TRUE(groups.of(GoalID::create()).isEmpty());
}

} // namespace
} // namespace kelpa::test
