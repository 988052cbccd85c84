// The texts about how long Kelpa is there.
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
};

} // namespace kelpa
