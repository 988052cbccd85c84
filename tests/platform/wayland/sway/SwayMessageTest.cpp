#include "platform/wayland/sway/SwayMessage.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using wayland::SwayMessage;
using wayland::SwayMessageReader;
using wayland::SwayMessageType;

TEST(SwayMessage, Has_the_header_that_sway_expects)
{
    EXPECT_EQ(wayland::encodedSwayMessage({SwayMessageType::subscribe, "[]"}),
              QByteArray("i3-ipc\2\0\0\0\2\0\0\0[]", 16));
}

TEST(SwayMessage, Is_read_from_whatever_pieces_it_arrives_in)
{
    const SwayMessage first{SwayMessageType::getTree, R"({"a":1})"};
    const SwayMessage second{SwayMessageType::bindingEvent, {}};
    const QByteArray stream =
        wayland::encodedSwayMessage(first) + wayland::encodedSwayMessage(second);
    for (qsizetype cut = 0; cut <= stream.size(); ++cut) {
        SwayMessageReader reader;
        std::vector<SwayMessage> read;
        for (const QByteArray& piece : {stream.left(cut), stream.mid(cut)}) {
            reader.add(piece);
            while (const auto message = reader.next())
                read.push_back(*message);
        }
        EXPECT_EQ(read, (std::vector<SwayMessage>{first, second})) << cut;
    }
}

TEST(SwayMessage, A_stream_that_is_none_of_sways_breaks_the_reader)
{
    for (const QByteArray& stream : {QByteArray("HTTP/1.1 400 Bad Request\r\n"),
                                     QByteArray("i3-ipc\377\377\377\377\4\0\0\0", 14)}) {
        SwayMessageReader reader;
        reader.add(stream);
        EXPECT_EQ(reader.next(), std::nullopt);
        EXPECT_TRUE(reader.isBroken());
        reader.add(wayland::encodedSwayMessage({SwayMessageType::getTree, {}}));
        EXPECT_EQ(reader.next(), std::nullopt);
    }
    SwayMessageReader waiting;
    waiting.add("i3-ipc");
    EXPECT_EQ(waiting.next(), std::nullopt);
    EXPECT_FALSE(waiting.isBroken());
}

} // namespace
} // namespace kelpa::test
