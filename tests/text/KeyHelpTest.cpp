#include "text/KeyHelp.h"

#include "text/CopyTable.h"
#include "text/TextPrinting.h"

#include <gtest/gtest.h>

#include <QSet>

namespace kelpa {
namespace {

TEST(KeyHelp, Every_key_has_a_meaning_of_its_own_in_every_language)
{
    const QList<KeyHelp> english = keyHelp(AppLanguage::english);
    EXPECT_EQ(english.size(), 16);
    for (const AppLanguage language : allAppLanguages) {
        const QList<KeyHelp> help = keyHelp(language);
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
        return CopyTable(language, KeyNames::withSuper()).keyHelpKeys();
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

} // namespace
} // namespace kelpa
