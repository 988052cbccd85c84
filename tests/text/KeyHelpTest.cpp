#include "text/KeyHelp.h"

#include "text/CopyTable.h"
#include "text/TextPrinting.h"

#include <gtest/gtest.h>

#include <QSet>

namespace kelpa {
namespace {

TEST(KeyHelp, Every_key_has_a_meaning_of_its_own_in_every_language)
{
    const QList<KeyHelp> english = keyHelp(AppLanguage::english, {});
    EXPECT_EQ(english.size(), 22);
    for (const AppLanguage language : allAppLanguages) {
        const QList<KeyHelp> help = keyHelp(language, {});
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
        return CopyTable(language, KeyNames::withSuper()).keyHelpKeys(true, true, true);
    };
    EXPECT_TRUE(keys(AppLanguage::english).contains(QStringLiteral("Ctrl+N")));
    EXPECT_TRUE(keys(AppLanguage::german).contains(QStringLiteral("Strg+N")));
    EXPECT_TRUE(keys(AppLanguage::french).contains(QStringLiteral("Suppr")));
    for (const AppLanguage language : allAppLanguages) {
        EXPECT_TRUE(keys(language).contains(QStringLiteral("Super Super")));
        EXPECT_TRUE(keys(language).contains(newGoalKeys(language)));
        EXPECT_TRUE(keys(language).contains(helpKeys(language)));
        EXPECT_TRUE(keys(language).contains(makeTodosKeys(language)));
        EXPECT_TRUE(keys(language).contains(quitKeys(language)));
        EXPECT_TRUE(keys(language).contains(renameKeys(language)));
        EXPECT_TRUE(keys(language).contains(deleteTodoKeys(language)));
        EXPECT_TRUE(keys(language).contains(workKeys(language)));
        EXPECT_TRUE(keys(language).contains(goBackKeys(language)));
        const QString all = keys(language).join(QLatin1Char('\n'));
        EXPECT_TRUE(all.contains(undoKeys(language))) << all.toStdString();
        EXPECT_TRUE(all.contains(redoKeys(language))) << all.toStdString();
    }
}

TEST(KeyHelp, Leaves_the_double_tap_out_where_it_does_nothing)
{
    for (const AppLanguage language : allAppLanguages) {
        const CopyTable texts(language, KeyNames::withSuper());
        EXPECT_FALSE(texts.keyHelpKeys(false, true, true).contains(QStringLiteral("Super Super")));
        EXPECT_EQ(texts.keyHelpKeys(false, true, true).size(), 21);
        EXPECT_EQ(texts.keyHelpMeanings(false, true, true).size(), 21);
    }
}

TEST(KeyHelp, Leaves_out_working_on_a_goal_where_the_desktop_minimises_nothing)
{
    for (const AppLanguage language : allAppLanguages) {
        const CopyTable texts(language, KeyNames::withSuper());
        const QStringList keys = texts.keyHelpKeys(true, false, false);
        EXPECT_FALSE(keys.contains(workKeys(language)) || keys.contains(goBackKeys(language)));
        EXPECT_EQ(keys.size(), 20);
        EXPECT_EQ(texts.keyHelpMeanings(true, false, false).size(), 20);
    }
}

TEST(KeyHelp, Where_the_desktop_minimises_nothing_pinned_goals_alone_are_worked_on)
{
    QSet<QString> meanings;
    for (const AppLanguage language : allAppLanguages) {
        const CopyTable texts(language, KeyNames::withSuper());
        const QStringList keys = texts.keyHelpKeys(true, false, true);
        EXPECT_EQ(keys.size(), 21);
        EXPECT_FALSE(keys.contains(goBackKeys(language)));
        ASSERT_EQ(keys.count(workKeys(language)), 1);
        meanings.insert(
            texts.keyHelpMeanings(true, false, true).at(keys.indexOf(workKeys(language))));
    }
    EXPECT_EQ(meanings.size(), 6);
    EXPECT_TRUE(meanings.contains(QStringLiteral("Work on a pinned goal: go to its desktop")));
    EXPECT_TRUE(meanings.contains(
        QStringLiteral("An einem angehefteten Ziel arbeiten: zu seiner Arbeitsfläche gehen")));
}

TEST(KeyHelp, Languages_are_offered_by_keys_that_type_nothing)
{
    EXPECT_EQ(languageOfferKeys(0, 1), QStringLiteral("↵"));
    EXPECT_EQ(languageOfferKeys(1, 6), QStringLiteral("Alt+2"));
}

} // namespace
} // namespace kelpa
