// The object on Kelpa's connection that its script within KWin calls: receives reports and the
// press of its shortcut, and replies with orders. Only KWin itself is believed, and of KWin's
// scripts only the one that was loaded last: every program of the session may call the object.
#pragma once

#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/kwin/KwinScript.h"

#include <gio/gio.h>

#include <QByteArray>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

namespace kelpa::kwin {

struct NumberedReport
{
    QByteArray text;
    /// The names of the virtual desktops; empty where the script has none.
    QByteArray desktops;
    /// The places of the screens; empty where the script has none.
    QByteArray screens;
    /// Of the reports since this object exists; another one for each.
    std::uint64_t number = 0;
};

/// Any thread.
class KwinScriptCalls
{
public:
    enum class Receipt : std::uint8_t {
        /// Not for this object.
        other,
        /// Replied to; nothing has changed.
        replied,
        reported,
        /// The person has pressed the script's shortcut.
        summoned
    };

    /// From now on the script is the one with this token, within the KWin of this unique name. What
    /// an earlier one reported and was to do is dropped. Empty names nobody.
    void expect(std::string owner, std::string token);

    Receipt receive(GDBusConnection* connection, GDBusMessage* message);

    /// Sends the order as soon as the script asks for orders; the oldest of more than
    /// thousands are dropped.
    void order(const KwinOrder& order);

    /// The latest report; absent when there was none.
    std::optional<NumberedReport> report() const;
    /// Waits for the first report until the limit is over; whether there is one.
    bool waitForReport(std::chrono::milliseconds limit) const;

private:
    /// A call of the script that waits for its reply.
    struct Asking
    {
        GObjectPointer<GDBusConnection> connection;
        GObjectPointer<GDBusMessage> message;
    };

    bool isExpected(GDBusMessage* message) const;
    void sendOrders();

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_reported;
    std::string m_owner;
    std::string m_token;
    std::optional<NumberedReport> m_report;
    std::uint64_t m_lastNumber = 0;
    std::deque<QByteArray> m_orders;
    std::optional<Asking> m_asking;
};

} // namespace kelpa::kwin
