#include "model/Identifiers.h"

#include <gtest/gtest.h>

#include <QSet>

namespace kelpa {

namespace {

const QUuid exampleUuid(0x0a1b2c3d, 0x4e5f, 0x6071, 0x82, 0x93, 0xa4, 0xb5, 0xc6, 0xd7, 0xe8, 0xf9);

TEST(Identifiers, A_uuid_is_written_in_upper_case_with_hyphens)
{
    EXPECT_EQ(uuidText(exampleUuid), u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9");
    EXPECT_EQ(uuidText(QUuid()), u"00000000-0000-0000-0000-000000000000");
}

TEST(Identifiers, A_uuid_text_is_read_in_upper_lower_and_mixed_case)
{
    EXPECT_EQ(uuidFromText(u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9"), exampleUuid);
    EXPECT_EQ(uuidFromText(u"0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9"), exampleUuid);
    EXPECT_EQ(uuidFromText(u"0a1B2c3D-4e5F-6071-8293-A4b5C6d7E8f9"), exampleUuid);
    EXPECT_EQ(uuidFromText(u"00000000-0000-0000-0000-000000000000"), QUuid());
    EXPECT_EQ(uuidFromText(u"ffffffff-ffff-ffff-ffff-ffffffffffff"),
              QUuid(0xffffffff, 0xffff, 0xffff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff));
}

class RefusedUuidText : public testing::TestWithParam<const char16_t*>
{};

TEST_P(RefusedUuidText, Is_no_uuid)
{
    EXPECT_EQ(uuidFromText(QStringView(GetParam())), std::nullopt);
    EXPECT_EQ(GoalID::fromText(QStringView(GetParam())), std::nullopt);
    EXPECT_EQ(TodoID::fromText(QStringView(GetParam())), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Identifiers, RefusedUuidText,
    testing::Values(
        u"", u" ", u"unassigned",
        // Braces, and braces that bring the length to 36.
        u"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}", u"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8}",
        // Without hyphens, and 36 digits.
        u"0A1B2C3D4E5F60718293A4B5C6D7E8F9", u"0A1B2C3D4E5F60718293A4B5C6D7E8F90000",
        // White space outside and inside.
        u" 0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9", u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9 ",
        u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9\n", u" A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9",
        // Hyphens at the wrong place, and another kind of hyphen.
        u"0A1B2C3-D4E5F-6071-8293-A4B5C6D7E8F9", u"0A1B2C3D-4E5F-60718-293-A4B5C6D7E8F9",
        u"-A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9", u"0A1B2C3D\u20104E5F-6071-8293-A4B5C6D7E8F9",
        // One digit too few, one too many, and digits that are not ASCII or not hex.
        u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F", u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F90",
        u"0A1B2C3G-4E5F-6071-8293-A4B5C6D7E8F9", u"\uff10A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9",
        u"0x1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9", u"urn:uuid:0A1B2C3D-4E5F-6071-8293-A4"));

TEST(Identifiers, A_text_with_a_nul_is_no_uuid)
{
    EXPECT_EQ(uuidFromText(QStringView(u"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F\0", 36)),
              std::nullopt);
}

TEST(Identifiers, An_identifier_reads_back_from_its_text)
{
    const TodoID id = TodoID::create();
    EXPECT_EQ(TodoID::fromText(id.text()), id);
    EXPECT_EQ(id.text().size(), 36);
}

TEST(Identifiers, A_thousand_new_identifiers_differ)
{
    QSet<GoalID> ids;
    for (int i = 0; i < 1000; ++i)
        ids.insert(GoalID::create());
    EXPECT_EQ(ids.size(), 1000);
}

TEST(Identifiers, Goals_and_todos_have_types_that_do_not_mix)
{
    static_assert(!std::is_convertible_v<GoalID, TodoID>);
    static_assert(!std::is_convertible_v<TodoID, GoalID>);
    static_assert(std::is_same_v<WindowID, std::uint32_t>);
    static_assert(std::is_same_v<ProcessID, std::int32_t>);
    EXPECT_EQ(GoalID{exampleUuid}.value, TodoID{exampleUuid}.value);
}

} // namespace

} // namespace kelpa
