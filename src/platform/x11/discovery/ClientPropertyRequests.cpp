#include "platform/x11/discovery/ClientPropertyRequests.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace kelpa::x11 {

// In the order of the requests.
enum class ClientPropertyRequests::PropertyIndex : std::uint8_t {
    netName,
    name,
    windowClass,
    kind,
    state,
    icccmState,
    desktop,
    owner,
    opacity,
    extents,
    netProcess,
    machine,
    gtkApplication,
    kdeDesktopFile,
    role,
    number,
    count,
};

namespace {

constexpr std::uint32_t wordsOfText = longestText / 4;
constexpr std::uint32_t wordsOfShortText = 256;
constexpr std::uint32_t wordsOfList = 64;

struct PropertyRequest
{
    xcb_atom_t name = XCB_ATOM_NONE;
    /// The most four-byte words to read.
    std::uint32_t length = 0;
};

/// In WM_STATE, as `iconicState`.
constexpr std::uint32_t withdrawnState = 0;

WindowKind kindOf(xcb_atom_t type, const AtomTable& atoms)
{
    constexpr std::array kinds = {
        std::pair(Atom::typeNormal, WindowKind::normal),
        std::pair(Atom::typeDialog, WindowKind::dialog),
        std::pair(Atom::typeUtility, WindowKind::auxiliary),
        std::pair(Atom::typeToolbar, WindowKind::auxiliary),
        std::pair(Atom::typeSplash, WindowKind::auxiliary),
        std::pair(Atom::typeDock, WindowKind::dock),
        std::pair(Atom::typeDesktop, WindowKind::desktop),
        std::pair(Atom::typeMenu, WindowKind::passing),
        std::pair(Atom::typeDropdownMenu, WindowKind::passing),
        std::pair(Atom::typePopupMenu, WindowKind::passing),
        std::pair(Atom::typeTooltip, WindowKind::passing),
        std::pair(Atom::typeNotification, WindowKind::passing),
        std::pair(Atom::typeCombo, WindowKind::passing),
        std::pair(Atom::typeDragAndDrop, WindowKind::passing),
    };
    const auto* const it = std::find_if(kinds.begin(), kinds.end(), [&](const auto& kind) {
        return type != XCB_ATOM_NONE && atoms[kind.first] == type;
    });
    return it == kinds.end() ? WindowKind::unspecified : it->second;
}

/// A window lists its types in order of preference; the first known one counts.
WindowKind firstKnownKind(const std::vector<xcb_atom_t>& types, const AtomTable& atoms)
{
    for (const xcb_atom_t type : types) {
        if (const WindowKind kind = kindOf(type, atoms); kind != WindowKind::unspecified)
            return kind;
    }
    return WindowKind::unspecified;
}

bool contains(const std::vector<xcb_atom_t>& atoms, xcb_atom_t atom)
{
    return std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

std::optional<ProcessID> processOf(std::optional<std::uint32_t> word)
{
    if (!word || *word == 0 || *word > std::uint32_t{std::numeric_limits<ProcessID>::max()})
        return std::nullopt;
    return static_cast<ProcessID>(*word);
}

} // namespace

ClientPropertyRequests::ClientPropertyRequests(DisplayConnection& display, xcb_window_t window,
                                               bool isNew)
    : m_window(window), m_attributes(display.connection(), window),
      m_geometry(display.connection(), window),
      m_position(display.connection(), window, display.connection().root(), std::int16_t{0},
                 std::int16_t{0})
{
    const AtomTable& atoms = display.atoms();
    const std::array<PropertyRequest, static_cast<std::size_t>(PropertyIndex::count)> requests = {{
        {atoms[Atom::netWmName], wordsOfText},
        {XCB_ATOM_WM_NAME, wordsOfText},
        {XCB_ATOM_WM_CLASS, wordsOfShortText},
        {atoms[Atom::netWmWindowType], wordsOfList},
        {atoms[Atom::netWmState], wordsOfList},
        {atoms[Atom::wmState], 2},
        {atoms[Atom::netWmDesktop], 1},
        {XCB_ATOM_WM_TRANSIENT_FOR, 1},
        {atoms[Atom::netWmWindowOpacity], 1},
        {atoms[Atom::gtkFrameExtents], 4},
        {atoms[Atom::netWmPid], 1},
        {XCB_ATOM_WM_CLIENT_MACHINE, wordsOfShortText},
        {atoms[Atom::gtkApplicationID], wordsOfShortText},
        {atoms[Atom::kdeDesktopFile], wordsOfShortText},
        {atoms[Atom::wmWindowRole], wordsOfShortText},
        {atoms[Atom::kelpaWindowNumber], 1},
    }};
    m_properties.reserve(requests.size());
    for (const PropertyRequest& request : requests)
        m_properties.push_back(
            askProperty(display.connection(), window, request.name, request.length));
    if (isNew)
        m_leader.emplace(askProperty(display.connection(), window, atoms[Atom::wmClientLeader], 1));
}

Property ClientPropertyRequests::property(PropertyIndex index)
{
    return propertyOf(m_properties.at(static_cast<std::size_t>(index)).get());
}

std::optional<ClientReading> ClientPropertyRequests::read(const DisplayConnection& display,
                                                          std::optional<ProcessID> process,
                                                          const QByteArray& host)
{
    const auto* attributes = m_attributes.get();
    const auto* geometry = m_geometry.get();
    const auto* position = m_position.get();
    if (!attributes || !geometry || !position)
        return std::nullopt;
    // The client list may name a destroyed window whose id already belongs to another one, which
    // is not managed yet. A managed window bears WM_STATE, or is at least viewable.
    const bool isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    const std::uint32_t managed =
        word(property(PropertyIndex::icccmState), display.atoms()[Atom::wmState])
            .value_or(withdrawnState);
    if (!isViewable && managed == withdrawnState)
        return std::nullopt;
    ClientReading reading;
    ClientWindow& client = reading.client;
    client.window = m_window;
    client.isOverrideRedirect = attributes->override_redirect != 0;
    client.isViewable = isViewable;
    client.frame = frame(*geometry, *position);
    readState(client, display.atoms());
    readIdentity(client, display, process, host);
    reading.sighting = {m_window, word(property(PropertyIndex::number), XCB_ATOM_CARDINAL)};
    if (m_leader)
        reading.leader = word(propertyOf(m_leader->get()), XCB_ATOM_WINDOW);
    return reading;
}

Rect ClientPropertyRequests::frame(const xcb_get_geometry_reply_t& geometry,
                                   const xcb_translate_coordinates_reply_t& position)
{
    const FrameExtents shadow =
        frameExtents(property(PropertyIndex::extents), geometry.width, geometry.height);
    return {static_cast<double>(position.dst_x) + shadow.left,
            static_cast<double>(position.dst_y) + shadow.top,
            static_cast<double>(geometry.width - shadow.left - shadow.right),
            static_cast<double>(geometry.height - shadow.top - shadow.bottom)};
}

void ClientPropertyRequests::readState(ClientWindow& client, const AtomTable& atoms)
{
    client.kind = firstKnownKind(words(property(PropertyIndex::kind), XCB_ATOM_ATOM), atoms);
    const std::vector<xcb_atom_t> states = words(property(PropertyIndex::state), XCB_ATOM_ATOM);
    client.isHidden = contains(states, atoms[Atom::netWmStateHidden]);
    client.isOffTaskList = contains(states, atoms[Atom::netWmStateSkipTaskbar]);
    client.isIconic =
        word(property(PropertyIndex::icccmState), atoms[Atom::wmState]) == iconicState;
    client.desktop = word(property(PropertyIndex::desktop), XCB_ATOM_CARDINAL);
    client.isModal = contains(states, atoms[Atom::netWmStateModal]);
    client.owner = word(property(PropertyIndex::owner), XCB_ATOM_WINDOW);
    const std::uint32_t opaque = std::numeric_limits<std::uint32_t>::max();
    client.opacity =
        word(property(PropertyIndex::opacity), XCB_ATOM_CARDINAL).value_or(opaque) / double{opaque};
}

void ClientPropertyRequests::readIdentity(ClientWindow& client, const DisplayConnection& display,
                                          std::optional<ProcessID> process, const QByteArray& host)
{
    const TextTypes types = display.textTypes();
    std::optional<QString> title = utf8Text(property(PropertyIndex::netName), types);
    if (!title)
        title = text(property(PropertyIndex::name), types);
    client.title = title.value_or(QString());
    client.role = text(property(PropertyIndex::role), types).value_or(QString());

    client.process = process;
    const Property machine = property(PropertyIndex::machine);
    if (!process && machine.format == 8 && !host.isEmpty() && machine.bytes == host)
        client.process = processOf(word(property(PropertyIndex::netProcess), XCB_ATOM_CARDINAL));
    const WindowClass names = windowClass(property(PropertyIndex::windowClass), types);
    client.clues = {text(property(PropertyIndex::gtkApplication), types).value_or(QString()),
                    text(property(PropertyIndex::kdeDesktopFile), types).value_or(QString()),
                    names.instance, names.name, client.process.value_or(0)};
}

} // namespace kelpa::x11
