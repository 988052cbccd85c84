// Titles of two windows as programs write them: of one window in two logins, or of two. What must
// come out is judged by eye.
#pragma once

#include <array>

namespace kelpa::test {

enum class PairOutcome {
    /// One window, which goes back by itself.
    found,
    /// One window, which is offered.
    offered,
    /// One window, which is not recognised.
    missed,
    /// Two windows, the second of which is offered the first one's goal.
    doubtful,
    /// Two windows that have nothing to do with each other.
    apart,
};

struct Application
{
    const char* kind;
    const char16_t* id;
    const char16_t* name;
};

struct TitlePair
{
    const Application& application;
    const char16_t* before;
    const char16_t* after;
    PairOutcome outcome;
};

inline constexpr Application firefox{"browser", u"firefox", u"Firefox"};
inline constexpr Application chrome{"browser", u"google-chrome", u"Google Chrome"};
inline constexpr Application edge{"browser", u"microsoft-edge", u"Microsoft Edge"};
inline constexpr Application web{"browser", u"org.gnome.Epiphany", u"Web"};
inline constexpr Application textEditor{"text editor", u"org.gnome.TextEditor", u"Text Editor"};
inline constexpr Application gedit{"text editor", u"org.gnome.gedit", u"gedit"};
inline constexpr Application kate{"text editor", u"org.kde.kate", u"Kate"};
inline constexpr Application gvim{"text editor", u"gvim", u"GVim"};
inline constexpr Application emacs{"text editor", u"emacs", u"Emacs (GUI)"};
inline constexpr Application mousepad{"text editor", u"org.xfce.mousepad", u"Mousepad"};
inline constexpr Application code{"code editor", u"code", u"Visual Studio Code"};
inline constexpr Application gnomeTerminal{"terminal", u"org.gnome.Terminal", u"Terminal"};
inline constexpr Application konsole{"terminal", u"org.kde.konsole", u"Konsole"};
inline constexpr Application xfceTerminal{"terminal", u"xfce4-terminal", u"Xfce Terminal"};
inline constexpr Application xterm{"terminal", u"debian-xterm", u"XTerm"};
inline constexpr Application slack{"chat", u"slack", u"Slack"};
inline constexpr Application discord{"chat", u"discord", u"Discord"};
inline constexpr Application telegram{"chat", u"org.telegram.desktop", u"Telegram"};
inline constexpr Application element{"chat", u"element-desktop", u"Element"};
inline constexpr Application hexchat{"chat", u"io.github.Hexchat", u"HexChat"};
inline constexpr Application thunderbird{"mail", u"thunderbird", u"Thunderbird"};
inline constexpr Application evolution{"mail", u"org.gnome.Evolution", u"Evolution"};
inline constexpr Application kmail{"mail", u"org.kde.kmail2", u"KMail"};
inline constexpr Application writer{"word processor", u"libreoffice-writer", u"LibreOffice Writer"};
inline constexpr Application calc{"spreadsheet", u"libreoffice-calc", u"LibreOffice Calc"};
inline constexpr Application impress{"presentation", u"libreoffice-impress",
                                     u"LibreOffice Impress"};
inline constexpr Application wps{"word processor", u"wps-office-wps", u"WPS 文字"};
inline constexpr Application nautilus{"file manager", u"org.gnome.Nautilus", u"Files"};
inline constexpr Application dolphin{"file manager", u"org.kde.dolphin", u"Dolphin"};
inline constexpr Application thunar{"file manager", u"thunar", u"Thunar File Manager"};
inline constexpr Application evince{"document viewer", u"org.gnome.Evince", u"Document Viewer"};
inline constexpr Application okular{"document viewer", u"org.kde.okular", u"Okular"};
inline constexpr Application xpdf{"document viewer", u"xpdf", u"Xpdf"};
inline constexpr Application gimp{"image editor", u"gimp", u"GNU Image Manipulation Program"};
inline constexpr Application inkscape{"drawing program", u"org.inkscape.Inkscape", u"Inkscape"};
inline constexpr Application krita{"image editor", u"org.kde.krita", u"Krita"};
inline constexpr Application eog{"image viewer", u"org.gnome.eog", u"Image Viewer"};
inline constexpr Application gwenview{"image viewer", u"org.kde.gwenview", u"Gwenview"};
inline constexpr Application idea{"IDE", u"jetbrains-idea-ce", u"IntelliJ IDEA Community Edition"};
inline constexpr Application qtCreator{"IDE", u"org.qt-project.qtcreator", u"Qt Creator"};
inline constexpr Application eclipse{"IDE", u"eclipse", u"Eclipse"};
inline constexpr Application vlc{"media player", u"vlc", u"VLC media player"};
inline constexpr Application mpv{"media player", u"mpv", u"mpv Media Player"};
inline constexpr Application rhythmbox{"music player", u"org.gnome.Rhythmbox3", u"Rhythmbox"};
inline constexpr Application transmission{"download manager", u"transmission-gtk", u"Transmission"};
inline constexpr Application keepass{"password manager", u"org.keepassxc.KeePassXC", u"KeePassXC"};
inline constexpr Application audacity{"sound editor", u"audacity", u"Audacity"};
inline constexpr Application remmina{"remote desktop", u"org.remmina.Remmina", u"Remmina"};
inline constexpr Application virtManager{"virtual machines", u"virt-manager",
                                         u"Virtual Machine Manager"};
inline constexpr Application dbeaver{"database client", u"dbeaver-ce", u"DBeaver"};
inline constexpr Application obsidian{"notes", u"obsidian", u"Obsidian"};
inline constexpr Application zoom{"video meetings", u"us.zoom.Zoom", u"Zoom"};
inline constexpr Application calibre{"e-book reader", u"calibre-ebook-viewer", u"E-book viewer"};
inline constexpr Application blender{"3D editor", u"blender", u"Blender"};
inline constexpr Application gitk{"version control", u"gitk", u"Gitk"};
inline constexpr Application calendar{"calendar", u"org.gnome.Calendar", u"Calendar"};

using enum PairOutcome;

// A pair a line.
// clang-format off
inline constexpr auto titlePairs = std::to_array<TitlePair>({
    // Browsers.
    {firefox, u"Rust by Example — Mozilla Firefox", u"Rust by Example — Mozilla Firefox", found},
    {firefox, u"(3) Inbox | Fastmail — Mozilla Firefox", u"(17) Inbox | Fastmail — Mozilla Firefox",
     found},
    {firefox, u"Issues · kelpa/kelpa — Mozilla Firefox", u"Issues · kelpa/kelpa - Mozilla Firefox",
     found},
    {firefox, u"Posteingang (4) - anna@example.org - Mail — Mozilla Firefox",
     u"Posteingang (11) - anna@example.org - Mail — Mozilla Firefox", found},
    {firefox, u"🔊 Evening concert – Radio — Mozilla Firefox",
     u"Evening concert – Radio — Mozilla Firefox", found},
    {firefox, u"日本語の文書 — Mozilla Firefox", u"日本語の文書 — Mozilla Firefox", found},
    {firefox, u"（2）通知 / 掲示板 — Mozilla Firefox", u"(9) 通知 / 掲示板 — Mozilla Firefox",
     found},
    {firefox, u"Rust by Example — Mozilla Firefox", u"Go by Example — Mozilla Firefox", apart},
    {firefox, u"Mozilla Firefox", u"Mozilla Firefox", offered},
    {firefox, u"New Tab — Mozilla Firefox", u"New Tab — Mozilla Firefox", offered},
    {firefox, u"Neuer Tab — Mozilla Firefox", u"Neuer Tab — Mozilla Firefox", offered},
    {firefox, u"新しいタブ — Mozilla Firefox", u"新しいタブ — Mozilla Firefox", offered},
    {firefox, u"Rust by Example — Mozilla Firefox", u"New Tab — Mozilla Firefox", offered},
    {firefox, u"Rust by Example — Mozilla Firefox", u"Mozilla Firefox", offered},
    {firefox, u"All about Firefox — Mozilla Firefox", u"Mozilla Firefox", doubtful},
    {firefox, u"Report (1).pdf — Mozilla Firefox", u"Report (2).pdf — Mozilla Firefox", apart},
    {firefox, u"Tickets | Issue 12 — Mozilla Firefox", u"Tickets | Issue 13 — Mozilla Firefox",
     doubtful},
    {firefox, u"Issue 12 · kelpa/kelpa — Mozilla Firefox",
     u"Issue 12 · anna/garden — Mozilla Firefox", doubtful},
    {chrome, u"Weather in Oslo - Google Chrome", u"Weather in Oslo - Google Chrome", found},
    {chrome, u"Inbox (12) - anna@example.org - Gmail - Google Chrome",
     u"Inbox (13) - anna@example.org - Gmail - Google Chrome", found},
    {chrome, u"Boîte de réception (2) - anna@example.org - Google Chrome",
     u"Boîte de réception - anna@example.org - Google Chrome", found},
    {chrome, u"收件箱 (3) - anna@example.org - Google Chrome",
     u"收件箱 (5) - anna@example.org - Google Chrome", found},
    {chrome, u"받은편지함 (1) - anna@example.org - Google Chrome",
     u"받은편지함 (4) - anna@example.org - Google Chrome", found},
    {chrome, u"Inbox (12) - anna@example.org - Gmail - Google Chrome",
     u"Inbox (12) - bert@example.org - Gmail - Google Chrome", doubtful},
    {chrome, u"(99+) Timeline / Home - Google Chrome", u"(3) Timeline / Home - Google Chrome",
     found},
    {chrome, u"● Standup notes - Google Docs - Google Chrome",
     u"Standup notes - Google Docs - Google Chrome", found},
    {chrome, u"Standup notes - Google Docs - Google Chrome",
     u"Budget - Google Docs - Google Chrome", doubtful},
    {chrome, u"Untitled document - Google Docs - Google Chrome",
     u"Untitled document - Google Docs - Google Chrome", offered},
    {chrome, u"新标签页 - Google Chrome", u"新标签页 - Google Chrome", offered},
    {chrome, u"about:blank - Google Chrome", u"about:blank - Google Chrome", offered},
    {chrome, u"Google Chrome", u"Weather in Oslo - Google Chrome", doubtful},
    {chrome, u"Chapter 1 - Google Chrome", u"Chapter 2 - Google Chrome", apart},
    {edge, u"Budget 2026.xlsx - Microsoft Edge", u"Budget 2026.xlsx - Microsoft Edge", found},
    {edge, u"Budget 2026.xlsx - Microsoft Edge", u"Budget 2027.xlsx - Microsoft Edge", apart},
    {edge, u"Nouvel onglet - Microsoft Edge", u"Nouvel onglet - Microsoft Edge", offered},
    {edge, u"45% - Upload - Share - Microsoft Edge", u"80% - Upload - Share - Microsoft Edge",
     found},
    {web, u"Planet GNOME", u"Planet GNOME", found},
    {web, u"Planet GNOME", u"Planet Debian", apart},
    {web, u"New Tab", u"New Tab", offered},
    // Text editors.
    {textEditor, u"minutes.txt (~/Documents) - Text Editor",
     u"minutes.txt (~/Documents) - Text Editor", found},
    {textEditor, u"• minutes.txt (~/Documents) - Text Editor",
     u"minutes.txt (~/Documents) - Text Editor", found},
    {textEditor, u"minutes.txt (~/Documents) - Text Editor",
     u"minutes.txt (~/Archive) - Text Editor", apart},
    {textEditor, u"New Document - Text Editor", u"New Document - Text Editor", offered},
    {gedit, u"*letter.tex (~/Letters) - gedit", u"letter.tex (~/Letters) - gedit", found},
    {gedit, u"letter.tex (~/Letters) - gedit", u"letter2.tex (~/Letters) - gedit", apart},
    {gedit, u"Untitled Document 1 - gedit", u"Untitled Document 1 - gedit", offered},
    {gedit, u"Unbenanntes Dokument 2 - gedit", u"Unbenanntes Dokument 2 - gedit", offered},
    {gedit, u"letter.tex [Read-Only] (~/Letters) - gedit",
     u"letter.tex [Read-Only] (~/Letters) - gedit", found},
    {kate, u"main.cpp — Kate", u"main.cpp — Kate", found},
    {kate, u"main.cpp [*] — Kate", u"main.cpp — Kate", found},
    {kate, u"main.cpp  — Kate", u"main.cpp — Kate", found},
    {kate, u"garden: main.cpp — Kate", u"kelpa: main.cpp — Kate", apart},
    {kate, u"Untitled — Kate", u"Untitled — Kate", offered},
    {kate, u"Willkommen — Kate", u"Willkommen — Kate", offered},
    {gvim, u"parser.rs + (~/src/lang) - GVIM", u"parser.rs (~/src/lang) - GVIM", found},
    {gvim, u"parser.rs =+ (~/src/lang) - GVIM", u"parser.rs (~/src/lang) - GVIM", found},
    {gvim, u"parser.rs (~/src/lang) - GVIM", u"parser.rs (~/src/lang2) - GVIM", apart},
    {gvim, u"[No Name] - GVIM", u"[No Name] - GVIM", offered},
    {emacs, u"notes.org - GNU Emacs at laptop", u"notes.org - GNU Emacs at laptop", found},
    {emacs, u"*scratch* - GNU Emacs at laptop", u"*scratch* - GNU Emacs at laptop", offered},
    {emacs, u"notes.org - GNU Emacs at laptop", u"todo.org - GNU Emacs at laptop", doubtful},
    {mousepad, u"*~/todo.txt - Mousepad", u"~/todo.txt - Mousepad", found},
    {mousepad, u"無題 1 - Mousepad", u"無題 1 - Mousepad", offered},
    {mousepad, u"Sans nom 1 - Mousepad", u"Sans nom 1 - Mousepad", offered},
    {mousepad, u"/etc/fstab [read only] - Mousepad", u"/etc/fstab - Mousepad", found},
    // Code editors and IDEs.
    {code, u"● Board.h - kelpa - Visual Studio Code", u"Board.h - kelpa - Visual Studio Code",
     found},
    {code, u"Board.h - kelpa - Visual Studio Code", u"Board.h - garden - Visual Studio Code",
     doubtful},
    {code, u"Board.h - kelpa - Visual Studio Code", u"Goal.h - kelpa - Visual Studio Code",
     offered},
    {code, u"Welcome - Visual Studio Code", u"Welcome - Visual Studio Code", offered},
    {code, u"Untitled-1 - Visual Studio Code", u"Untitled-1 - Visual Studio Code", offered},
    {code, u"kelpa [SSH: build] - Visual Studio Code", u"kelpa [SSH: build] - Visual Studio Code",
     found},
    {code, u"kelpa [SSH: build] - Visual Studio Code", u"kelpa - Visual Studio Code", apart},
    {code, u"入门 - kelpa - Visual Studio Code", u"入门 - kelpa - Visual Studio Code", found},
    {idea, u"garden – Plant.java [garden.main]", u"garden – Plant.java [garden.main]", found},
    {idea, u"garden – Plant.java [garden.main]", u"garden – Tree.java [garden.main]", offered},
    {idea, u"garden – Plant.java", u"house – Room.java", apart},
    {idea, u"Welcome to IntelliJ IDEA", u"garden – Plant.java", apart},
    {qtCreator, u"main.cpp (src @ kelpa) [master] - Qt Creator",
     u"main.cpp (src @ kelpa) [master] - Qt Creator", found},
    {qtCreator, u"*main.cpp (src @ kelpa) [master] - Qt Creator",
     u"main.cpp (src @ kelpa) [master] - Qt Creator", found},
    {qtCreator, u"Qt Creator", u"Qt Creator", offered},
    {eclipse, u"workspace - garden/src/Plant.java - Eclipse IDE",
     u"workspace - garden/src/Plant.java - Eclipse IDE", found},
    {eclipse, u"workspace - garden/src/Plant.java - Eclipse IDE",
     u"workspace - house/src/Room.java - Eclipse IDE", doubtful},
    // Terminals.
    {gnomeTerminal, u"anna@laptop: ~/src/kelpa", u"anna@laptop: ~/src/kelpa", found},
    {gnomeTerminal, u"anna@laptop: ~/src/kelpa", u"anna@laptop: ~/src/garden", apart},
    {gnomeTerminal, u"anna@laptop: ~", u"anna@laptop: ~", offered},
    {gnomeTerminal, u"anna@laptop:~", u"anna@laptop:~", offered},
    {gnomeTerminal, u"anna@laptop: ~/src/kelpa", u"anna@laptop: ~", offered},
    {gnomeTerminal, u"Terminal", u"Terminal", offered},
    {gnomeTerminal, u"终端", u"终端", offered},
    {gnomeTerminal, u"anna@laptop: /home/anna", u"anna@laptop: /home/anna", offered},
    {gnomeTerminal, u"root@server: ~", u"root@server: ~", offered},
    {gnomeTerminal, u"root@server: /etc/nginx", u"root@server: /etc/nginx", found},
    {gnomeTerminal, u"⠋ npm run build", u"⠹ npm run build", found},
    {gnomeTerminal, u"✳ Fix the parser", u"✻ Fix the parser", found},
    {gnomeTerminal, u"vim notes.md", u"vim notes.md", found},
    {gnomeTerminal, u"htop", u"vim notes.md", apart},
    {konsole, u"kelpa : bash — Konsole", u"kelpa : bash — Konsole", found},
    {konsole, u"~ : bash — Konsole", u"~ : bash — Konsole", offered},
    {konsole, u"~ : zsh — Konsole", u"kelpa : zsh — Konsole", doubtful},
    {konsole, u"kelpa : bash — Konsole", u"kelpa : make — Konsole", offered},
    {konsole, u"Konsole", u"Konsole", offered},
    {konsole, u"(anna) server.example.org — Konsole", u"(anna) server.example.org — Konsole",
     found},
    {konsole, u"(anna) a.example.org — Konsole", u"(anna) b.example.org — Konsole", apart},
    {xfceTerminal, u"Terminal - anna@laptop: ~/src/kelpa", u"Terminal - anna@laptop: ~/src/kelpa",
     found},
    {xfceTerminal, u"Terminal - anna@laptop: ~", u"Terminal - anna@laptop: ~", offered},
    {xfceTerminal, u"Terminal - anna@laptop: ~/a", u"Terminal - anna@laptop: ~/b", doubtful},
    {xterm, u"anna@laptop:~/src", u"anna@laptop:~/src", found},
    {xterm, u"xterm", u"xterm", offered},
    {xterm, u"[anna@laptop ~]$", u"[anna@laptop ~]$", offered},
    // Chat.
    {slack, u"! general (Channel) - Garden Club - 1 new item - Slack",
     u"general (Channel) - Garden Club - Slack", offered},
    {slack, u"* general (Channel) - Garden Club - Slack",
     u"general (Channel) - Garden Club - Slack", found},
    {slack, u"general (Channel) - Garden Club - Slack", u"general (Channel) - Work - Slack",
     doubtful},
    {slack, u"Slack", u"Slack", offered},
    {discord, u"(2) Discord | #plants | Garden", u"Discord | #plants | Garden", found},
    {discord, u"• Discord | #plants | Garden", u"(5) Discord | #plants | Garden", found},
    {discord, u"#plants | Garden - Discord", u"#trees | Garden - Discord", doubtful},
    {discord, u"Discord", u"Discord", offered},
    {telegram, u"Telegram (3)", u"Telegram (4)", offered},
    {telegram, u"Telegram", u"Telegram (4)", offered},
    {telegram, u"Anna – (12)", u"Anna – (13)", offered},
    {telegram, u"(12) Garden club", u"Garden club", found},
    {element, u"Element [3] | Garden", u"Element [5] | Garden", found},
    {element, u"[3] Element | Garden", u"Element | Garden", found},
    {element, u"Element * | Garden", u"Element | Garden", offered},
    {hexchat, u"HexChat: anna @ Libera.Chat / #kelpa (+nt)",
     u"HexChat: anna @ Libera.Chat / #kelpa (+nt)", found},
    {hexchat, u"HexChat: anna @ Libera.Chat / #kelpa (+nt)", u"HexChat: anna @ OFTC / #kelpa (+nt)",
     apart},
    // Mail.
    {thunderbird, u"Inbox - anna@example.org - Mozilla Thunderbird",
     u"Inbox - anna@example.org - Mozilla Thunderbird", found},
    {thunderbird, u"Inbox (3) - anna@example.org - Mozilla Thunderbird",
     u"Inbox - anna@example.org - Mozilla Thunderbird", found},
    {thunderbird, u"Write: Offer for spring - Thunderbird",
     u"Write: Offer for spring - Thunderbird", found},
    {thunderbird, u"Write: (no subject) - Thunderbird", u"Write: (no subject) - Thunderbird",
     offered},
    {thunderbird, u"Inbox - anna@example.org - Mozilla Thunderbird",
     u"Inbox - work@example.org - Mozilla Thunderbird", doubtful},
    {thunderbird, u"Posteingang (7) - anna@example.org - Mozilla Thunderbird",
     u"Posteingang (1) - anna@example.org - Mozilla Thunderbird", found},
    {thunderbird, u"Mozilla Thunderbird", u"Mozilla Thunderbird", offered},
    {evolution, u"Inbox (3 unread) — Evolution", u"Inbox (8 unread) — Evolution", found},
    {evolution, u"Inbox (3 unread, 120 total) — Evolution",
     u"Inbox (8 unread, 131 total) — Evolution", found},
    {evolution, u"Calendar — Evolution", u"Inbox (8 unread) — Evolution", apart},
    {kmail, u"inbox (2) — KMail", u"inbox — KMail", found},
    {kmail, u"受信トレイ (2) — KMail", u"受信トレイ (30) — KMail", found},
    // Office.
    {writer, u"Report.odt — LibreOffice Writer", u"Report.odt — LibreOffice Writer", found},
    {writer, u"Report.odt - LibreOffice Writer", u"Report.odt — LibreOffice Writer", found},
    {writer, u"Report.odt (read-only) — LibreOffice Writer", u"Report.odt — LibreOffice Writer",
     found},
    {writer, u"Report.odt (schreibgeschützt) — LibreOffice Writer",
     u"Report.odt — LibreOffice Writer", found},
    {writer, u"Untitled 1 — LibreOffice Writer", u"Untitled 1 — LibreOffice Writer", offered},
    {writer, u"Unbenannt 3 — LibreOffice Writer", u"Unbenannt 3 — LibreOffice Writer", offered},
    {writer, u"无标题 1 — LibreOffice Writer", u"无标题 1 — LibreOffice Writer", offered},
    {writer, u"제목 없음 1 — LibreOffice Writer", u"제목 없음 1 — LibreOffice Writer", offered},
    {writer, u"Report.odt — LibreOffice Writer", u"Report 2.odt — LibreOffice Writer", apart},
    {writer, u"Report (2).odt — LibreOffice Writer", u"Report.odt — LibreOffice Writer", apart},
    {writer, u"Report.odt — LibreOffice Writer", u"LibreOffice Writer", offered},
    {writer, u"LibreOffice", u"LibreOffice", offered},
    {calc, u"Budget.ods — LibreOffice Calc", u"Budget.ods — LibreOffice Calc", found},
    {calc, u"Budget 2025.ods — LibreOffice Calc", u"Budget 2026.ods — LibreOffice Calc", apart},
    {calc, u"名称未設定 1 — LibreOffice Calc", u"名称未設定 1 — LibreOffice Calc", offered},
    {impress, u"Talk.odp — LibreOffice Impress", u"Talk.odp — LibreOffice Impress", found},
    {impress, u"Talk.odp — LibreOffice Impress", u"Talk (copy).odp — LibreOffice Impress", apart},
    {wps, u"合同.docx - WPS 文字", u"合同.docx - WPS 文字", found},
    {wps, u"合同.docx（只读） - WPS 文字", u"合同.docx - WPS 文字", found},
    {wps, u"文档1 - WPS 文字", u"文档1 - WPS 文字", offered},
    {wps, u"合同.docx - WPS 文字", u"合同2.docx - WPS 文字", apart},
    // File managers.
    {nautilus, u"Invoices", u"Invoices", found},
    {nautilus, u"Invoices", u"Receipts", apart},
    {nautilus, u"Home", u"Home", offered},
    {nautilus, u"Downloads", u"Downloads", offered},
    {nautilus, u"Persönlicher Ordner", u"Persönlicher Ordner", offered},
    {nautilus, u"主文件夹", u"主文件夹", offered},
    {dolphin, u"Invoices — Dolphin", u"Invoices — Dolphin", found},
    {dolphin, u"Dokumente — Dolphin", u"Dokumente — Dolphin", offered},
    {thunar, u"photos-2024 - Thunar", u"photos-2024 - Thunar", found},
    {thunar, u"photos-2024 - Thunar", u"photos-2025 - Thunar", apart},
    {thunar, u"45% of disk.iso - Thunar", u"71% of disk.iso - Thunar", found},
    // Document viewers.
    {evince, u"thesis.pdf — Water and Light", u"thesis.pdf — Water and Light", found},
    {evince, u"thesis.pdf", u"thesis.pdf", found},
    {evince, u"thesis.pdf", u"thesis-v2.pdf", apart},
    {evince, u"thesis.pdf — Password Required", u"thesis.pdf", offered},
    {okular, u"thesis.pdf — Okular", u"thesis.pdf — Okular", found},
    {okular, u"thesis.pdf (3 of 120) — Okular", u"thesis.pdf (17 of 120) — Okular", found},
    {okular, u"thesis.pdf – Page 3 of 120 — Okular", u"thesis.pdf – Page 90 of 120 — Okular",
     found},
    {okular, u"arbeit.pdf – Seite 3 von 12 — Okular", u"arbeit.pdf – Seite 9 von 12 — Okular",
     found},
    {okular, u"Lecture (1/2) — Okular", u"Lecture (2/2) — Okular", apart},
    {xpdf, u"Xpdf: thesis.pdf", u"Xpdf: thesis.pdf", found},
    {xpdf, u"Xpdf", u"Xpdf: thesis.pdf", doubtful},
    // Pictures and drawings.
    {gimp,
     u"[poster] (imported)-1.0 (RGB color 8-bit gamma integer, GIMP built-in sRGB, 1 layer) "
     u"1920x1080 – GIMP",
     u"[poster] (imported)-4.0 (RGB color 8-bit gamma integer, GIMP built-in sRGB, 3 layers) "
     u"1920x1080 – GIMP",
     found},
    {gimp,
     u"*poster.xcf-2.0 (RGB color 8-bit gamma integer, GIMP built-in sRGB, 2 layers) 800x600 – "
     u"GIMP",
     u"poster.xcf-1.0 (RGB color 8-bit gamma integer, GIMP built-in sRGB, 2 layers) 800x600 – GIMP",
     found},
    {gimp, u"poster.xcf-1.0 (RGB color, 2 layers) 800x600 – GIMP",
     u"flyer.xcf-1.0 (RGB color, 2 layers) 800x600 – GIMP", apart},
    {gimp, u"GNU Image Manipulation Program", u"GNU Image Manipulation Program", offered},
    {inkscape, u"logo.svg - Inkscape", u"logo.svg - Inkscape", found},
    {inkscape, u"*logo.svg - Inkscape", u"logo.svg - Inkscape", found},
    {inkscape, u"New document 1 - Inkscape", u"New document 1 - Inkscape", offered},
    {krita, u"forest.kra (12.5 MiB) * — Krita", u"forest.kra (12.5 MiB) — Krita", found},
    {krita, u"forest.kra @ 66.7% (RGBA) — Krita", u"forest.kra @ 100% (RGBA) — Krita", found},
    {eog, u"sunset.jpg", u"sunset.jpg", found},
    {eog, u"[3/120] sunset.jpg", u"[4/121] sunset.jpg", found},
    {eog, u"sunset1.jpg", u"sunset2.jpg", apart},
    {gwenview, u"sunset.jpg - 45% - Gwenview", u"sunset.jpg - 100% - Gwenview", found},
    {gwenview, u"sunset.jpg (33%) - Gwenview", u"sunset.jpg (50%) - Gwenview", found},
    {blender, u"Blender [/home/anna/tree.blend]", u"Blender [/home/anna/tree.blend]", found},
    {blender, u"* Blender [/home/anna/tree.blend]", u"Blender [/home/anna/tree.blend]", found},
    {blender, u"Blender", u"Blender", offered},
    // Sound and video.
    {vlc, u"concert.mkv - VLC media player", u"concert.mkv - VLC media player", found},
    {vlc, u"VLC media player", u"concert.mkv - VLC media player", doubtful},
    {mpv, u"▶ concert.mkv - mpv", u"⏸ concert.mkv - mpv", found},
    {mpv, u"concert.mkv - 00:12 / 45:10 - mpv", u"concert.mkv - 31:02 / 45:10 - mpv", found},
    {mpv, u"concert-1.mkv - mpv", u"concert-2.mkv - mpv", apart},
    {rhythmbox, u"Anna Banda - Waves", u"Anna Banda - Stones", doubtful},
    {rhythmbox, u"Rhythmbox", u"Rhythmbox", offered},
    {audacity, u"interview", u"interview*", found},
    {audacity, u"interview", u"podcast", apart},
    // All others.
    {transmission, u"Transmission (45%)", u"Transmission (61%)", offered},
    {transmission, u"[45%] debian.iso - Transmission", u"[99%] debian.iso - Transmission", found},
    {keepass, u"Private.kdbx [Locked] - KeePassXC", u"Private.kdbx - KeePassXC", apart},
    {keepass, u"*Passwords.kdbx - KeePassXC", u"Passwords.kdbx - KeePassXC", found},
    {remmina, u"server.example.org", u"server.example.org", found},
    {remmina, u"a.example.org", u"b.example.org", apart},
    {virtManager, u"debian12 on QEMU/KVM", u"debian12 on QEMU/KVM", found},
    {virtManager, u"debian12 on QEMU/KVM", u"debian13 on QEMU/KVM", apart},
    {dbeaver, u"DBeaver 23.1 - <shop> Script-4", u"DBeaver 23.1 - <shop> Script-4", found},
    {dbeaver, u"DBeaver 23.1 - <shop> Script-4", u"DBeaver 23.1 - <shop> Script-5", doubtful},
    {obsidian, u"Plans - Garden - Obsidian v1.4.16", u"Plans - Garden - Obsidian v1.5.3", offered},
    {obsidian, u"Plans - Garden - Obsidian v1.4.16", u"Plans - Garden - Obsidian v1.4.16", found},
    {obsidian, u"New tab - Garden - Obsidian v1.4.16", u"New tab - Garden - Obsidian v1.4.16",
     offered},
    {zoom, u"Weekly meeting 00:12:33", u"Weekly meeting 00:03:01", found},
    {zoom, u"Zoom", u"Zoom", offered},
    {zoom, u"Weekly meeting 10:00", u"Weekly meeting 11:00", apart},
    {calibre, u"The Waves — E-book viewer", u"The Waves — E-book viewer", found},
    {calibre, u"The Waves — E-book viewer", u"The Years — E-book viewer", apart},
    {gitk, u"kelpa: All files - gitk", u"kelpa: All files - gitk", found},
    {gitk, u"kelpa: All files - gitk", u"garden: All files - gitk", apart},
    {calendar, u"Calendar", u"Calendar", offered},
    {calendar, u"12:34 - Team planning", u"09:15 - Team planning", found},
    // Nothing to go by.
    {xterm, u"", u"", offered},
    {xterm, u"***", u"***", offered},
});
// clang-format on

} // namespace kelpa::test
