#include "platform/x11/XcbReply.h"

namespace kelpa::x11 {

Property propertyOf(const xcb_get_property_reply_t* reply)
{
    if (!reply) {
        return {};
    }
    return {reply->type, reply->format,
            QByteArrayView(static_cast<const char*>(xcb_get_property_value(reply)),
                           xcb_get_property_value_length(reply)),
            reply->bytes_after > 0};
}

} // namespace kelpa::x11
