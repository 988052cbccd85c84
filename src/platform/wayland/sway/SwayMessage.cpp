#include "platform/wayland/sway/SwayMessage.h"

#include <cstring>
#include <string_view>

namespace kelpa::wayland {

namespace {

constexpr std::string_view magic = "i3-ipc";
constexpr qsizetype lengthAt = static_cast<qsizetype>(magic.size());
constexpr qsizetype typeAt = lengthAt + 4;
constexpr qsizetype headerSize = typeAt + 4;

/// Numbers are in the byte order of the machine.
std::uint32_t wordAt(const QByteArray& bytes, qsizetype at)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.constData() + at, sizeof(word));
    return word;
}

void append(QByteArray& bytes, std::uint32_t word)
{
    QByteArray raw(sizeof(word), Qt::Uninitialized);
    std::memcpy(raw.data(), &word, sizeof(word));
    bytes += raw;
}

} // namespace

QByteArray encodedSwayMessage(const SwayMessage& message)
{
    QByteArray bytes(magic.data(), lengthAt);
    append(bytes, static_cast<std::uint32_t>(message.payload.size()));
    append(bytes, static_cast<std::uint32_t>(message.type));
    return bytes + message.payload;
}

std::optional<SwayMessage> SwayMessageReader::next()
{
    if (m_isBroken || m_bytes.size() < headerSize)
        return std::nullopt;
    const std::uint32_t length = wordAt(m_bytes, lengthAt);
    if (std::memcmp(m_bytes.constData(), magic.data(), magic.size()) != 0 ||
        length > longestPayload) {
        m_isBroken = true;
        m_bytes.clear();
        return std::nullopt;
    }
    const qsizetype end = headerSize + static_cast<qsizetype>(length);
    if (m_bytes.size() < end)
        return std::nullopt;
    SwayMessage message{.type = static_cast<SwayMessageType>(wordAt(m_bytes, typeAt)),
                        .payload = m_bytes.mid(headerSize, static_cast<qsizetype>(length))};
    m_bytes.remove(0, end);
    return message;
}

} // namespace kelpa::wayland
