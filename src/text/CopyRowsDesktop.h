// The texts of what the desktop lacks: notices, and what stands where something is missed.
#pragma once

#include "text/CopyRow.h"

namespace kelpa {

inline constexpr std::array desktopCopyRows{
    CopyRow{CopyKey::WindowsNotListed, u"此桌面上无法列出窗口",
            u"Windows cannot be listed on this desktop",
            u"このデスクトップではウィンドウを一覧表示できません",
            u"이 데스크톱에서는 창을 나열할 수 없습니다",
            u"Les fenêtres ne peuvent pas être listées sur ce bureau",
            u"Auf diesem Desktop lassen sich keine Fenster auflisten"},
    CopyRow{CopyKey::OnlyX11Windows, u"只列出了 X11 程序的窗口",
            u"Only windows of X11 programs are listed",
            u"X11プログラムのウィンドウだけが表示されています", u"X11 프로그램의 창만 나열됩니다",
            u"Seules les fenêtres des programmes X11 sont listées",
            u"Nur Fenster von X11-Programmen sind aufgeführt"},
    CopyRow{CopyKey::WindowsNotActedOn, u"此桌面上无法切换或关闭窗口",
            u"Windows cannot be switched to or closed on this desktop",
            u"このデスクトップではウィンドウの切り替えや終了ができません",
            u"이 데스크톱에서는 창을 전환하거나 닫을 수 없습니다",
            u"Ce bureau ne permet ni d’activer ni de fermer les fenêtres",
            u"Auf diesem Desktop lassen sich Fenster weder nach vorn holen noch schließen"},
    CopyRow{CopyKey::CompositorNotRead,
            u"Kelpa 无法读取此合成器的窗口。目标和待办照常可用；要看到窗口，请登录 X11 会话。",
            u"Kelpa cannot read the windows of this compositor. Goals and todos work; to see "
            u"windows, log in to a session on X11.",
            u"Kelpaは、このコンポジターのウィンドウを読み取れません。目標とタスクは使えます。ウィン"
            u"ドウを表示するには、X11のセッションにログインしてください。",
            u"Kelpa는 이 컴포지터의 창을 읽을 수 없습니다. 목표와 할 일은 사용할 수 있습니다. 창을 "
            u"보려면 X11 세션으로 로그인하세요.",
            u"Kelpa ne peut pas lire les fenêtres de ce compositeur. Objectifs et tâches "
            u"fonctionnent ; pour voir les fenêtres, ouvrez une session X11.",
            u"Kelpa kann die Fenster dieses Compositors nicht lesen. Ziele und Aufgaben "
            u"funktionieren; um Fenster zu sehen, melde dich in einer X11-Sitzung an."},
    CopyRow{CopyKey::DesktopSilent, u"桌面没有响应。恢复响应后，请重新启动 Kelpa。",
            u"The desktop does not reply. Start Kelpa again once it does.",
            u"デスクトップが応答しません。応答するようになったら、Kelpaを起動し直してください。",
            u"데스크톱이 응답하지 않습니다. 다시 응답하면 Kelpa를 다시 시작하세요.",
            u"Le bureau ne répond pas. Relancez Kelpa dès qu’il répond.",
            u"Der Desktop antwortet nicht. Starte Kelpa neu, sobald er es tut."},
    CopyRow{CopyKey::StartedWithoutWindows,
            u"Kelpa 是以「--desktop none」启动的。去掉该选项重新启动，即可看到窗口。",
            u"Kelpa was started with “--desktop none”. Start it without that to see windows.",
            u"Kelpaは「--desktop "
            u"none」で起動されました。ウィンドウを表示するには、これを付けずに起動してください。",
            u"Kelpa가 ‘--desktop none’으로 시작되었습니다. 창을 보려면 이 옵션 없이 시작하세요.",
            u"Kelpa a été lancé avec « --desktop none ». Lancez-le sans cette option pour voir les "
            u"fenêtres.",
            u"Kelpa wurde mit „--desktop none“ gestartet. Starte es ohne diese Option, um Fenster "
            u"zu sehen."},
    CopyRow{CopyKey::XwaylandHasX11Windows,
            u"这是 Wayland 会话，Kelpa 通过 Xwayland 查看窗口。要看到所有窗口，请登录 X11 会话。",
            u"This is a Wayland session, which Kelpa sees through Xwayland. To see all windows, "
            u"log in to a session on X11.",
            u"これはWaylandのセッションで、KelpaはXwaylandを通してウィンドウを見ています。すべての"
            u"ウィンドウを表示するには、X11のセッションにログインしてください。",
            u"Wayland 세션이며, Kelpa는 Xwayland를 통해 창을 봅니다. 모든 창을 보려면 X11 세션으로 "
            u"로그인하세요.",
            u"Cette session utilise Wayland, que Kelpa voit à travers Xwayland. Pour voir toutes "
            u"les fenêtres, ouvrez une session X11.",
            u"Dies ist eine Wayland-Sitzung, die Kelpa durch Xwayland sieht. Um alle Fenster zu "
            u"sehen, melde dich in einer X11-Sitzung an."},
    CopyRow{CopyKey::ExtensionNotInstalled,
            u"在 GNOME 上，Kelpa 通过 Shell 扩展查看窗口，但尚未安装该扩展。请安装 Kelpa "
            u"的软件包，然后重新登录。",
            u"On GNOME, Kelpa sees windows through a Shell extension, which is not installed. "
            u"Install Kelpa’s package, then log in again.",
            u"GNOMEでは、KelpaはShell拡張機能を通してウィンドウを見ますが、インストールされていませ"
            u"ん。Kelpaのパッケージをインストールしてから、ログインし直してください。",
            u"GNOME에서 Kelpa는 Shell 확장을 통해 창을 보지만, 확장이 설치되어 있지 않습니다. "
            u"Kelpa 패키지를 설치한 다음 다시 로그인하세요.",
            u"Sous GNOME, Kelpa voit les fenêtres grâce à une extension de Shell, qui n’est pas "
            u"installée. Installez le paquet de Kelpa, puis reconnectez-vous.",
            u"Unter GNOME sieht Kelpa Fenster durch eine Shell-Erweiterung, die nicht installiert "
            u"ist. Installiere das Paket von Kelpa und melde dich dann neu an."},
    CopyRow{
        CopyKey::ExtensionCanBeInstalled,
        u"在 GNOME 上，Kelpa 通过 Shell 扩展查看窗口。可以为你的账户安装，下次登录后生效。",
        u"On GNOME, Kelpa sees windows through a Shell extension. It can be installed for your "
        u"account, and works after the next login.",
        u"GNOMEでは、KelpaはShell拡張機能を通してウィンドウを見ます。このアカウントにインストー"
        u"ルでき、次回のログイン後に使えます。",
        u"GNOME에서 Kelpa는 Shell 확장을 통해 창을 봅니다. 내 계정에 설치할 수 있으며 다음 "
        u"로그인 후에 작동합니다.",
        u"Sous GNOME, Kelpa voit les fenêtres grâce à une extension de Shell. Elle peut être "
        u"installée pour votre compte et fonctionne après la prochaine connexion.",
        u"Unter GNOME sieht Kelpa Fenster durch eine Shell-Erweiterung, die sich für dein Konto "
        u"installieren lässt und nach der nächsten Anmeldung arbeitet."},
    CopyRow{
        CopyKey::ExtensionIsOff, u"在 GNOME 上，Kelpa 通过 Shell 扩展查看窗口，该扩展已关闭。",
        u"On GNOME, Kelpa sees windows through a Shell extension, which is switched off.",
        u"GNOMEでは、KelpaはShell拡張機能を通してウィンドウを見ますが、オフになっています。",
        u"GNOME에서 Kelpa는 Shell 확장을 통해 창을 보지만, 확장이 꺼져 있습니다.",
        u"Sous GNOME, Kelpa voit les fenêtres grâce à une extension de Shell, qui est désactivée.",
        u"Unter GNOME sieht Kelpa Fenster durch eine Shell-Erweiterung, die ausgeschaltet ist."},
    CopyRow{CopyKey::ExtensionNeedsLogin,
            u"Kelpa 的 Shell 扩展已启用。请注销后重新登录，即可看到窗口。",
            u"Kelpa’s Shell extension is switched on. Log out and in again to see windows.",
            u"KelpaのShell拡張機能はオンになっています。ウィンドウを表示するには、ログアウトしてか"
            u"らログインし直してください。",
            u"Kelpa의 Shell 확장이 켜져 있습니다. 창을 보려면 로그아웃한 다음 다시 로그인하세요.",
            u"L’extension de Shell de Kelpa est activée. Déconnectez-vous puis reconnectez-vous "
            u"pour voir les fenêtres.",
            u"Die Shell-Erweiterung von Kelpa ist eingeschaltet. Melde dich ab und wieder an, um "
            u"Fenster zu sehen."},
    CopyRow{CopyKey::ExtensionTooOld,
            u"Kelpa 的 Shell 扩展版本过旧，或与此 GNOME 不兼容。请更新 Kelpa，然后重新登录。",
            u"Kelpa’s Shell extension is too old, or does not fit this GNOME. Update Kelpa, then "
            u"log in again.",
            u"KelpaのShell拡張機能が古いか、このGNOMEに対応していません。Kelpaを更新してから、ログ"
            u"インし直してください。",
            u"Kelpa의 Shell 확장이 너무 오래되었거나 이 GNOME에 맞지 않습니다. Kelpa를 업데이트한 "
            u"다음 다시 로그인하세요.",
            u"L’extension de Shell de Kelpa est trop ancienne ou ne convient pas à cette version "
            u"de GNOME. Mettez Kelpa à jour, puis reconnectez-vous.",
            u"Die Shell-Erweiterung von Kelpa ist zu alt oder passt nicht zu diesem GNOME. "
            u"Aktualisiere Kelpa und melde dich dann neu an."},
    CopyRow{
        CopyKey::ExtensionDenies,
        u"Kelpa 已更新，或正在使用的 Shell 扩展属于安装在别处的 Kelpa。请重新启动 "
        u"Kelpa，或启动那个 "
        u"Kelpa。",
        u"Kelpa was updated, or the Shell extension in use belongs to a Kelpa that is installed "
        u"elsewhere. Restart Kelpa, or start that one.",
        u"Kelpaが更新されたか、使用中のShell拡張機能が別の場所にインストールされたKelpaのものです。"
        u"Kelpaを再起動するか、そちらを起動してください。",
        u"Kelpa가 업데이트되었거나, 사용 중인 Shell 확장이 다른 곳에 설치된 Kelpa의 것입니다. "
        u"Kelpa를 "
        u"다시 시작하거나 그 Kelpa를 시작하세요.",
        u"Kelpa a été mis à jour, ou l’extension de Shell utilisée appartient à un Kelpa installé "
        u"ailleurs. Redémarrez Kelpa, ou lancez l’autre.",
        u"Kelpa wurde aktualisiert, oder die verwendete Shell-Erweiterung gehört zu einem Kelpa, "
        u"das woanders installiert ist. Starte Kelpa neu, oder starte jenes."},
    CopyRow{CopyKey::SwitchExtensionOn, u"启用", u"Switch on", u"オンにする", u"켜기", u"Activer",
            u"Einschalten"},
    CopyRow{CopyKey::InstallExtension, u"安装", u"Install", u"インストール", u"설치", u"Installer",
            u"Installieren"},
    CopyRow{CopyKey::NoWindowsHere, u"此处无法显示窗口", u"No windows can be shown here",
            u"ここにはウィンドウを表示できません", u"여기에는 창을 표시할 수 없습니다",
            u"Aucune fenêtre ne peut être affichée ici", u"Hier lassen sich keine Fenster zeigen"},
    CopyRow{CopyKey::NoPreviewsHere, u"此桌面不提供窗口画面",
            u"This desktop does not capture windows",
            u"このデスクトップではウィンドウをキャプチャできません",
            u"이 데스크톱은 창을 캡처하지 않습니다", u"Ce bureau ne capture pas les fenêtres",
            u"Dieser Desktop nimmt keine Fenster auf"},
    CopyRow{CopyKey::PreviewsNeedOpenGL, u"KWin 未使用 OpenGL，因此没有窗口画面",
            u"KWin draws without OpenGL, so there are no previews",
            u"KWinがOpenGLを使っていないため、プレビューはありません",
            u"KWin이 OpenGL 없이 그리므로 미리보기가 없습니다",
            u"KWin dessine sans OpenGL : il n’y a pas d’aperçus",
            u"KWin zeichnet ohne OpenGL, daher gibt es keine Vorschau"},
    CopyRow{CopyKey::PreviewsNeedDesktopEntry, u"安装 Kelpa 的软件包后，KWin 才允许显示窗口画面",
            u"KWin allows previews once Kelpa’s package is installed",
            u"Kelpaのパッケージをインストールすると、KWinがプレビューを許可します",
            u"Kelpa 패키지를 설치하면 KWin이 미리보기를 허용합니다",
            u"KWin autorise les aperçus une fois le paquet de Kelpa installé",
            u"KWin erlaubt die Vorschau, sobald das Paket von Kelpa installiert ist"},
    CopyRow{CopyKey::DragWindowHelp, u"拖动到其他目标", u"Drag to another goal",
            u"ドラッグで別の目標へ移動", u"드래그해 다른 목표로 이동",
            u"Glissez vers un autre objectif", u"Zum Verschieben auf ein anderes Ziel ziehen"},
    CopyRow{CopyKey::CloseWindow, u"关闭此窗口", u"Close this window", u"このウィンドウを閉じる",
            u"이 창 닫기", u"Fermer cette fenêtre", u"Dieses Fenster schließen"},
    CopyRow{
        CopyKey::DoubleTapNotHeard, u"要呼出 Kelpa，请在桌面设置中为「kelpa --show」指定按键",
        u"To bring Kelpa forward, bind a key to “kelpa --show” in the desktop’s settings",
        u"Kelpaを呼び出すには、デスクトップの設定で「kelpa --show」にキーを割り当ててください",
        u"Kelpa를 불러오려면 데스크톱 설정에서 ‘kelpa --show’에 키를 지정하세요",
        u"Pour afficher Kelpa, associez une touche à « kelpa --show » dans les réglages du bureau",
        u"Um Kelpa aufzurufen, lege in den Einstellungen des Desktops eine Taste auf „kelpa "
        u"--show“"},
    CopyRow{CopyKey::CopyCommand, u"复制命令", u"Copy command", u"コマンドをコピー", u"명령 복사",
            u"Copier la commande", u"Befehl kopieren"},
    CopyRow{CopyKey::CommandCopied, u"命令已复制到剪贴板", u"Command copied to clipboard",
            u"コマンドをクリップボードにコピーしました", u"명령을 클립보드에 복사했습니다",
            u"Commande copiée dans le presse-papiers", u"Befehl in die Zwischenablage kopiert"},
};

} // namespace kelpa
