#include "platform/numbers/NameTable.h"

#include <QCryptographicHash>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace kelpa::test {
namespace {

const NameTable table{.run = QByteArray("run\0\xff", 5),
                      .numbers = {{"17", 4711}, {QByteArray("\n\0x", 3), 12}, {"a b", 13}}};

/// With the checksum that belongs to it.
QByteArray signedText(const QByteArray& text)
{
    return text + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex() + '\n';
}

TEST(NameTable, Is_the_same_after_writing_and_reading)
{
    EXPECT_EQ(decodedNameTable(encodedNameTable(table)), table);
    const NameTable empty{.run = "run", .numbers = {}};
    EXPECT_EQ(decodedNameTable(encodedNameTable(empty)), empty);
}

TEST(NameTable, Has_a_form_that_stays)
{
    EXPECT_EQ(encodedNameTable({.run = "run", .numbers = {{"a", 1}, {"b", 20}}}),
              signedText("Kelpa window names 1\n72756e\n1 61\n20 62\n"));
}

TEST(NameTable, Any_byte_that_is_changed_added_or_missing_makes_it_none)
{
    const QByteArray text = encodedNameTable(table);
    for (qsizetype at = 0; at < text.size(); ++at) {
        QByteArray changed = text;
        changed[at] = static_cast<char>(changed[at] ^ 1);
        EXPECT_EQ(decodedNameTable(changed), std::nullopt) << at;
        EXPECT_EQ(decodedNameTable(text.left(at)), std::nullopt) << at;
        EXPECT_EQ(decodedNameTable(text.left(at) + text.mid(at + 1)), std::nullopt) << at;
    }
    EXPECT_EQ(decodedNameTable(text + '\n'), std::nullopt);
}

TEST(NameTable, What_Kelpa_does_not_write_is_refused_also_with_a_right_checksum)
{
    const QByteArray heading = "Kelpa window names 1\n";
    EXPECT_TRUE(decodedNameTable(signedText(heading + "72756e\n1 61\n")));
    for (const QByteArray& text : {
             QByteArray("Kelpa window names 2\n72756e\n1 61\n"),   // another version
             heading + "\n1 61\n",                                 // no run
             heading + "72756E\n1 61\n",                           // capitals
             heading + "72756e\n0 61\n",                           // no number
             heading + "72756e\n01 61\n",                          // a leading zero
             heading + "72756e\n+1 61\n",                          // a sign
             heading + "72756e\n4294967295 61\n",                  // a number not to be believed
             heading + "72756e\n4294967297 61\n",                  // beyond 32 bits
             heading + "72756e\n1 6\n",                            // half a byte
             heading + "72756e\n1 \n",                             // no name
             heading + "72756e\n1\n",                              // no name at all
             heading + "72756e\n1 61\n1 62\n",                     // a number twice
             heading + "72756e\n1 61\n2 61\n",                     // a name twice
             heading + "72756e\n2 62\n1 61\n",                     // another order
             heading + "72756e\n\n1 61\n",                         // an empty line
             heading + "72756e\n1 " + QByteArray(514, 'a') + '\n', // a name too long
         })
        EXPECT_EQ(decodedNameTable(signedText(text)), std::nullopt) << text.toStdString();
}

TEST(NameTable, Noise_is_none)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int length = 0; length < 300; ++length) {
        QByteArray noise;
        for (int i = 0; i < length; ++i)
            noise.append(static_cast<char>(byte(random)));
        EXPECT_EQ(decodedNameTable(noise), std::nullopt);
    }
}

} // namespace
} // namespace kelpa::test
