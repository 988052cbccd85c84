// The wording of what the desktop lacks, for `QuotedTextsTest`.
#pragma once

#include "text/QuotedText.h"

namespace kelpa::test {

inline constexpr std::array quotedDesktopTexts = std::to_array<QuotedText>({
    {CopyKey::WindowsNotListed,
     {u"此桌面上无法列出窗口", u"Windows cannot be listed on this desktop",
      u"このデスクトップではウィンドウを一覧表示できません",
      u"이 데스크톱에서는 창을 나열할 수 없습니다",
      u"Les fenêtres ne peuvent pas être listées sur ce bureau",
      u"Auf diesem Desktop lassen sich keine Fenster auflisten"}},
    {CopyKey::OnlyX11Windows,
     {u"只列出了 X11 程序的窗口", u"Only windows of X11 programs are listed",
      u"X11プログラムのウィンドウだけが表示されています", u"X11 프로그램의 창만 나열됩니다",
      u"Seules les fenêtres des programmes X11 sont listées",
      u"Nur Fenster von X11-Programmen sind aufgeführt"}},
    {CopyKey::WindowsNotActedOn,
     {u"此桌面上无法切换或关闭窗口", u"Windows cannot be switched to or closed on this desktop",
      u"このデスクトップではウィンドウの切り替えや終了ができません",
      u"이 데스크톱에서는 창을 전환하거나 닫을 수 없습니다",
      u"Ce bureau ne permet ni d’activer ni de fermer les fenêtres",
      u"Auf diesem Desktop lassen sich Fenster weder nach vorn holen noch schließen"}},
    {CopyKey::CompositorNotRead,
     {u"Kelpa 无法读取此合成器的窗口。目标和待办照常可用；要看到窗口，请登录 X11 会话。",
      u"Kelpa cannot read the windows of this compositor. Goals and todos work; to see windows, "
      u"log in to a session on X11.",
      u"Kelpaは、このコンポジターのウィンドウを読み取れません。目標とタスクは使えます。ウィンドウを"
      u"表示するには、X11のセッションにログインしてください。",
      u"Kelpa는 이 컴포지터의 창을 읽을 수 없습니다. 목표와 할 일은 사용할 수 있습니다. 창을 "
      u"보려면 X11 세션으로 로그인하세요.",
      u"Kelpa ne peut pas lire les fenêtres de ce compositeur. Objectifs et tâches fonctionnent ; "
      u"pour voir les fenêtres, ouvrez une session X11.",
      u"Kelpa kann die Fenster dieses Compositors nicht lesen. Ziele und Aufgaben funktionieren; "
      u"um Fenster zu sehen, melde dich in einer X11-Sitzung an."}},
    {CopyKey::DesktopSilent,
     {u"桌面没有响应。恢复响应后，请重新启动 Kelpa。",
      u"The desktop does not reply. Start Kelpa again once it does.",
      u"デスクトップが応答しません。応答するようになったら、Kelpaを起動し直してください。",
      u"데스크톱이 응답하지 않습니다. 다시 응답하면 Kelpa를 다시 시작하세요.",
      u"Le bureau ne répond pas. Relancez Kelpa dès qu’il répond.",
      u"Der Desktop antwortet nicht. Starte Kelpa neu, sobald er es tut."}},
    {CopyKey::StartedWithoutWindows,
     {u"Kelpa 是以「--desktop none」启动的。去掉该选项重新启动，即可看到窗口。",
      u"Kelpa was started with “--desktop none”. Start it without that to see windows.",
      u"Kelpaは「--desktop "
      u"none」で起動されました。ウィンドウを表示するには、これを付けずに起動してください。",
      u"Kelpa가 ‘--desktop none’으로 시작되었습니다. 창을 보려면 이 옵션 없이 시작하세요.",
      u"Kelpa a été lancé avec « --desktop none ». Lancez-le sans cette option pour voir les "
      u"fenêtres.",
      u"Kelpa wurde mit „--desktop none“ gestartet. Starte es ohne diese Option, um Fenster zu "
      u"sehen."}},
    {CopyKey::XwaylandHasX11Windows,
     {u"这是 Wayland 会话，Kelpa 通过 Xwayland 查看窗口。要看到所有窗口，请登录 X11 会话。",
      u"This is a Wayland session, which Kelpa sees through Xwayland. To see all windows, log in "
      u"to a session on X11.",
      u"これはWaylandのセッションで、KelpaはXwaylandを通してウィンドウを見ています。すべてのウィン"
      u"ドウを表示するには、X11のセッションにログインしてください。",
      u"Wayland 세션이며, Kelpa는 Xwayland를 통해 창을 봅니다. 모든 창을 보려면 X11 세션으로 "
      u"로그인하세요.",
      u"Cette session utilise Wayland, que Kelpa voit à travers Xwayland. Pour voir toutes les "
      u"fenêtres, ouvrez une session X11.",
      u"Dies ist eine Wayland-Sitzung, die Kelpa durch Xwayland sieht. Um alle Fenster zu sehen, "
      u"melde dich in einer X11-Sitzung an."}},
    {CopyKey::NoWindowsHere,
     {u"此处无法显示窗口", u"No windows can be shown here", u"ここにはウィンドウを表示できません",
      u"여기에는 창을 표시할 수 없습니다", u"Aucune fenêtre ne peut être affichée ici",
      u"Hier lassen sich keine Fenster zeigen"}},
    {CopyKey::NoPreviewsHere,
     {u"此桌面不提供窗口画面", u"This desktop does not capture windows",
      u"このデスクトップではウィンドウをキャプチャできません",
      u"이 데스크톱은 창을 캡처하지 않습니다", u"Ce bureau ne capture pas les fenêtres",
      u"Dieser Desktop nimmt keine Fenster auf"}},
    {CopyKey::DragWindowHelp,
     {u"拖动到其他目标", u"Drag to another goal", u"ドラッグで別の目標へ移動",
      u"드래그해 다른 목표로 이동", u"Glissez vers un autre objectif",
      u"Zum Verschieben auf ein anderes Ziel ziehen"}},
    {CopyKey::CloseWindow,
     {u"关闭此窗口", u"Close this window", u"このウィンドウを閉じる", u"이 창 닫기",
      u"Fermer cette fenêtre", u"Dieses Fenster schließen"}},
    {CopyKey::DoubleTapNotHeard,
     {u"要呼出 Kelpa，请在桌面设置中为「kelpa --show」指定按键",
      u"To bring Kelpa forward, bind a key to “kelpa --show” in the desktop’s settings",
      u"Kelpaを呼び出すには、デスクトップの設定で「kelpa --show」にキーを割り当ててください",
      u"Kelpa를 불러오려면 데스크톱 설정에서 ‘kelpa --show’에 키를 지정하세요",
      u"Pour afficher Kelpa, associez une touche à « kelpa --show » dans les réglages du bureau",
      u"Um Kelpa aufzurufen, lege in den Einstellungen des Desktops eine Taste auf „kelpa "
      u"--show“"}},
    {CopyKey::CopyCommand,
     {u"复制命令", u"Copy command", u"コマンドをコピー", u"명령 복사", u"Copier la commande",
      u"Befehl kopieren"}},
    {CopyKey::CommandCopied,
     {u"命令已复制到剪贴板", u"Command copied to clipboard",
      u"コマンドをクリップボードにコピーしました", u"명령을 클립보드에 복사했습니다",
      u"Commande copiée dans le presse-papiers", u"Befehl in die Zwischenablage kopiert"}},
});

} // namespace kelpa::test
