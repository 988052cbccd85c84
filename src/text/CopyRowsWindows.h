// The texts of window cards and of the window selection sheet.
#pragma once

#include "text/CopyRow.h"

namespace kelpa {

inline constexpr std::array windowCopyRows{
    CopyRow{CopyKey::Window, u"窗口", u"Window", u"ウィンドウ", u"창", u"Fenêtre", u"Fenster"},
    CopyRow{CopyKey::WindowPreview, u"窗口预览", u"Window preview", u"ウィンドウのプレビュー",
            u"창 미리보기", u"Aperçu de la fenêtre", u"Fenstervorschau"},
    CopyRow{CopyKey::WindowCardHelp, u"单击切换到窗口；拖动到其他目标",
            u"Click to switch to the window; drag to another goal",
            u"クリックでウィンドウに切り替え、ドラッグで別の目標へ移動",
            u"클릭해 창으로 전환하고 드래그해 다른 목표로 이동",
            u"Cliquez pour passer à la fenêtre ; glissez vers un autre objectif",
            u"Klicken zum Wechseln; zum Verschieben auf ein anderes Ziel ziehen"},
    CopyRow{CopyKey::CloseAppProcess, u"关闭此应用进程", u"Close this app process",
            u"このアプリのプロセスを終了", u"이 앱 프로세스 종료",
            u"Arrêter le processus de cette app", u"Prozess dieser App beenden"},
    CopyRow{CopyKey::PreviewNeedsPermission, u"允许屏幕录制以显示预览",
            u"Allow Screen Recording to show a preview",
            u"画面収録を許可するとプレビューが表示されます",
            u"화면 기록을 허용하면 미리보기가 표시됩니다",
            u"Autorisez l’enregistrement d’écran pour afficher un aperçu",
            u"Erlaube Bildschirmaufnahme, um eine Vorschau zu sehen"},
    CopyRow{CopyKey::PreviewNotYet, u"暂时无法捕获此窗口", u"This window cannot be captured yet",
            u"このウィンドウはまだキャプチャできません", u"아직 이 창을 캡처할 수 없습니다",
            u"Cette fenêtre ne peut pas encore être capturée",
            u"Dieses Fenster kann noch nicht aufgenommen werden"},
    CopyRow{CopyKey::PreviewMinimized, u"窗口已最小化；恢复后将重新显示预览",
            u"Window is minimized; preview will return when restored",
            u"ウィンドウは最小化中です。元に戻すとプレビューが再び表示されます",
            u"창이 최소화되었습니다. 복원하면 미리보기가 다시 표시됩니다",
            u"La fenêtre est réduite ; l’aperçu reviendra lorsqu’elle sera restaurée",
            u"Fenster minimiert; Vorschau erscheint nach dem Wiederherstellen"},
    CopyRow{CopyKey::PutWindowBack, u"放回原来的目标", u"Put the window back into its goal",
            u"ウィンドウを元の目標に戻す", u"창을 원래 목표로 되돌리기",
            u"Remettre la fenêtre dans son objectif", u"Das Fenster in sein Ziel zurücklegen"},
    CopyRow{CopyKey::OtherWindow, u"这是另一个窗口", u"This is another window",
            u"これは別のウィンドウです", u"다른 창입니다", u"C’est une autre fenêtre",
            u"Das ist ein anderes Fenster"},
    CopyRow{CopyKey::SelectWindowsText, u"可选择多个窗口。确认后，它们会移出当前所在的目标。",
            u"Select multiple windows. Confirming moves them from their current goals.",
            u"複数のウィンドウを選択してください。確定すると、現在の目標から移動します。",
            u"여러 창을 선택하세요. 확인하면 현재 목표에서 이동합니다.",
            u"Sélectionnez plusieurs fenêtres. La confirmation les retire de leurs objectifs "
            u"actuels.",
            u"Wähle mehrere Fenster aus. Beim Bestätigen verlassen sie ihre aktuellen Ziele."},
    CopyRow{CopyKey::NoMatchingWindows, u"没有匹配的窗口", u"No matching windows",
            u"一致するウィンドウがありません", u"일치하는 창이 없습니다",
            u"Aucune fenêtre correspondante", u"Keine passenden Fenster"},
    CopyRow{CopyKey::AlreadyInGoal, u"已在此目标中", u"Already in this goal",
            u"すでにこの目標にあります", u"이미 이 목표에 있음", u"Déjà dans cet objectif",
            u"Bereits in diesem Ziel"},
    CopyRow{CopyKey::WindowListChanged, u"窗口列表已变化。请重新选择。",
            u"The window list changed. Please select again.",
            u"ウィンドウの一覧が変わりました。もう一度選択してください。",
            u"창 목록이 변경되었습니다. 다시 선택하세요.",
            u"La liste des fenêtres a changé. Refaites votre sélection.",
            u"Die Fensterliste hat sich geändert. Bitte wähle erneut aus."},
};

} // namespace kelpa
