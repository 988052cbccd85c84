#include "text/KeyHelp.h"

#include "text/CopyTable.h"
#include "text/TextPrinting.h"

#include <gtest/gtest.h>

#include <QSet>

namespace kelpa {
namespace {

TEST(KeyHelp, Every_key_has_a_meaning_of_its_own_in_every_language)
{
    const QList<KeyHelp> english = keyHelp(AppLanguage::english, DoubleTap::offered);
    EXPECT_EQ(english.size(), 18);
    for (const AppLanguage language : allAppLanguages) {
        const QList<KeyHelp> help = keyHelp(language, DoubleTap::offered);
        ASSERT_EQ(help.size(), english.size());
        QSet<QString> keys;
        QSet<QString> meanings;
        for (qsizetype i = 0; i < help.size(); ++i) {
            keys.insert(help.at(i).keys);
            meanings.insert(help.at(i).meaning);
            EXPECT_FALSE(help.at(i).keys.isEmpty());
            EXPECT_EQ(help.at(i).meaning, help.at(i).meaning.simplified());
            EXPECT_EQ(help.at(i).meaning == english.at(i).meaning, language == AppLanguage::english)
                << testing::PrintToString(language) << ' ' << i;
        }
        EXPECT_EQ(keys.size(), help.size()) << testing::PrintToString(language);
        EXPECT_EQ(meanings.size(), help.size()) << testing::PrintToString(language);
    }
}

TEST(KeyHelp, Keys_have_the_names_of_the_keyboard)
{
    const auto keys = [](AppLanguage language) {
        return CopyTable(language, KeyNames::withSuper()).keyHelpKeys(true);
    };
    EXPECT_TRUE(keys(AppLanguage::english).contains(QStringLiteral("Ctrl+N")));
    EXPECT_TRUE(keys(AppLanguage::german).contains(QStringLiteral("Strg+N")));
    EXPECT_TRUE(keys(AppLanguage::french).contains(QStringLiteral("Suppr")));
    for (const AppLanguage language : allAppLanguages) {
        EXPECT_TRUE(keys(language).contains(QStringLiteral("Super Super")));
        EXPECT_TRUE(keys(language).contains(newGoalKeys(language)));
        EXPECT_TRUE(keys(language).contains(helpKeys(language)));
    }
}

TEST(KeyHelp, Leaves_the_double_tap_out_where_it_does_nothing)
{
    for (const AppLanguage language : allAppLanguages) {
        const CopyTable texts(language, KeyNames::withSuper());
        EXPECT_FALSE(texts.keyHelpKeys(false).contains(QStringLiteral("Super Super")));
        EXPECT_EQ(texts.keyHelpKeys(false).size(), 17);
        EXPECT_EQ(texts.keyHelpMeanings(false).size(), 17);
    }
}

TEST(KeyHelp, Languages_are_offered_by_keys_that_type_nothing)
{
    EXPECT_EQ(languageOfferKeys(0, 1), QStringLiteral("↵"));
    EXPECT_EQ(languageOfferKeys(1, 6), QStringLiteral("Alt+2"));
}

} // namespace
} // namespace kelpa
