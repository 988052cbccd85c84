// The messages of sway's IPC, which has the form of i3's: a fixed header with the length and the
// type, then JSON.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace kelpa::wayland {

enum class SwayMessageType : std::uint32_t {
    runCommand = 0,
    subscribe = 2,
    getTree = 4,
    getConfig = 9,
    sendTick = 10,
    // Events have the highest bit set.
    workspaceEvent = 0x8000'0000,
    windowEvent = 0x8000'0003,
    bindingEvent = 0x8000'0005,
    tickEvent = 0x8000'0007,
};

struct SwayMessage
{
    SwayMessageType type = SwayMessageType::runCommand;
    /// JSON, a command, or the text of a tick.
    QByteArray payload;

    friend bool operator==(const SwayMessage&, const SwayMessage&) = default;
};

QByteArray encodedSwayMessage(const SwayMessage& message);

/// Cuts the stream of one connection into messages, whatever pieces it arrives in.
class SwayMessageReader
{
public:
    /// No message is longer; one that says so shows that the other side is not sway.
    static constexpr std::uint32_t longestPayload = 64U << 20U;

    void add(const QByteArray& bytes) { m_bytes += bytes; }
    /// The next message that has arrived in full; absent when there is none.
    std::optional<SwayMessage> next();
    /// The stream is none of sway's; there will be no more messages.
    bool isBroken() const { return m_isBroken; }

private:
    QByteArray m_bytes;
    bool m_isBroken = false;
};

} // namespace kelpa::wayland
