#include "platform/x11/connection/AtomTable.h"

#include "platform/x11/connection/XcbReply.h"

#include <string_view>
#include <vector>

namespace kelpa::x11 {

namespace {

// In the order of the enumeration.
constexpr std::array<std::string_view, static_cast<std::size_t>(Atom::count)> atomNames = {
    "UTF8_STRING",
    "COMPOUND_TEXT",
    "WM_STATE",
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_TAKE_FOCUS",
    "WM_CHANGE_STATE",
    "WM_CLIENT_LEADER",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CURRENT_DESKTOP",
    "_NET_DESKTOP_NAMES",
    "_NET_NUMBER_OF_DESKTOPS",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLOSE_WINDOW",
    "_NET_STARTUP_INFO_BEGIN",
    "_NET_STARTUP_INFO",
    "_NET_STARTUP_ID",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_DESKTOP",
    "_NET_WM_ICON",
    "_NET_WM_STATE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_MODAL",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_WINDOW_OPACITY",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DND",
    "_GTK_FRAME_EXTENTS",
    "_GTK_APPLICATION_ID",
    "_KDE_NET_WM_DESKTOP_FILE",
    "WM_WINDOW_ROLE",
    "SM_CLIENT_ID",
    "_KELPA_WINDOW_NUMBER",
    "_KELPA_NUMBER_COUNTER",
    "_KELPA_NUMBERS",
    "_KELPA_TIME",
    // The first screen's: servers have had only one for a long time.
    "_XSETTINGS_S0",
    "_XSETTINGS_SETTINGS",
};

static_assert(!atomNames.back().empty(), "every atom has a name");

} // namespace

AtomTable::AtomTable(XcbConnection& connection)
{
    std::vector<AtomReply> replies;
    replies.reserve(atomNames.size());
    for (const std::string_view name : atomNames)
        replies.emplace_back(connection, std::uint8_t{0}, static_cast<std::uint16_t>(name.size()),
                             name.data());
    for (std::size_t index = 0; index < replies.size(); ++index) {
        if (const auto* reply = replies.at(index).get())
            m_atoms.at(index) = reply->atom;
    }
}

} // namespace kelpa::x11
