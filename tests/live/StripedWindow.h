// A window with a picture that nobody takes for a blank one.
#pragma once

#include "support/desktop/TestClient.h"

namespace kelpa::test {

/// Opens a window whose background the server paints in stripes, whenever a part of it is exposed.
inline xcb_window_t openStriped(TestClient& client, const TestWindow& window)
{
    constexpr std::uint16_t side = 128;
    const xcb_window_t id = client.create(window);
    xcb_connection_t* const connection = client.connection();
    const xcb_pixmap_t stripes = xcb_generate_id(connection);
    xcb_create_pixmap(connection, 24, stripes, client.root(), side, side);
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_gc(connection, context, stripes, 0, nullptr);
    std::int16_t y = 0;
    for (const std::uint32_t color : {0x204060U, 0xE0E0C0U}) {
        xcb_change_gc(connection, context, XCB_GC_FOREGROUND, &color);
        const xcb_rectangle_t stripe{0, y, side, side / 2};
        xcb_poly_fill_rectangle(connection, stripes, context, 1, &stripe);
        y = side / 2;
    }
    xcb_change_window_attributes(connection, id, XCB_CW_BACK_PIXMAP, &stripes);
    xcb_free_gc(connection, context);
    xcb_free_pixmap(connection, stripes);
    client.map(id);
    return id;
}

} // namespace kelpa::test
