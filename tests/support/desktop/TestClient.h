// An X client whose windows can have any property, including ones that no honest program would
// set.
#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa::test {

struct TestWindow
{
    std::int16_t x = 100;
    std::int16_t y = 100;
    std::uint16_t width = 400;
    std::uint16_t height = 300;
    /// _NET_WM_NAME; none when empty.
    QByteArray title = {};
    /// Both parts of WM_CLASS; none when empty.
    QByteArray windowClass = {};
    bool isOverrideRedirect = false;
    /// The background that the server paints: 0xRRGGBB, or 0xAARRGGBB for a translucent window;
    /// absent leaves the previous contents.
    std::optional<std::uint32_t> background = std::nullopt;
    /// 32 bits deep.
    bool isTranslucent = false;
};

/// A connection and its windows, all of which are destroyed with this object.
class TestClient
{
public:
    explicit TestClient(const QByteArray& display);
    TestClient(TestClient&& other) noexcept;
    TestClient& operator=(TestClient&&) = delete;
    ~TestClient();

    xcb_connection_t* connection() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    /// Not mapped yet, so that properties can be set first.
    xcb_window_t create(const TestWindow& window);
    /// Created and mapped.
    xcb_window_t open(const TestWindow& window);
    /// Draws a rectangle in the colour 0xRRGGBB.
    void fill(xcb_window_t window, const xcb_rectangle_t& area, std::uint32_t color);
    void resize(xcb_window_t window, std::uint16_t width, std::uint16_t height);
    void raise(xcb_window_t window);
    /// As `open`, with the id of an earlier window of this client that is gone.
    void openAgain(xcb_window_t id, const TestWindow& window);
    void map(xcb_window_t window);
    void unmap(xcb_window_t window);
    void destroy(xcb_window_t window);

    xcb_atom_t atom(const QByteArray& name);
    void setProperty(xcb_window_t window, const QByteArray& name, xcb_atom_t type, int format,
                     const QByteArray& bytes);
    void setText(xcb_window_t window, const QByteArray& name, const QByteArray& utf8);
    void setCardinals(xcb_window_t window, const QByteArray& name,
                      const std::vector<std::uint32_t>& values);
    void setWindows(xcb_window_t window, const QByteArray& name,
                    const std::vector<std::uint32_t>& values);
    void setAtoms(xcb_window_t window, const QByteArray& name,
                  const std::vector<QByteArray>& values);
    /// The first item of a 32-bit property.
    std::optional<std::uint32_t> word(xcb_window_t window, const QByteArray& name);
    /// All items of a 32-bit property; empty when there is none.
    std::vector<std::uint32_t> words(xcb_window_t window, const QByteArray& name);

    /// Sends a request to the window manager, as a pager does.
    void request(xcb_window_t window, const QByteArray& message,
                 const std::array<std::uint32_t, 5>& data);
    void minimize(xcb_window_t window);
    void maximize(xcb_window_t window);
    void sendToDesktop(xcb_window_t window, std::uint32_t desktop);

    /// Whether an EWMH window manager runs.
    bool isManaged();
    /// Whether the window manager's list has the window.
    bool isListed(xcb_window_t window);
    /// Whether the server draws the window, on the screen or into its window pixmap.
    bool isShown(xcb_window_t window);
    /// The received client messages of this type; discards all received events.
    int countMessages(const QByteArray& type);
    /// The windows that were asked to close; discards all received events.
    std::vector<xcb_window_t> deletions();
    /// Returns when the server has processed all requests so far.
    void sync();

private:
    void make(xcb_window_t id, const TestWindow& window);
    std::vector<xcb_client_message_event_t> messages(const QByteArray& type);

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace kelpa::test
