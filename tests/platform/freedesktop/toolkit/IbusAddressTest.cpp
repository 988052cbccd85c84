#include "platform/freedesktop/toolkit/IbusAddress.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

TEST(IbusAddress, Is_in_the_file_of_the_display)
{
    EXPECT_EQ(ibusFileName(":0", {}), QStringLiteral("*-unix-0"));
    EXPECT_EQ(ibusFileName(":12.1", {}), QStringLiteral("*-unix-12"));
    EXPECT_EQ(ibusFileName("there:3", {}), QStringLiteral("*-there-3"));
    EXPECT_EQ(ibusFileName(":0", "wayland-1"), QStringLiteral("*-unix-wayland-1"));
}

TEST(IbusAddress, Is_the_value_of_its_line)
{
    EXPECT_EQ(ibusAddressFromText("# a comment\nIBUS_ADDRESS=unix:abstract=/a,guid=1\n"
                                  "IBUS_DAEMON_PID=7\n"),
              "unix:abstract=/a,guid=1");
    EXPECT_EQ(ibusAddressFromText("IBUS_DAEMON_PID=7\n# IBUS_ADDRESS=unix:path=/b\n"), "");
    EXPECT_EQ(ibusAddressFromText({}), "");
}

} // namespace
} // namespace kelpa::test
