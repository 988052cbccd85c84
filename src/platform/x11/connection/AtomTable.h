// The atoms that Kelpa uses, interned once per connection.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace kelpa::x11 {

class XcbConnection;

enum class Atom : std::uint8_t {
    utf8String,
    compoundText,
    wmState,
    wmProtocols,
    wmDeleteWindow,
    wmTakeFocus,
    wmChangeState,
    wmClientLeader,
    netSupported,
    netSupportingWmCheck,
    netClientList,
    netClientListStacking,
    netCurrentDesktop,
    netDesktopNames,
    netNumberOfDesktops,
    netActiveWindow,
    netCloseWindow,
    netStartupInfoBegin,
    netStartupInfo,
    netStartupID,
    netWmName,
    netWmPid,
    netWmDesktop,
    netWmIcon,
    netWmState,
    netWmStateHidden,
    netWmStateModal,
    netWmStateSkipTaskbar,
    netWmWindowOpacity,
    netWmWindowType,
    typeNormal,
    typeDialog,
    typeUtility,
    typeToolbar,
    typeSplash,
    typeDock,
    typeDesktop,
    typeMenu,
    typeDropdownMenu,
    typePopupMenu,
    typeTooltip,
    typeNotification,
    typeCombo,
    typeDragAndDrop,
    gtkFrameExtents,
    gtkApplicationID,
    kdeDesktopFile,
    wmWindowRole,
    sessionClientID,
    kelpaWindowNumber,
    kelpaNumberCounter,
    kelpaNumbers,
    kelpaTime,
    settingsManager,
    settings,
    count,
};

class AtomTable
{
public:
    /// Waits for the server, one round trip for all atoms. On a lost connection every atom is
    /// XCB_ATOM_NONE.
    explicit AtomTable(XcbConnection& connection);

    xcb_atom_t operator[](Atom atom) const { return m_atoms.at(static_cast<std::size_t>(atom)); }

private:
    std::array<xcb_atom_t, static_cast<std::size_t>(Atom::count)> m_atoms{};
};

} // namespace kelpa::x11
