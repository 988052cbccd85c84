// Texts with a count: one of something is in the singular, in the languages that have one.
#include "text/KelpaCopy.h"

#include "text/TextPrinting.h"
#include "text/TodoCopy.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace kelpa {
namespace {

/// In the order of `AppLanguage`.
QStringList inEachLanguage(QString (*compose)(qsizetype, AppLanguage), qsizetype count)
{
    QStringList texts;
    for (const AppLanguage language : allAppLanguages)
        texts.append(compose(count, language));
    return texts;
}

QStringList listed(std::initializer_list<const char16_t*> texts)
{
    QStringList list;
    for (const char16_t* const text : texts)
        list.append(QString::fromUtf16(text));
    return list;
}

TEST(CountedTexts, One_is_in_the_singular)
{
    EXPECT_EQ(inEachLanguage(KelpaCopy::openTodoCount, 1),
              listed({u"1 个未完成待办", u"1 unfinished todo", u"未完了のタスク1件",
                      u"미완료 할 일 1개", u"1 tâche inachevée", u"1 offene Aufgabe"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::windowCount, 1),
              listed({u"1 个窗口", u"1 window", u"1個のウィンドウ", u"창 1개", u"1 fenêtre",
                      u"1 Fenster"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::moreInHiddenGoals, 1),
              listed({u"隐藏的目标中还有 1 项", u"1 more in hidden goals", u"非表示の目標にあと1件",
                      u"숨긴 목표에 1개 더 있음", u"1 de plus dans les objectifs masqués",
                      u"1 weiterer Treffer in ausgeblendeten Zielen"}));
}

TEST(CountedTexts, Deleted_and_completed_todos_are_one_or_several)
{
    EXPECT_EQ(inEachLanguage(KelpaCopy::completedTodosAreDeleted, 1),
              listed({u"已删除 1 个已完成的待办", u"1 completed todo deleted",
                      u"完了したタスクを1件削除しました", u"완료한 할 일 1개를 삭제했습니다",
                      u"1 tâche terminée supprimée", u"1 erledigte Aufgabe gelöscht"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::completedTodosAreDeleted, 3),
              listed({u"已删除 3 个已完成的待办", u"3 completed todos deleted",
                      u"完了したタスクを3件削除しました", u"완료한 할 일 3개를 삭제했습니다",
                      u"3 tâches terminées supprimées", u"3 erledigte Aufgaben gelöscht"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::completedTodoCount, 1),
              listed({u"已完成 1 项", u"1 completed", u"完了1件", u"완료 1개", u"1 terminée",
                      u"1 erledigt"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::completedTodoCount, 3),
              listed({u"已完成 3 项", u"3 completed", u"完了3件", u"완료 3개", u"3 terminées",
                      u"3 erledigt"}));
}

TEST(CountedTexts, Several_and_none_are_in_the_plural_but_none_in_French)
{
    EXPECT_EQ(inEachLanguage(KelpaCopy::openTodoCount, 0),
              listed({u"0 个未完成待办", u"0 unfinished todos", u"未完了のタスク0件",
                      u"미완료 할 일 0개", u"0 tâche inachevée", u"0 offene Aufgaben"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::windowCount, 0),
              listed({u"0 个窗口", u"0 windows", u"0個のウィンドウ", u"창 0개", u"0 fenêtre",
                      u"0 Fenster"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::openTodoCount, 2),
              listed({u"2 个未完成待办", u"2 unfinished todos", u"未完了のタスク2件",
                      u"미완료 할 일 2개", u"2 tâches inachevées", u"2 offene Aufgaben"}));
    EXPECT_EQ(inEachLanguage(KelpaCopy::windowCount, 2),
              listed({u"2 个窗口", u"2 windows", u"2個のウィンドウ", u"창 2개", u"2 fenêtres",
                      u"2 Fenster"}));
}

} // namespace
} // namespace kelpa
