// The wording of todos, for `QuotedTextsTest`.
#pragma once

#include "text/QuotedText.h"

namespace kelpa::test {

inline constexpr std::array quotedTodoTexts = std::to_array<QuotedText>({
    {CopyKey::AllTodos,
     {u"所有待办", u"All todos", u"すべてのタスク", u"모든 할 일", u"Toutes les tâches",
      u"Alle Aufgaben"}},
    {CopyKey::NoTodosYet,
     {u"还没有待办", u"No todos yet", u"タスクはまだありません", u"아직 할 일이 없습니다",
      u"Aucune tâche pour l’instant", u"Noch keine Aufgaben"}},
    {CopyKey::NoOpenTodos,
     {u"没有未完成的待办", u"No open todos", u"未完了のタスクはありません",
      u"미완료 할 일이 없습니다", u"Aucune tâche inachevée", u"Keine offenen Aufgaben"}},
    {CopyKey::AddTodo,
     {u"添加待办", u"Add todo", u"タスクを追加", u"할 일 추가", u"Ajouter une tâche",
      u"Aufgabe hinzufügen"}},
    {CopyKey::EnterTodo,
     {u"输入待办", u"Enter a todo", u"タスクを入力", u"할 일 입력", u"Saisir une tâche",
      u"Aufgabe eingeben"}},
    {CopyKey::EditTodo,
     {u"编辑待办", u"Edit todo", u"タスクを編集", u"할 일 편집", u"Modifier la tâche",
      u"Aufgabe bearbeiten"}},
    {CopyKey::MoveToGoal,
     {u"移动到目标", u"Move to goal", u"目標へ移動", u"목표로 이동", u"Déplacer vers un objectif",
      u"In ein Ziel verschieben"}},
    {CopyKey::DeleteTodo,
     {u"删除待办", u"Delete todo", u"タスクを削除", u"할 일 삭제", u"Supprimer la tâche",
      u"Aufgabe löschen"}},
    {CopyKey::DeleteCompletedTodos,
     {u"删除已完成的待办", u"Delete completed todos", u"完了したタスクを削除", u"완료한 할 일 삭제",
      u"Supprimer les tâches terminées", u"Erledigte Aufgaben löschen"}},
    {CopyKey::MoreTodoActions,
     {u"更多待办操作", u"More todo actions", u"タスクのその他の操作", u"할 일 작업 더 보기",
      u"Autres actions sur la tâche", u"Weitere Aktionen für die Aufgabe"}},
    {CopyKey::MoveTodoUp,
     {u"上移待办", u"Move todo up", u"タスクを上へ移動", u"할 일을 위로 이동", u"Monter la tâche",
      u"Aufgabe nach oben verschieben"}},
    {CopyKey::MoveTodoDown,
     {u"下移待办", u"Move todo down", u"タスクを下へ移動", u"할 일을 아래로 이동",
      u"Descendre la tâche", u"Aufgabe nach unten verschieben"}},
    {CopyKey::TodoDeleted,
     {u"待办已删除", u"Todo deleted", u"タスクを削除しました", u"할 일을 삭제했습니다",
      u"Tâche supprimée", u"Aufgabe gelöscht"}},
    {CopyKey::LastTodoCompleted,
     {u"目标的最后一个待办已完成", u"Last todo of the goal completed",
      u"目標の最後のタスクを完了しました", u"목표의 마지막 할 일을 완료했습니다",
      u"Dernière tâche de l’objectif terminée", u"Letzte Aufgabe des Ziels erledigt"}},
    {CopyKey::TodoCopied,
     {u"待办已复制到剪贴板", u"Todo copied to clipboard", u"タスクをクリップボードにコピーしました",
      u"할 일을 클립보드에 복사했습니다", u"Tâche copiée dans le presse-papiers",
      u"Aufgabe in die Zwischenablage kopiert"}},
});

} // namespace kelpa::test
