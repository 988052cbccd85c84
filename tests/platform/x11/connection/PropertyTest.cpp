#include "platform/x11/connection/Property.h"
#include "platform/x11/connection/PropertyText.h"

#include <gtest/gtest.h>

#include <xcb/xproto.h>

#include <array>
#include <cstring>

using namespace kelpa::x11;

namespace {

constexpr TextTypes types{501, 502};

Property utf8(QByteArrayView bytes)
{
    return {types.utf8String, 8, bytes, false};
}

QByteArray bytesOf(std::initializer_list<std::uint32_t> values)
{
    QByteArray bytes;
    for (const std::uint32_t value : values) {
        std::array<char, sizeof value> raw{};
        std::memcpy(raw.data(), &value, sizeof value);
        bytes.append(raw.data(), raw.size());
    }
    return bytes;
}

QString harmless(const char16_t* text)
{
    return harmlessText(QString::fromUtf16(text));
}

} // namespace

TEST(PropertyWords, The_items_of_a_32_bit_property_of_the_type_are_read)
{
    const QByteArray bytes = bytesOf({7, 4294967295U});
    const std::vector<std::uint32_t> expected{7, 4294967295U};
    EXPECT_EQ(words({XCB_ATOM_CARDINAL, 32, bytes, false}, XCB_ATOM_CARDINAL), expected);
}

TEST(PropertyWords, Another_type_reads_as_nothing)
{
    const QByteArray bytes = bytesOf({7});
    EXPECT_TRUE(words({XCB_ATOM_WINDOW, 32, bytes, false}, XCB_ATOM_CARDINAL).empty());
}

TEST(PropertyWords, Another_format_reads_as_nothing)
{
    const QByteArray bytes = bytesOf({7});
    EXPECT_TRUE(words({XCB_ATOM_CARDINAL, 8, bytes, false}, XCB_ATOM_CARDINAL).empty());
    EXPECT_TRUE(words({XCB_ATOM_CARDINAL, 16, bytes, false}, XCB_ATOM_CARDINAL).empty());
}

TEST(PropertyWords, An_incomplete_last_item_is_left_out)
{
    const QByteArray bytes = bytesOf({7, 8}).chopped(1);
    EXPECT_EQ(words({XCB_ATOM_CARDINAL, 32, bytes, false}, XCB_ATOM_CARDINAL),
              std::vector<std::uint32_t>{7});
    EXPECT_EQ(word({XCB_ATOM_CARDINAL, 32, QByteArrayView("abc"), false}, XCB_ATOM_CARDINAL),
              std::nullopt);
}

TEST(PropertyText, A_missing_property_is_absent_and_an_empty_one_is_empty)
{
    EXPECT_EQ(text({}, types), std::nullopt);
    EXPECT_EQ(text(utf8(""), types), QStringLiteral(""));
}

TEST(PropertyText, Text_of_another_type_or_format_is_absent)
{
    EXPECT_EQ(text({XCB_ATOM_CARDINAL, 8, "x", false}, types), std::nullopt);
    EXPECT_EQ(text({types.utf8String, 32, "xxxx", false}, types), std::nullopt);
    EXPECT_EQ(utf8Text({XCB_ATOM_STRING, 8, "x", false}, types), std::nullopt);
}

TEST(PropertyText, A_server_without_the_types_reads_no_untyped_bytes)
{
    EXPECT_EQ(text({XCB_ATOM_NONE, 8, "x", false}, {}), std::nullopt);
    EXPECT_EQ(utf8Text({XCB_ATOM_NONE, 8, "x", false}, {}), std::nullopt);
}

TEST(PropertyText, Each_type_is_decoded_by_its_own_rules)
{
    EXPECT_EQ(text(utf8("Gr\xC3\xBC\xC3\x9F"
                        "e"),
                   types),
              QStringLiteral(u"Gr\u00FC\u00DFe"));
    EXPECT_EQ(text({XCB_ATOM_STRING, 8,
                    "Gr\xFC\xDF"
                    "e",
                    false},
                   types),
              QStringLiteral(u"Gr\u00FC\u00DFe"));
    EXPECT_EQ(text({types.compoundText, 8,
                    "Gr\xFC\xDF"
                    "e",
                    false},
                   types),
              QStringLiteral(u"Gr\u00FC\u00DFe"));
}

TEST(PropertyText, Invalid_UTF8_becomes_replacement_characters)
{
    EXPECT_EQ(text(utf8("a\xFF"
                        "b\xC3"),
                   types),
              QStringLiteral(u"a\uFFFDb\uFFFD"));
    EXPECT_EQ(text(utf8("\xED\xA0\x80"), types)->contains(QChar(0xD800)), false);
}

TEST(PropertyText, A_megabyte_is_read_to_4096_bytes)
{
    EXPECT_EQ(text(utf8(QByteArray(1 << 20, 'x')), types)->size(), 4096);
}

TEST(PropertyText, A_character_cut_in_two_by_the_limit_is_left_out)
{
    const QByteArray bytes = QByteArray(4095, 'x') + "\xC3\xBC";
    EXPECT_EQ(text(utf8(bytes), types), QString(4095, QLatin1Char('x')));
    EXPECT_EQ(text({types.utf8String, 8, "ab\xE2\x82", true}, types), QStringLiteral("ab"));
}

TEST(PropertyText, Zero_bytes_and_control_characters_are_taken_out)
{
    EXPECT_EQ(text(utf8(QByteArrayView("a\0b\x1B[31mc\x7F", 10)), types),
              QStringLiteral("ab[31mc"));
    EXPECT_EQ(harmless(u"a\u0090b"), QStringLiteral("ab"));
}

TEST(PropertyText, Line_breaks_and_tabs_become_spaces)
{
    EXPECT_EQ(harmless(u"a\nb\tc\u2028d\u2029e\u0085f"), QStringLiteral("a b c d e f"));
}

TEST(PropertyText, Directional_overrides_are_taken_out_with_their_ends)
{
    EXPECT_EQ(harmless(u"a\u202Egnp.exe\u202Cb"), QStringLiteral("agnp.exeb"));
    EXPECT_EQ(harmless(u"\u202Dx"), QStringLiteral("x"));
}

TEST(PropertyText, Open_embeddings_and_isolates_are_closed_within_the_text)
{
    EXPECT_EQ(harmless(u"a\u202Bb"), QString::fromUtf16(u"a\u202Bb\u202C"));
    EXPECT_EQ(harmless(u"a\u2067b"), QString::fromUtf16(u"a\u2067b\u2069"));
    EXPECT_EQ(harmless(u"\u2068a\u202Ab"), QString::fromUtf16(u"\u2068a\u202Ab\u202C\u2069"));
}

TEST(PropertyText, Balanced_embeddings_and_isolates_stay)
{
    EXPECT_EQ(harmless(u"\u2067a\u2069\u202Ab\u202C"),
              QString::fromUtf16(u"\u2067a\u2069\u202Ab\u202C"));
    // The end of an isolate ends the embeddings in it too.
    EXPECT_EQ(harmless(u"\u2067\u202Aa\u2069b"), QString::fromUtf16(u"\u2067\u202Aa\u2069b"));
}

TEST(PropertyText, Ends_without_a_beginning_are_taken_out)
{
    EXPECT_EQ(harmless(u"a\u202Cb\u2069c"), QStringLiteral("abc"));
    // An embedding's end does not reach out of an isolate.
    EXPECT_EQ(harmless(u"\u202Aa\u2067b\u202Cc\u2069d\u202C"),
              QString::fromUtf16(u"\u202Aa\u2067bc\u2069d\u202C"));
}

TEST(CompoundText, A_UTF8_segment_is_decoded)
{
    EXPECT_EQ(fromCompoundText("a\x1B%G\xE2\x82\xAC\x1B%@b"), QStringLiteral(u"a\u20ACb"));
}

TEST(CompoundText, A_UTF8_segment_without_an_end_reaches_to_the_end)
{
    EXPECT_EQ(fromCompoundText("a\x1B%G\xE2\x82\xAC"), QStringLiteral(u"a\u20AC"));
    EXPECT_EQ(fromCompoundText("a\x1B%G"), QStringLiteral("a"));
}

TEST(CompoundText, A_run_of_an_unknown_set_is_one_replacement_character)
{
    EXPECT_EQ(fromCompoundText("a\x1B-G\xC1\xC2\xC3"
                               "b\x1B-A\xFC"),
              QStringLiteral(u"a\uFFFDb\u00FC"));
    EXPECT_EQ(fromCompoundText("\x1B$(BFnK\x1B(Bx"), QStringLiteral(u"\uFFFDx"));
}

TEST(CompoundText, Extended_segments_are_passed_over_also_when_they_lie_about_their_length)
{
    EXPECT_EQ(fromCompoundText("a\x1B%/1\x80\x83xyzb"), QStringLiteral(u"a\uFFFDb"));
    EXPECT_EQ(fromCompoundText("a\x1B%/1\xFF\xFFxyz"), QStringLiteral(u"a\uFFFD"));
    EXPECT_EQ(fromCompoundText("a\x1B%/1\x80"), QStringLiteral("a"));
}

TEST(CompoundText, Every_beginning_of_a_text_with_escapes_is_read)
{
    const QByteArray whole("\x9B"
                           "2]a\x1B%G\xE2\x82\xAC\x1B%@\x1B$)A\xB0\xA1\x1B%/2\x80\x82xy",
                           26);
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        EXPECT_LE(fromCompoundText(QByteArrayView(whole).first(length)).size(), length);
    }
}

TEST(PropertyTexts, Each_text_ends_with_a_zero_byte)
{
    const auto texts = [](QByteArrayView bytes, bool isCut = false) {
        return utf8Texts({types.utf8String, 8, bytes, isCut}, types);
    };
    EXPECT_EQ(texts(QByteArrayView("Mail\0\0B\xC3\xBCro\0", 12)),
              (QList<QString>{QStringLiteral("Mail"), QString(), QStringLiteral(u"B\u00FCro")}));
    EXPECT_EQ(texts({}), QList<QString>());
    // Some window managers leave the last one out.
    EXPECT_EQ(texts("Mail"), QList<QString>{QStringLiteral("Mail")});
    EXPECT_EQ(texts(QByteArrayView("Mail\0We", 7), true), QList<QString>{QStringLiteral("Mail")});
    EXPECT_EQ(utf8Texts({XCB_ATOM_STRING, 8, "Mail", false}, types), QList<QString>());
    EXPECT_EQ(utf8Texts({XCB_ATOM_NONE, 8, "Mail", false}, {}), QList<QString>());
}

TEST(WindowClassProperty, Instance_and_name_are_told_apart)
{
    const Property property{XCB_ATOM_STRING, 8, QByteArrayView("xterm\0XTerm\0", 12), false};
    EXPECT_EQ(windowClass(property, types),
              (WindowClass{QStringLiteral("xterm"), QStringLiteral("XTerm")}));
}

TEST(WindowClassProperty, Missing_parts_are_empty)
{
    EXPECT_EQ(windowClass({XCB_ATOM_STRING, 8, "xterm", false}, types),
              (WindowClass{QStringLiteral("xterm"), QString()}));
    EXPECT_EQ(windowClass({XCB_ATOM_STRING, 8, "", false}, types), WindowClass{});
    EXPECT_EQ(windowClass({XCB_ATOM_CARDINAL, 32, "abcd", false}, types), WindowClass{});
    EXPECT_EQ(windowClass({XCB_ATOM_STRING, 8, QByteArrayView("\0A\0B", 4), false}, types),
              (WindowClass{QString(), QStringLiteral("A")}));
}

TEST(FrameExtentsProperty, Four_cardinals_are_read)
{
    const QByteArray bytes = bytesOf({26, 27, 23, 29});
    const FrameExtents extents = frameExtents({XCB_ATOM_CARDINAL, 32, bytes, false}, 452, 352);
    EXPECT_EQ(extents.left, 26U);
    EXPECT_EQ(extents.right, 27U);
    EXPECT_EQ(extents.top, 23U);
    EXPECT_EQ(extents.bottom, 29U);
}

TEST(FrameExtentsProperty, Extents_that_leave_nothing_of_the_window_are_not_believed)
{
    const QByteArray wide = bytesOf({200, 200, 0, 0});
    EXPECT_EQ(frameExtents({XCB_ATOM_CARDINAL, 32, wide, false}, 400, 300).left, 0U);
    const QByteArray wrapping = bytesOf({4294967295U, 2, 0, 0});
    EXPECT_EQ(frameExtents({XCB_ATOM_CARDINAL, 32, wrapping, false}, 400, 300).left, 0U);
    const QByteArray three = bytesOf({1, 2, 3});
    EXPECT_EQ(frameExtents({XCB_ATOM_CARDINAL, 32, three, false}, 400, 300).left, 0U);
}
