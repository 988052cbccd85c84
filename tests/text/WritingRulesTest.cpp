// How the interface's texts are written, in every language: spaces, scripts, punctuation, address.
#include "text/DeclaredKeys.h"
#include "text/DesktopCopy.h"
#include "text/FormerWindowCopy.h"
#include "text/KelpaCopy.h"
#include "text/TextPrinting.h"
#include "text/TodoCopy.h"
#include "text/TransferCopy.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <set>

namespace kelpa {
namespace {

using enum AppLanguage;

/// All texts of one language, plain and composed.
QStringList allTexts(AppLanguage language)
{
    QStringList texts;
    for (const CopyKey key : declaredKeys())
        texts.append(KelpaCopy::text(key, language));
    const QString title = QStringLiteral("7");
    texts << KelpaCopy::selectWindowsTitle(title, language)
          << KelpaCopy::currentWindowLocation(title, language)
          << KelpaCopy::selectedWindowCount(7, language)
          << KelpaCopy::confirmWindowSelection(7, language) << KelpaCopy::openTodoCount(7, language)
          << KelpaCopy::windowCount(7, language) << KelpaCopy::foundCounts(7, 7, 7, language)
          << KelpaCopy::moreInHiddenGoals(7, language) << KelpaCopy::hiddenGoals(7, 7, language)
          << KelpaCopy::onlyMatchesShown(title, language) << KelpaCopy::textTooLong(7, language)
          << KelpaCopy::importCounts(7, 7, 7, language) << KelpaCopy::linesLeftOut(7, language)
          << KelpaCopy::lineLeftOut(7, CopyKey::SkippedNoTodo, title, language)
          << KelpaCopy::makeTodos(7, language) << KelpaCopy::overlongTitle(7, language)
          << KelpaCopy::dropBefore(title, language) << KelpaCopy::windowsAreBack(7, language)
          << KelpaCopy::windowsAreForgotten(7, language) << KelpaCopy::wasIn({title}, language)
          << KelpaCopy::windowsFromLastTime(7, language)
          << KelpaCopy::onVirtualDesktop(title, language) << KelpaCopy::lastSeen(title, language)
          << KelpaCopy::applicationIsGone(title, language)
          << KelpaCopy::documentIsGone(title, language)
          << KelpaCopy::hasNoNewWindow(title, language) << KelpaCopy::closedWindows(7, language)
          << KelpaCopy::numberedDesktop(7, language) << KelpaCopy::absentDesktop(7, language)
          << KelpaCopy::pinnedTo(title, language)
          << KelpaCopy::completedTodosAreDeleted(7, language)
          << KelpaCopy::completedTodoCount(7, language);
    for (const TodoStatus status : {TodoStatus::todo, TodoStatus::ing, TodoStatus::completed}) {
        texts << KelpaCopy::statusName(status, language) << KelpaCopy::statusHelp(status, language)
              << KelpaCopy::statusAccessibilityLabel(status, language);
    }
    for (const GoalPriority priority : allGoalPriorities)
        texts << KelpaCopy::priorityAccessibilityLabel(priority, language);
    return texts;
}

bool matches(const QString& text, const char16_t* pattern)
{
    return QRegularExpression(QString::fromUtf16(pattern)).match(text).hasMatch();
}

// By Unicode blocks: the properties of scripts also cover punctuation that scripts share.

bool hasKana(const QString& text)
{
    return matches(text, u"[\\x{3041}-\\x{3096}\\x{30a1}-\\x{30fa}]");
}

bool hasHangul(const QString& text)
{
    return matches(text, u"[\\x{ac00}-\\x{d7a3}]");
}

bool hasHan(const QString& text)
{
    return matches(text, u"[\\x{4e00}-\\x{9fff}]");
}

/// Written alike in every language.
bool isName(const QString& text)
{
    return matches(text, u"^(Kelpa|P[0-3])$");
}

TEST(WritingRules, No_text_has_white_space_at_its_ends_or_twice_in_a_row)
{
    for (const AppLanguage language : allAppLanguages) {
        for (const QString& text : allTexts(language)) {
            EXPECT_FALSE(text.isEmpty()) << testing::PrintToString(language);
            EXPECT_EQ(text, text.simplified());
        }
    }
}

TEST(WritingRules, No_text_keeps_a_place_holder_or_a_mark_of_unfinished_work)
{
    for (const AppLanguage language : allAppLanguages) {
        for (const QString& text : allTexts(language)) {
            EXPECT_FALSE(matches(text, u"[{}%<>\\[\\]\\x{fffd}]|\\?\\?|XX|lorem"))
                << qPrintable(text);
            EXPECT_FALSE(matches(text, u"\\p{C}|[\\x{a0}\\x{202f}\\x{3000}]")) << qPrintable(text);
        }
    }
}

TEST(WritingRules, Every_language_writes_in_its_own_script)
{
    for (const QString& text : allTexts(chinese)) {
        EXPECT_FALSE(hasKana(text) || hasHangul(text)) << qPrintable(text);
        EXPECT_TRUE(isName(text) || hasHan(text)) << qPrintable(text);
    }
    for (const QString& text : allTexts(japanese)) {
        EXPECT_FALSE(hasHangul(text)) << qPrintable(text);
        EXPECT_TRUE(isName(text) || hasKana(text) || hasHan(text)) << qPrintable(text);
    }
    for (const QString& text : allTexts(korean)) {
        EXPECT_FALSE(hasKana(text) || hasHan(text)) << qPrintable(text);
        EXPECT_TRUE(isName(text) || hasHangul(text)) << qPrintable(text);
    }
    for (const AppLanguage language : {english, french, german}) {
        for (const QString& text : allTexts(language)) {
            EXPECT_FALSE(hasKana(text) || hasHangul(text) || hasHan(text)) << qPrintable(text);
            EXPECT_TRUE(matches(text, u"\\p{Latin}")) << qPrintable(text);
        }
    }
}

TEST(WritingRules, Chinese_is_written_in_simplified_and_Japanese_in_its_own_characters)
{
    // Characters of the vocabulary whose forms differ between the two.
    for (const QString& text : allTexts(chinese))
        EXPECT_FALSE(matches(text, u"[開動標務択済優変閉編録検]")) << qPrintable(text);
    for (const QString& text : allTexts(japanese))
        EXPECT_FALSE(matches(text, u"[开动标务择优变闭编录检个进输删]")) << qPrintable(text);
}

TEST(WritingRules, Only_names_are_the_same_in_English_and_another_language)
{
    for (const AppLanguage language : {chinese, japanese, korean, french, german}) {
        for (const CopyKey key : declaredKeys()) {
            const QString text = KelpaCopy::text(key, language);
            EXPECT_EQ(text == KelpaCopy::text(key, english), isName(text))
                << testing::PrintToString(key) << ' ' << testing::PrintToString(language);
        }
    }
}

TEST(WritingRules, French_sets_a_space_before_its_double_punctuation)
{
    for (const CopyKey key : declaredKeys()) {
        const QString text = KelpaCopy::text(key, french);
        EXPECT_FALSE(matches(text, u"[^ ][:;!?»]|«[^ ]")) << qPrintable(text);
    }
    EXPECT_FALSE(
        matches(KelpaCopy::selectWindowsTitle(QStringLiteral("A"), french), u"[^ ][:;!?»]|«[^ ]"));
    EXPECT_FALSE(matches(KelpaCopy::currentWindowLocation(QStringLiteral("A"), french), u"[^ ]:"));
}

TEST(WritingRules, French_and_German_use_the_typographic_apostrophe)
{
    for (const AppLanguage language : {french, german}) {
        for (const QString& text : allTexts(language))
            EXPECT_FALSE(text.contains(u'\'')) << qPrintable(text);
    }
}

TEST(WritingRules, French_says_vous_and_German_says_du)
{
    for (const QString& text : allTexts(french))
        EXPECT_FALSE(matches(text, u"(?i)\\b(tu|toi|ton|ta|tes)\\b")) << qPrintable(text);
    for (const QString& text : allTexts(german))
        EXPECT_FALSE(matches(text, u"\\b(Sie|Ihr|Ihre|Ihnen)\\b")) << qPrintable(text);
}

TEST(WritingRules, Menu_items_of_one_menu_differ_in_every_language)
{
    const QList<CopyKey> menu{CopyKey::AddWindowsToGoal, CopyKey::OpenChrome, CopyKey::OpenTerminal,
                              CopyKey::ShowAllWindows,   CopyKey::RenameGoal, CopyKey::DeleteGoal};
    for (const AppLanguage language : allAppLanguages) {
        std::set<QString> texts;
        for (const CopyKey key : menu)
            texts.insert(KelpaCopy::text(key, language));
        EXPECT_EQ(texts.size(), 6U) << testing::PrintToString(language);
    }
}

} // namespace
} // namespace kelpa
