#include "platform/x11/connection/XcbReply.h"

namespace kelpa::x11 {

PropertyReply askProperty(XcbConnection& connection, xcb_window_t window, xcb_atom_t name,
                          std::uint32_t length, xcb_atom_t type)
{
    return PropertyReply(connection, std::uint8_t{0}, window, name, type, 0U, length);
}

Property propertyOf(const xcb_get_property_reply_t* reply)
{
    if (!reply)
        return {};
    return {reply->type, reply->format,
            QByteArrayView(static_cast<const char*>(xcb_get_property_value(reply)),
                           xcb_get_property_value_length(reply)),
            reply->bytes_after > 0};
}

} // namespace kelpa::x11
