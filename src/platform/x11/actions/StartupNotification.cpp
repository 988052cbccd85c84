#include "platform/x11/actions/StartupNotification.h"

#include "platform/x11/connection/DisplayConnection.h"

#include <algorithm>
#include <iterator>

namespace kelpa::x11 {

namespace {

// Longer than the ids of all launchers, and short enough not to keep the server busy.
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
    const QByteArray separator = "_TIME";
    const qsizetype position = startupID.lastIndexOf(separator);
    if (position < 0)
        return std::nullopt;
    bool isNumber = false;
    const std::uint32_t time = startupID.mid(position + separator.size()).toUInt(&isNumber);
    return isNumber && time != 0 ? std::optional(time) : std::nullopt;
}

void announceStartupComplete(DisplayConnection& display, const QByteArray& startupID)
{
    if (!isPlausible(startupID))
        return;
    // Each client message carries twenty bytes; the zero that ends the text is in the last one.
    const QByteArray text = "remove: ID=" + quoted(startupID);
    constexpr qsizetype messageSize = 20;
    for (qsizetype begin = 0; begin <= text.size(); begin += messageSize) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 8;
        event.window = display.helperWindow();
        event.type = display.atoms()[begin == 0 ? Atom::netStartupInfoBegin : Atom::netStartupInfo];
        const QByteArray part = text.mid(begin, messageSize);
        std::copy(part.begin(), part.end(), std::begin(event.data.data8));
        const void* bytes = &event;
        xcb_send_event(display.connection().raw(), 0, display.connection().root(),
                       XCB_EVENT_MASK_PROPERTY_CHANGE, static_cast<const char*>(bytes));
    }
    display.connection().flush();
}

} // namespace kelpa::x11
