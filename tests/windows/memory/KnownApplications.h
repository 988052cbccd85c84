// Programs as their desktop entries name them, for the titles of their windows.
#pragma once

namespace kelpa::test {

struct Application
{
    const char* kind;
    const char16_t* id;
    const char16_t* name;
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

} // namespace kelpa::test
