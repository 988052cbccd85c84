#include "text/TodoCopy.h"

#include "text/CopyFrame.h"

namespace kelpa::KelpaCopy {

namespace {

constexpr Frames completedTodoIsDeletedFrames({u"已删除 ", u" 个已完成的待办"},
                                              {u"", u" completed todo deleted"},
                                              {u"完了したタスクを", u"件削除しました"},
                                              {u"완료한 할 일 ", u"개를 삭제했습니다"},
                                              {u"", u" tâche terminée supprimée"},
                                              {u"", u" erledigte Aufgabe gelöscht"});

constexpr Frames completedTodosAreDeletedFrames({u"已删除 ", u" 个已完成的待办"},
                                                {u"", u" completed todos deleted"},
                                                {u"完了したタスクを", u"件削除しました"},
                                                {u"완료한 할 일 ", u"개를 삭제했습니다"},
                                                {u"", u" tâches terminées supprimées"},
                                                {u"", u" erledigte Aufgaben gelöscht"});

constexpr Frames oneCompletedFrames({u"已完成 ", u" 项"}, {u"", u" completed"}, {u"完了", u"件"},
                                    {u"완료 ", u"개"}, {u"", u" terminée"}, {u"", u" erledigt"});

constexpr Frames completedFrames({u"已完成 ", u" 项"}, {u"", u" completed"}, {u"完了", u"件"},
                                 {u"완료 ", u"개"}, {u"", u" terminées"}, {u"", u" erledigt"});

QString counted(const Frames& one, const Frames& several, qsizetype count, AppLanguage language)
{
    return (count == 1 ? one : several)[language].around(QString::number(count));
}

} // namespace

QString completedTodosAreDeleted(qsizetype count, AppLanguage language)
{
    return counted(completedTodoIsDeletedFrames, completedTodosAreDeletedFrames, count, language);
}

QString completedTodoCount(qsizetype count, AppLanguage language)
{
    return counted(oneCompletedFrames, completedFrames, count, language);
}

} // namespace kelpa::KelpaCopy
