#include "platform/x11/keys/RawKeyConnection.h"

#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/connection/XcbReply.h"

#include <xcb/randr.h>
#include <xcb/xinput.h>
// The header has a field whose name is a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace kelpa::x11 {

namespace {

using InputVersionReply = XcbReply<xcb_input_xi_query_version, xcb_input_xi_query_version_reply>;
using XkbReply = XcbReply<xcb_xkb_use_extension, xcb_xkb_use_extension_reply>;
using OutputVersionReply = XcbReply<xcb_randr_query_version, xcb_randr_query_version_reply>;
using OutputReply = XcbReply<xcb_randr_get_output_info, xcb_randr_get_output_info_reply>;
using ScreenReply =
    XcbReply<xcb_randr_get_screen_resources_current, xcb_randr_get_screen_resources_current_reply>;
using SymbolsReply = XcbReply<xcb_get_keyboard_mapping, xcb_get_keyboard_mapping_reply>;
using ModifiersReply = XcbReply<xcb_get_modifier_mapping, xcb_get_modifier_mapping_reply>;

/// From version 2.1 on, raw events also arrive while another client has grabbed the keyboard.
bool negotiateXInput(XcbConnection& connection)
{
    InputVersionReply reply(connection, std::uint16_t{2}, std::uint16_t{2});
    const auto* version = reply.get();
    return version && std::pair(version->major_version, version->minor_version) >=
                          std::pair<std::uint16_t, std::uint16_t>(2, 1);
}

bool negotiateXkb(XcbConnection& connection)
{
    XkbReply reply(connection, std::uint16_t{XCB_XKB_MAJOR_VERSION},
                   std::uint16_t{XCB_XKB_MINOR_VERSION});
    const auto* use = reply.get();
    return use && use->supported != 0;
}

/// Xwayland serves the X programs of a Wayland session. It receives no key typed into the other
/// programs, so it cannot report every key.
bool isXwayland(XcbConnection& connection)
{
    constexpr std::string_view name = "XWAYLAND";
    ExtensionReply extension(connection, static_cast<std::uint16_t>(name.size()), name.data());
    const auto* const outputs = xcb_get_extension_data(connection.raw(), &xcb_randr_id);
    const auto* const queried = extension.get();
    if (queried && queried->present != 0)
        return true;
    // Older versions lack the extension, but name their outputs like it.
    if (!outputs || outputs->present == 0)
        return false;
    OutputVersionReply version(connection, std::uint32_t{1}, std::uint32_t{3});
    ScreenReply screen(connection, connection.root());
    const auto* const resources = screen.get();
    if (!resources)
        return false;
    const xcb_randr_output_t* const outputIDs =
        xcb_randr_get_screen_resources_current_outputs(resources);
    const int count = xcb_randr_get_screen_resources_current_outputs_length(resources);
    std::vector<OutputReply> infos;
    infos.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        infos.emplace_back(connection, outputIDs[i], resources->config_timestamp);
    return std::ranges::any_of(infos, [name](OutputReply& reply) {
        const auto* const info = reply.get();
        if (!info)
            return false;
        const void* const text = xcb_randr_get_output_info_name(info);
        return std::string_view(
                   static_cast<const char*>(text),
                   static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info)))
            .starts_with(name);
    });
}

/// Selects events of the master devices, which merge those of all keyboards, mice and simulated
/// devices; with the devices themselves, every event would arrive twice. Of the mouse, selects only
/// what is used: each event wakes the program.
void selectRawEvents(XcbConnection& connection)
{
    struct
    {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                    XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};
    xcb_input_xi_select_events(connection.raw(), connection.root(), 1, &selection.header);
}

void selectXkbEvents(XcbConnection& connection)
{
    constexpr std::uint16_t state = XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t newKeyboard = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    constexpr std::uint16_t map = XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts =
        XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS;
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_MODIFIER_STATE | XCB_XKB_STATE_PART_MODIFIER_BASE;
    details.stateDetails = details.affectState;
    xcb_xkb_select_events_aux(connection.raw(), XCB_XKB_ID_USE_CORE_KBD, state | newKeyboard | map,
                              0, newKeyboard, parts, parts, &details);
}

std::optional<ModifierMap> readMap(XcbConnection& connection)
{
    const xcb_setup_t& setup = *xcb_get_setup(connection.raw());
    const int count = setup.max_keycode - setup.min_keycode + 1;
    SymbolsReply symbols(connection, setup.min_keycode, static_cast<std::uint8_t>(count));
    ModifiersReply modifiers(connection);
    const auto* symbolsRead = symbols.get();
    const auto* modifiersRead = modifiers.get();
    if (!symbolsRead || !modifiersRead)
        return std::nullopt;
    KeyboardTables tables;
    tables.firstKey = setup.min_keycode;
    tables.symbolsOfKey = symbolsRead->keysyms_per_keycode;
    const xcb_keysym_t* const symbolsBegin = xcb_get_keyboard_mapping_keysyms(symbolsRead);
    tables.symbols.assign(symbolsBegin,
                          symbolsBegin + xcb_get_keyboard_mapping_keysyms_length(symbolsRead));
    const xcb_keycode_t* const keysBegin = xcb_get_modifier_mapping_keycodes(modifiersRead);
    tables.modifierKeys.assign(keysBegin,
                               keysBegin + xcb_get_modifier_mapping_keycodes_length(modifiersRead));
    return modifierMapOf(tables);
}

} // namespace

RawKeyConnection::Result RawKeyConnection::open(DisplayConnector& connector)
{
    std::unique_ptr<DisplayConnection> display = connector.open();
    if (!display)
        return RawKeyFailure::noServer;
    const BrokenPipeGuard guard;
    XcbConnection& connection = display->connection();
    const auto* const xinput = xcb_get_extension_data(connection.raw(), &xcb_input_id);
    const auto* const xkb = xcb_get_extension_data(connection.raw(), &xcb_xkb_id);
    if (connection.isBroken())
        return RawKeyFailure::noServer;
    if (!xinput || xinput->present == 0 || !xkb || xkb->present == 0 ||
        !negotiateXInput(connection) || !negotiateXkb(connection))
        return connection.isBroken() ? RawKeyFailure::noServer : RawKeyFailure::unsupported;
    if (isXwayland(connection))
        return RawKeyFailure::xwayland;

    std::unique_ptr<RawKeyConnection> opened(new RawKeyConnection);
    opened->m_xinputOpcode = xinput->major_opcode;
    opened->m_xkbEvent = xkb->first_event;
    // Events are selected before the map is read, so that no change is missed in between.
    selectRawEvents(connection);
    selectXkbEvents(connection);
    const std::optional<ModifierMap> map = readMap(connection);
    if (!map)
        return RawKeyFailure::noServer;
    opened->m_modifierMap = *map;
    opened->m_display = std::move(display);
    return opened;
}

std::optional<KeyEvent> RawKeyConnection::keyEvent(const xcb_generic_event_t& event) const
{
    const std::uint8_t type = typeOf(event);
    if (type == XCB_GE_GENERIC) {
        const auto& generic = as<xcb_ge_generic_event_t>(event);
        if (generic.extension != m_xinputOpcode)
            return std::nullopt;
        if (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
            return RawButton{};
        const bool isPress = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
        if (!isPress && generic.event_type != XCB_INPUT_RAW_KEY_RELEASE)
            return std::nullopt;
        const auto& raw = as<xcb_input_raw_key_press_event_t>(event);
        // Keys beyond the range of the core protocol's key codes count as keys too.
        return RawKey{.key = static_cast<xcb_keycode_t>(raw.detail > 255 ? 0 : raw.detail),
                      .isPress = isPress,
                      .time = raw.time};
    }
    if (type == XCB_MAPPING_NOTIFY)
        return KeyboardChange{};
    if (type != m_xkbEvent)
        return std::nullopt;
    // All XKB events have the same type; `xkbType` distinguishes them.
    const auto& state = as<xcb_xkb_state_notify_event_t>(event);
    switch (state.xkbType) {
    case XCB_XKB_STATE_NOTIFY:
        return ModifierState{.held = state.baseMods,
                             .effective = state.mods,
                             .time = state.time,
                             .key = state.keycode,
                             .isPress = state.eventType == XCB_KEY_PRESS};
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        return KeyboardChange{};
    default:
        return std::nullopt;
    }
}

std::optional<ModifierMap> readModifierMap(DisplayConnector& connector)
{
    const std::unique_ptr<DisplayConnection> display = connector.open();
    if (!display)
        return std::nullopt;
    const BrokenPipeGuard guard;
    return readMap(display->connection());
}

} // namespace kelpa::x11
