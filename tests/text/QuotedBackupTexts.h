// The wording about backups, for `QuotedTextsTest`.
#pragma once

#include "text/QuotedText.h"

namespace kelpa::test {

inline constexpr std::array quotedBackupTexts = std::to_array<QuotedText>({
    {CopyKey::RestoreBackup,
     {u"恢复备份…", u"Restore a backup…", u"バックアップを復元…", u"백업 복원…",
      u"Restaurer une sauvegarde…", u"Sicherung wiederherstellen…"}},
    {CopyKey::RestoreBackupTitle,
     {u"恢复备份", u"Restore a backup", u"バックアップの復元", u"백업 복원",
      u"Restaurer une sauvegarde", u"Sicherung wiederherstellen"}},
    {CopyKey::BackupsText,
     {u"Kelpa 每天在第一次更改之前备份看板。恢复会替换整个看板；现在的看板会先备份，也可以撤销。",
      u"Kelpa keeps the board as it was before each day’s first change. Restoring replaces the "
      u"whole board; the present one is kept as a backup first, and Undo brings it back.",
      u"Kelpaは毎日、最初の変更の前にボードをバックアップします。復元するとボード全体が置き換わりま"
      u"す。現在のボードは先にバックアップされ、取り消しもできます。",
      u"Kelpa는 매일 첫 변경 전에 보드를 백업합니다. 복원하면 보드 전체가 바뀌며, 현재 보드는 먼저 "
      u"백업되고 실행 취소로 되돌릴 수 있습니다.",
      u"Kelpa garde chaque jour le tableau tel qu’il était avant la première modification. La "
      u"restauration remplace tout le tableau ; l’actuel est d’abord sauvegardé, et Annuler le "
      u"ramène.",
      u"Kelpa bewahrt die Übersicht jeden Tag so auf, wie sie vor der ersten Änderung war. "
      u"Wiederherstellen ersetzt die ganze Übersicht; die jetzige wird vorher gesichert, und "
      u"„Rückgängig“ holt sie zurück."}},
    {CopyKey::NoBackupsYet,
     {u"还没有备份。", u"There is no backup yet.", u"バックアップはまだありません。",
      u"아직 백업이 없습니다.", u"Il n’y a pas encore de sauvegarde.",
      u"Es gibt noch keine Sicherung."}},
    {CopyKey::BackupUnreadable,
     {u"无法读取此备份", u"This backup cannot be read", u"このバックアップは読み取れません",
      u"이 백업을 읽을 수 없습니다", u"Cette sauvegarde est illisible",
      u"Diese Sicherung lässt sich nicht lesen"}},
    {CopyKey::BackupBeforeRestore,
     {u"恢复备份之前", u"Before a backup was restored", u"バックアップの復元前", u"백업 복원 전",
      u"Avant une restauration", u"Vor einer Wiederherstellung"}},
    {CopyKey::BackupBeforeImport,
     {u"导入文件之前", u"Before a file was imported", u"ファイルの読み込み前", u"파일 가져오기 전",
      u"Avant une importation", u"Vor einem Import"}},
    {CopyKey::FileImported,
     {u"已导入", u"Imported", u"読み込みました", u"가져왔습니다", u"Importation effectuée",
      u"Importiert"}},
    {CopyKey::BackupNotKept,
     {u"无法先备份现在的看板，因此没有恢复任何内容。",
      u"The present board could not be kept as a backup first, so nothing was restored.",
      u"現在のボードを先にバックアップできなかったため、何も復元していません。",
      u"현재 보드를 먼저 백업할 수 없어 아무것도 복원하지 않았습니다.",
      u"Le tableau actuel n’a pas pu être sauvegardé d’abord ; rien n’a donc été restauré.",
      u"Die jetzige Übersicht konnte vorher nicht gesichert werden; deshalb wurde nichts "
      u"wiederhergestellt."}},
    {CopyKey::Restore, {u"恢复", u"Restore", u"復元", u"복원", u"Restaurer", u"Wiederherstellen"}},
    {CopyKey::BackupRestored,
     {u"已恢复备份", u"Backup restored", u"バックアップを復元しました", u"백업을 복원했습니다",
      u"Sauvegarde restaurée", u"Sicherung wiederhergestellt"}},
    {CopyKey::RestoringBackup,
     {u"正在恢复…", u"Restoring…", u"復元しています…", u"복원하는 중…", u"Restauration…",
      u"Wird wiederhergestellt…"}},
    {CopyKey::BoardIsSame,
     {u"看板原本就是这样，没有变化", u"The board is the same already; nothing changed",
      u"ボードはすでに同じ内容です。何も変わっていません",
      u"보드가 이미 같은 내용이라 바뀐 것이 없습니다",
      u"Le tableau est déjà identique ; rien n’a changé",
      u"Die Übersicht ist schon genau so; nichts hat sich geändert"}},
    {CopyKey::SavingFirst,
     {u"正在先保存看板的更改…", u"Saving the board’s changes first…",
      u"先にボードの変更を保存しています…", u"보드의 변경 사항을 먼저 저장하는 중…",
      u"Enregistrement des modifications du tableau d’abord…",
      u"Die Änderungen der Übersicht werden zuerst gespeichert…"}},
});

} // namespace kelpa::test
