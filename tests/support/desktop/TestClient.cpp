#include "support/desktop/TestClient.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace kelpa::test {

namespace {

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

constexpr std::uint32_t iconicState = 3;
constexpr std::uint32_t addState = 1;
constexpr std::uint32_t fromPager = 2;

QByteArray bytesOf(const std::vector<std::uint32_t>& values)
{
    QByteArray bytes(static_cast<qsizetype>(values.size() * sizeof(std::uint32_t)), '\0');
    if (!values.empty()) {
        std::memcpy(bytes.data(), values.data(), values.size() * sizeof(std::uint32_t));
    }
    return bytes;
}

constexpr std::uint8_t translucentDepth = 32;

xcb_visualid_t translucentVisual(xcb_connection_t* connection)
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    auto depths = xcb_screen_allowed_depths_iterator(screen);
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        const xcb_visualtype_iterator_t visuals = xcb_depth_visuals_iterator(depths.data);
        if (depths.data->depth == translucentDepth && visuals.rem > 0) {
            return visuals.data->visual_id;
        }
    }
    qFatal("the display has no translucent windows");
}

} // namespace

TestClient::TestClient(const QByteArray& display)
    : m_connection(xcb_connect(display.constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection) != 0) {
        qFatal("no connection to %s", display.constData());
    }
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

TestClient::TestClient(TestClient&& other) noexcept
    : m_connection(std::exchange(other.m_connection, nullptr)), m_root(other.m_root)
{}

TestClient::~TestClient()
{
    if (m_connection) {
        xcb_disconnect(m_connection);
    }
}

xcb_window_t TestClient::create(const TestWindow& window)
{
    const xcb_window_t id = xcb_generate_id(m_connection);
    make(id, window);
    return id;
}

void TestClient::openAgain(xcb_window_t id, const TestWindow& window)
{
    make(id, window);
    map(id);
}

void TestClient::make(xcb_window_t id, const TestWindow& window)
{
    std::uint32_t mask = XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT;
    std::vector<std::uint32_t> values{0, window.isOverrideRedirect ? 1U : 0U};
    if (window.background) {
        mask |= XCB_CW_BACK_PIXEL;
        values.insert(values.begin(), *window.background);
    }
    std::uint8_t depth = XCB_COPY_FROM_PARENT;
    xcb_visualid_t visual = XCB_COPY_FROM_PARENT;
    if (window.isTranslucent) {
        depth = translucentDepth;
        visual = translucentVisual(m_connection);
        mask |= XCB_CW_COLORMAP;
        values.push_back(xcb_generate_id(m_connection));
        xcb_create_colormap(m_connection, XCB_COLORMAP_ALLOC_NONE, values.back(), m_root, visual);
    }
    xcb_create_window(m_connection, depth, id, m_root, window.x, window.y, window.width,
                      window.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, mask, values.data());
    // WM_NORMAL_HINTS with a position and a size that a person chose, so that they are kept.
    std::vector<std::uint32_t> hints(18, 0);
    hints[0] = 1U | 2U;
    setProperty(id, "WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS, 32, bytesOf(hints));
    if (!window.title.isEmpty()) {
        setText(id, "_NET_WM_NAME", window.title);
    }
    if (!window.windowClass.isEmpty()) {
        const QByteArray bytes =
            window.windowClass + '\0' + window.windowClass + QByteArray(1, '\0');
        setProperty(id, "WM_CLASS", XCB_ATOM_STRING, 8, bytes);
    }
}

xcb_window_t TestClient::open(const TestWindow& window)
{
    const xcb_window_t id = create(window);
    map(id);
    return id;
}

void TestClient::fill(xcb_window_t window, const xcb_rectangle_t& area, std::uint32_t color)
{
    const xcb_gcontext_t context = xcb_generate_id(m_connection);
    xcb_create_gc(m_connection, context, window, XCB_GC_FOREGROUND, &color);
    xcb_poly_fill_rectangle(m_connection, window, context, 1, &area);
    xcb_free_gc(m_connection, context);
    sync();
}

void TestClient::resize(xcb_window_t window, std::uint16_t width, std::uint16_t height)
{
    const std::array<std::uint32_t, 2> size{width, height};
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size.data());
    sync();
}

void TestClient::raise(xcb_window_t window)
{
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    sync();
}

void TestClient::map(xcb_window_t window)
{
    xcb_map_window(m_connection, window);
    sync();
}

void TestClient::unmap(xcb_window_t window)
{
    xcb_unmap_window(m_connection, window);
    sync();
}

void TestClient::destroy(xcb_window_t window)
{
    xcb_destroy_window(m_connection, window);
    sync();
}

xcb_atom_t TestClient::atom(const QByteArray& name)
{
    const xcb_intern_atom_cookie_t cookie =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void TestClient::setProperty(xcb_window_t window, const QByteArray& name, xcb_atom_t type,
                             int format, const QByteArray& bytes)
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(name), type,
                        static_cast<std::uint8_t>(format),
                        static_cast<std::uint32_t>(bytes.size() / (format / 8)), bytes.constData());
    sync();
}

void TestClient::setText(xcb_window_t window, const QByteArray& name, const QByteArray& utf8)
{
    setProperty(window, name, atom("UTF8_STRING"), 8, utf8);
}

void TestClient::setCardinals(xcb_window_t window, const QByteArray& name,
                              const std::vector<std::uint32_t>& values)
{
    setProperty(window, name, XCB_ATOM_CARDINAL, 32, bytesOf(values));
}

void TestClient::setWindows(xcb_window_t window, const QByteArray& name,
                            const std::vector<std::uint32_t>& values)
{
    setProperty(window, name, XCB_ATOM_WINDOW, 32, bytesOf(values));
}

void TestClient::setAtoms(xcb_window_t window, const QByteArray& name,
                          const std::vector<QByteArray>& values)
{
    std::vector<std::uint32_t> atoms;
    atoms.reserve(values.size());
    for (const QByteArray& value : values) {
        atoms.push_back(atom(value));
    }
    setProperty(window, name, XCB_ATOM_ATOM, 32, bytesOf(atoms));
}

std::vector<std::uint32_t> TestClient::words(xcb_window_t window, const QByteArray& name)
{
    const xcb_get_property_cookie_t cookie =
        xcb_get_property(m_connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
        xcb_get_property_reply(m_connection, cookie, nullptr));
    std::vector<std::uint32_t> values;
    if (reply && reply->format == 32) {
        values.resize(reply->value_len);
        if (!values.empty()) {
            std::memcpy(values.data(), xcb_get_property_value(reply.get()),
                        values.size() * sizeof(std::uint32_t));
        }
    }
    return values;
}

std::optional<std::uint32_t> TestClient::word(xcb_window_t window, const QByteArray& name)
{
    const std::vector<std::uint32_t> values = words(window, name);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

void TestClient::request(xcb_window_t window, const QByteArray& message,
                         const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::copy(data.begin(), data.end(), std::begin(event.data.data32));
    const void* bytes = &event;
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   static_cast<const char*>(bytes));
    sync();
}

void TestClient::minimize(xcb_window_t window)
{
    request(window, "WM_CHANGE_STATE", {iconicState, 0, 0, 0, 0});
}

void TestClient::maximize(xcb_window_t window)
{
    request(window, "_NET_WM_STATE",
            {addState, atom("_NET_WM_STATE_MAXIMIZED_VERT"), atom("_NET_WM_STATE_MAXIMIZED_HORZ"),
             fromPager, 0});
}

void TestClient::sendToDesktop(xcb_window_t window, std::uint32_t desktop)
{
    request(window, "_NET_WM_DESKTOP", {desktop, fromPager, 0, 0, 0});
}

bool TestClient::isManaged()
{
    const std::optional<std::uint32_t> check = word(m_root, "_NET_SUPPORTING_WM_CHECK");
    return check && word(*check, "_NET_SUPPORTING_WM_CHECK") == check;
}

bool TestClient::isListed(xcb_window_t window)
{
    const std::vector<std::uint32_t> clients = words(m_root, "_NET_CLIENT_LIST");
    return std::find(clients.begin(), clients.end(), window) != clients.end();
}

bool TestClient::isShown(xcb_window_t window)
{
    const std::unique_ptr<xcb_get_window_attributes_reply_t, Free> reply(
        xcb_get_window_attributes_reply(m_connection,
                                        xcb_get_window_attributes(m_connection, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<xcb_client_message_event_t> TestClient::messages(const QByteArray& type)
{
    sync();
    const xcb_atom_t wanted = atom(type);
    std::vector<xcb_client_message_event_t> found;
    while (true) {
        const std::unique_ptr<xcb_generic_event_t, Free> event(xcb_poll_for_event(m_connection));
        if (!event) {
            return found;
        }
        if ((event->response_type & 0x7FU) == XCB_CLIENT_MESSAGE) {
            const void* bytes = event.get();
            const auto* message = static_cast<const xcb_client_message_event_t*>(bytes);
            if (message->type == wanted) {
                found.push_back(*message);
            }
        }
    }
}

int TestClient::countMessages(const QByteArray& type)
{
    return static_cast<int>(messages(type).size());
}

std::vector<xcb_window_t> TestClient::deletions()
{
    const xcb_atom_t wanted = atom("WM_DELETE_WINDOW");
    std::vector<xcb_window_t> windows;
    for (const xcb_client_message_event_t& message : messages("WM_PROTOCOLS")) {
        if (message.data.data32[0] == wanted) {
            windows.push_back(message.window);
        }
    }
    return windows;
}

void TestClient::sync()
{
    const xcb_get_input_focus_cookie_t cookie = xcb_get_input_focus(m_connection);
    const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(
        xcb_get_input_focus_reply(m_connection, cookie, nullptr));
}

} // namespace kelpa::test
