// A client of an X server whose windows can be given any property, also ones that no honest program
// would have.
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
    /// What the server paints where the window was not drawn to: 0xRRGGBB, or with alpha in front
    /// for a translucent window; whatever was there before when absent.
    std::optional<std::uint32_t> background = std::nullopt;
    /// 32 bits deep.
    bool isTranslucent = false;
};

/// A connection and the windows it made, all of which go when it is dropped.
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

    /// Asks the window manager, as a pager would.
    void request(xcb_window_t window, const QByteArray& message,
                 const std::array<std::uint32_t, 5>& data);
    void minimize(xcb_window_t window);
    void maximize(xcb_window_t window);
    void sendToDesktop(xcb_window_t window, std::uint32_t desktop);

    /// Whether an EWMH window manager runs.
    bool isManaged();
    /// Whether the window manager's list has the window.
    bool isListed(xcb_window_t window);
    /// Whether the server draws it, on the screen or where its contents are kept.
    bool isShown(xcb_window_t window);
    /// The client messages of this type that have arrived; all that has arrived is thrown away.
    int countMessages(const QByteArray& type);
    /// The windows that have been asked to close; all else that has arrived is thrown away.
    std::vector<xcb_window_t> deletions();
    /// Returns when the server has carried out everything asked so far.
    void sync();

private:
    void make(xcb_window_t id, const TestWindow& window);
    std::vector<xcb_client_message_event_t> messages(const QByteArray& type);

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace kelpa::test
