#include "text/TransferCopy.h"

#include "text/ComposedTexts.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

using enum AppLanguage;

TEST(TransferCopy, An_import_says_what_it_brings_and_what_it_leaves_out)
{
    expectTexts({{{chinese, u"目标：5 · 待办：30 · 未完成待办：23"},
                  {english, u"Goals: 5 · Todos: 30 · Unfinished todos: 23"},
                  {japanese, u"目標：5 · タスク：30 · 未完了のタスク：23"},
                  {korean, u"목표: 5 · 할 일: 30 · 미완료 할 일: 23"},
                  {french, u"Objectifs : 5 · Tâches : 30 · Tâches inachevées : 23"},
                  {german, u"Ziele: 5 · Aufgaben: 30 · Offene Aufgaben: 23"}}},
                [](AppLanguage language) { return KelpaCopy::importCounts(5, 30, 23, language); });
    expectTexts({{{chinese, u"不会导入的行：4"},
                  {english, u"Lines left out: 4"},
                  {japanese, u"読み込まれない行：4"},
                  {korean, u"가져오지 않는 줄: 4"},
                  {french, u"Lignes laissées de côté : 4"},
                  {german, u"Ausgelassene Zeilen: 4"}}},
                [](AppLanguage language) { return KelpaCopy::linesLeftOut(4, language); });
    expectTexts({{{chinese, u"第 12 行，不是待办：a"},
                  {english, u"Line 12, not a todo: a"},
                  {japanese, u"12行目、タスクではありません：a"},
                  {korean, u"12번째 줄, 할 일이 아님: a"},
                  {french, u"Ligne 12, pas une tâche : a"},
                  {german, u"Zeile 12, keine Aufgabe: a"}}},
                [](AppLanguage language) {
                    return KelpaCopy::lineLeftOut(12, CopyKey::SkippedNoTodo, QStringLiteral("a"),
                                                  language);
                });
    EXPECT_EQ(KelpaCopy::lineLeftOut(3, CopyKey::SkippedNoTitle, {}, english),
              QStringLiteral("Line 3, without a title"));
}

TEST(TransferCopy, A_backup_says_how_much_it_holds)
{
    const auto text = [](AppLanguage language) { return KelpaCopy::backupCounts(5, 23, language); };
    expectTexts({{{chinese, u"目标：5 · 未完成待办：23"},
                  {english, u"Goals: 5 · Unfinished todos: 23"},
                  {japanese, u"目標：5 · 未完了のタスク：23"},
                  {korean, u"목표: 5 · 미완료 할 일: 23"},
                  {french, u"Objectifs : 5 · Tâches inachevées : 23"},
                  {german, u"Ziele: 5 · Offene Aufgaben: 23"}}},
                text);
}

} // namespace
} // namespace kelpa
