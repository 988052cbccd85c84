#include "text/TodoCopy.h"

#include "text/CopyFrame.h"

namespace kelpa::KelpaCopy {

namespace {

constexpr Frames todoIsDeletedFrames({u"已删除 ", u" 个待办"}, {u"", u" todo deleted"},
                                     {u"タスクを", u"件削除しました"},
                                     {u"할 일 ", u"개를 삭제했습니다"}, {u"", u" tâche supprimée"},
                                     {u"", u" Aufgabe gelöscht"});

constexpr Frames todosAreDeletedFrames({u"已删除 ", u" 个待办"}, {u"", u" todos deleted"},
                                       {u"タスクを", u"件削除しました"},
                                       {u"할 일 ", u"개를 삭제했습니다"},
                                       {u"", u" tâches supprimées"}, {u"", u" Aufgaben gelöscht"});

constexpr Frames oneCompletedFrames({u"已完成 ", u" 项"}, {u"", u" completed"}, {u"完了", u"件"},
                                    {u"완료 ", u"개"}, {u"", u" terminée"}, {u"", u" erledigt"});

constexpr Frames completedFrames({u"已完成 ", u" 项"}, {u"", u" completed"}, {u"完了", u"件"},
                                 {u"완료 ", u"개"}, {u"", u" terminées"}, {u"", u" erledigt"});

QString counted(const Frames& one, const Frames& several, qsizetype count, AppLanguage language)
{
    return (count == 1 ? one : several)[language].around(QString::number(count));
}

} // namespace

QString todosAreDeleted(qsizetype count, AppLanguage language)
{
    return counted(todoIsDeletedFrames, todosAreDeletedFrames, count, language);
}

QString completedTodoCount(qsizetype count, AppLanguage language)
{
    return counted(oneCompletedFrames, completedFrames, count, language);
}

} // namespace kelpa::KelpaCopy
