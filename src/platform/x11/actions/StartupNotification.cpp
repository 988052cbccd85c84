#include "platform/x11/actions/StartupNotification.h"

#include "platform/x11/connection/DisplayConnection.h"

#include <algorithm>
#include <iterator>

namespace kelpa::x11 {

namespace {

// Longer than any launcher's, shorter than what would keep the server busy.
constexpr qsizetype longestID = 1024;

bool isPlausible(const QByteArray& id)
{
    return !id.isEmpty() && id.size() <= longestID &&
           std::all_of(id.begin(), id.end(), [](char each) { return each > ' ' && each < 0x7F; });
}

QByteArray quoted(const QByteArray& id)
{
    QByteArray text;
    for (const char each : id) {
        if (each == '"' || each == '\\')
            text += '\\';
        text += each;
    }
    return '"' + text + '"';
}

} // namespace

std::optional<std::uint32_t> startupTime(const QByteArray& startupID)
{
    const QByteArray mark = "_TIME";
    const qsizetype place = startupID.lastIndexOf(mark);
    if (place < 0)
        return std::nullopt;
    bool isNumber = false;
    const std::uint32_t time = startupID.mid(place + mark.size()).toUInt(&isNumber);
    return isNumber && time != 0 ? std::optional(time) : std::nullopt;
}

void announceStartupEnd(DisplayConnection& link, const QByteArray& startupID)
{
    if (!isPlausible(startupID))
        return;
    // In pieces of twenty bytes, the last one with the zero that ends the text.
    const QByteArray text = "remove: ID=" + quoted(startupID);
    constexpr qsizetype pieceSize = 20;
    for (qsizetype begin = 0; begin <= text.size(); begin += pieceSize) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 8;
        event.window = link.helperWindow();
        event.type = link.atoms()[begin == 0 ? Atom::netStartupInfoBegin : Atom::netStartupInfo];
        const QByteArray piece = text.mid(begin, pieceSize);
        std::copy(piece.begin(), piece.end(), std::begin(event.data.data8));
        const void* bytes = &event;
        xcb_send_event(link.connection().raw(), 0, link.connection().root(),
                       XCB_EVENT_MASK_PROPERTY_CHANGE, static_cast<const char*>(bytes));
    }
    link.connection().flush();
}

} // namespace kelpa::x11
