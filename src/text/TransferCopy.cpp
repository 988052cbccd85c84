#include "text/TransferCopy.h"

#include "text/CopyFrame.h"
#include "text/KelpaCopy.h"

namespace kelpa::KelpaCopy {

namespace {

constexpr Frames backupGoalsFrames({u"目标：", u" · "}, {u"Goals: ", u" · "}, {u"目標：", u" · "},
                                   {u"목표: ", u" · "}, {u"Objectifs : ", u" · "},
                                   {u"Ziele: ", u" · "});

constexpr Frames backupTodosFrames({u"未完成待办：", u""}, {u"Unfinished todos: ", u""},
                                   {u"未完了のタスク：", u""}, {u"미완료 할 일: ", u""},
                                   {u"Tâches inachevées : ", u""}, {u"Offene Aufgaben: ", u""});

constexpr Frames allTodosFrames({u"待办：", u" · "}, {u"Todos: ", u" · "}, {u"タスク：", u" · "},
                                {u"할 일: ", u" · "}, {u"Tâches : ", u" · "},
                                {u"Aufgaben: ", u" · "});

constexpr Frames leftOutFrames({u"不会导入的行：", u""}, {u"Lines left out: ", u""},
                               {u"読み込まれない行：", u""}, {u"가져오지 않는 줄: ", u""},
                               {u"Lignes laissées de côté : ", u""},
                               {u"Ausgelassene Zeilen: ", u""});

constexpr Frames lineFrames({u"第 ", u" 行，"}, {u"Line ", u", "}, {u"", u"行目、"},
                            {u"", u"번째 줄, "}, {u"Ligne ", u", "}, {u"Zeile ", u", "});

} // namespace

QString backupCounts(qsizetype goals, qsizetype openTodos, AppLanguage language)
{
    return backupGoalsFrames[language].around(QString::number(goals)) +
           backupTodosFrames[language].around(QString::number(openTodos));
}

QString importCounts(qsizetype goals, qsizetype todos, qsizetype openTodos, AppLanguage language)
{
    return backupGoalsFrames[language].around(QString::number(goals)) +
           allTodosFrames[language].around(QString::number(todos)) +
           backupTodosFrames[language].around(QString::number(openTodos));
}

QString linesLeftOut(qsizetype count, AppLanguage language)
{
    return leftOutFrames[language].around(QString::number(count));
}

QString lineLeftOut(qsizetype line, CopyKey reason, const QString& text, AppLanguage language)
{
    const QString why =
        lineFrames[language].around(QString::number(line)) + KelpaCopy::text(reason, language);
    return text.isEmpty() ? why : withColon(why, text, language);
}

} // namespace kelpa::KelpaCopy
