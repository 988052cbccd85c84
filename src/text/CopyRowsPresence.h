// The texts about how long Kelpa is there, and the keys that call it.
#pragma once

#include "text/CopyRow.h"

namespace kelpa {

inline constexpr std::array presenceCopyRows{
    CopyRow{CopyKey::QuitKelpa, u"退出 Kelpa", u"Quit Kelpa", u"Kelpaを終了", u"Kelpa 종료",
            u"Quitter Kelpa", u"Kelpa beenden"},
    CopyRow{CopyKey::ClosingQuits, u"关闭窗口时退出", u"Quit when the window is closed",
            u"ウィンドウを閉じたら終了", u"창을 닫으면 종료",
            u"Quitter à la fermeture de la fenêtre", u"Beim Schließen des Fensters beenden"},
    CopyRow{CopyKey::StartWithSession, u"登录时启动", u"Start with the session",
            u"ログイン時に起動", u"로그인할 때 시작", u"Démarrer avec la session",
            u"Mit der Sitzung starten"},
    CopyRow{CopyKey::SessionStartFailed, u"无法更改登录时启动的设置",
            u"Starting with the session could not be changed",
            u"ログイン時に起動する設定を変更できませんでした",
            u"로그인할 때 시작하는 설정을 바꾸지 못했습니다",
            u"Le démarrage avec la session n’a pas pu être modifié",
            u"Der Start mit der Sitzung ließ sich nicht ändern"},
    CopyRow{CopyKey::SessionStartRefused, u"桌面不允许 Kelpa 在登录时启动",
            u"The desktop does not let Kelpa start with the session",
            u"デスクトップがログイン時のKelpaの起動を許可していません",
            u"데스크톱이 로그인할 때 Kelpa를 시작하도록 허용하지 않습니다",
            u"Le bureau n’autorise pas Kelpa à démarrer avec la session",
            u"Der Desktop lässt Kelpa nicht mit der Sitzung starten"},
    CopyRow{CopyKey::KelpaStays, u"Kelpa 仍在运行", u"Kelpa keeps running",
            u"Kelpaは動作を続けています", u"Kelpa가 계속 실행 중입니다", u"Kelpa reste actif",
            u"Kelpa läuft weiter"},
    CopyRow{CopyKey::KelpaStaysByDoubleTap, u"连按两次 ⌘，或再次启动 Kelpa，即可回到看板。",
            u"Press ⌘ twice, or start Kelpa again, to get the board back.",
            u"⌘を2回押すか、Kelpaをもう一度起動すると、ボードに戻れます。",
            u"⌘를 두 번 누르거나 Kelpa를 다시 시작하면 보드로 돌아옵니다.",
            u"Appuyez deux fois sur ⌘ ou relancez Kelpa pour retrouver le tableau.",
            u"Zweimal ⌘ drücken oder Kelpa erneut starten holt die Übersicht zurück."},
    CopyRow{CopyKey::KelpaStaysByLauncher, u"再次启动 Kelpa 即可回到看板。",
            u"Start Kelpa again to get the board back.",
            u"Kelpaをもう一度起動すると、ボードに戻れます。",
            u"Kelpa를 다시 시작하면 보드로 돌아옵니다.",
            u"Relancez Kelpa pour retrouver le tableau.",
            u"Kelpa erneut starten holt die Übersicht zurück."},
    CopyRow{CopyKey::NewTodo, u"新建待办", u"New todo", u"新規タスク", u"새 할 일",
            u"Nouvelle tâche", u"Neue Aufgabe"},
    CopyRow{CopyKey::EntryHint, u"输入 # 选择目标", u"Type # to choose the goal",
            u"#を入力して目標を選択", u"#을 입력해 목표 선택",
            u"Saisissez # pour choisir l’objectif", u"Mit # das Ziel wählen"},
    CopyRow{CopyKey::BringKelpaForward, u"呼出 Kelpa", u"Bring Kelpa forward", u"Kelpaを呼び出す",
            u"Kelpa 불러오기", u"Afficher Kelpa", u"Kelpa aufrufen"},
    CopyRow{CopyKey::DesktopShortcuts, u"桌面快捷键…", u"Desktop shortcuts…",
            u"デスクトップのショートカット…", u"데스크톱 단축키…", u"Raccourcis du bureau…",
            u"Tastenkürzel des Desktops…"},
    CopyRow{CopyKey::ShortcutsOffered, u"此桌面可以设置呼出 Kelpa 的按键",
            u"This desktop can have a key that brings Kelpa forward",
            u"このデスクトップでは、Kelpaを呼び出すキーを設定できます",
            u"이 데스크톱에서는 Kelpa를 불러올 키를 정할 수 있습니다",
            u"Sur ce bureau, une touche peut afficher Kelpa",
            u"Auf diesem Desktop kann eine Taste Kelpa aufrufen"},
    CopyRow{CopyKey::ChooseKeys, u"选择按键…", u"Choose keys…", u"キーを選択…", u"키 선택…",
            u"Choisir les touches…", u"Tasten wählen…"},
    CopyRow{
        CopyKey::ShortcutsFailed, u"桌面没有为 Kelpa 设置按键",
        u"The desktop has given Kelpa no keys", u"デスクトップはKelpaのキーを設定しませんでした",
        u"데스크톱이 Kelpa의 키를 정하지 않았습니다", u"Le bureau n’a donné aucune touche à Kelpa",
        u"Der Desktop hat Kelpa keine Tasten gegeben"},
    CopyRow{CopyKey::NewTodoByCommand,
            u"要在任何程序中添加待办，请在桌面设置中为「kelpa --new-todo」指定按键",
            u"To add a todo from any program, bind a key to “kelpa --new-todo” in the desktop’s "
            u"settings",
            u"どのプログラムからでもタスクを追加するには、デスクトップの設定で「kelpa "
            u"--new-todo」にキーを割り当ててください",
            u"어떤 프로그램에서든 할 일을 추가하려면 데스크톱 설정에서 ‘kelpa --new-todo’에 키를 "
            u"지정하세요",
            u"Pour ajouter une tâche depuis n’importe quel programme, associez une touche à « "
            u"kelpa --new-todo » dans les réglages du bureau",
            u"Um aus jedem Programm eine Aufgabe hinzuzufügen, lege in den Einstellungen des "
            u"Desktops eine Taste auf „kelpa --new-todo“"},
};

} // namespace kelpa
