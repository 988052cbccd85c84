#include "model/GoalPins.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa {
namespace {

const QString oneText = QStringLiteral("11111111-1111-4111-8111-111111111111");
const QString otherText = QStringLiteral("22222222-2222-4222-8222-222222222222");

GoalID idOf(const QString& text)
{
    return *GoalID::fromText(text);
}

TEST(GoalPins, Are_stored_in_the_order_of_the_goals_identifiers)
{
    const QByteArray json = encodeGoalPins({{idOf(otherText), 1}, {idOf(oneText), 100}});
    EXPECT_EQ(json, R"({"version":1,"pins":{"11111111-1111-4111-8111-111111111111":100,)"
                    R"("22222222-2222-4222-8222-222222222222":1}})");
    EXPECT_EQ(decodeGoalPins(json), (GoalPins{{idOf(oneText), 100}, {idOf(otherText), 1}}));
    EXPECT_EQ(encodeGoalPins({}), R"({"version":1,"pins":{}})");
    EXPECT_EQ(decodeGoalPins(encodeGoalPins({})), GoalPins());
}

TEST(GoalPins, Members_of_a_later_release_are_ignored)
{
    EXPECT_EQ(decodeGoalPins(R"({ "pins": {}, "colour": "blue", "version": 1.0 })"), GoalPins());
}

TEST(GoalPins, Anything_else_does_not_decode)
{
    const QByteArray pin = R"("11111111-1111-4111-8111-111111111111")";
    const QByteArray begin = R"({"version":1,"pins":{)" + pin + ":";
    for (const QByteArray& json :
         {QByteArray(), QByteArray("[]"), QByteArray("{}"), QByteArray(R"({"version":1})"),
          QByteArray(R"({"pins":{}})"), QByteArray(R"({"version":2,"pins":{}})"),
          QByteArray(R"({"version":"1","pins":{}})"), QByteArray(R"({"version":1,"pins":[]})"),
          QByteArray(R"({"version":1,"pins":null})"), QByteArray(R"({"version":1,"pins":{"a":1}})"),
          QByteArray(begin + "0}}"), QByteArray(begin + "-1}}"), QByteArray(begin + "101}}"),
          QByteArray(begin + "1.5}}"), QByteArray(begin + "\"1\"}}"), QByteArray(begin + "null}}"),
          QByteArray(begin + "1}")})
        EXPECT_EQ(decodeGoalPins(json), std::nullopt) << json.constData();
}

TEST(DesktopLinks, Are_stored_with_the_pins_that_they_are_for)
{
    const DesktopLinks links{{idOf(otherText), {.pin = 3, .desktop = 1763929000123456}},
                             {idOf(oneText), {.pin = 100, .desktop = 0xFFFF'FFFF'FFFF'FFFFU}}};
    const QByteArray json = encodeDesktopLinks(links);
    EXPECT_EQ(json,
              R"({"version":1,"links":{)"
              R"("11111111-1111-4111-8111-111111111111":{"pin":100,"desktop":-1},)"
              R"("22222222-2222-4222-8222-222222222222":{"pin":3,"desktop":1763929000123456}}})");
    EXPECT_EQ(decodeDesktopLinks(json), links);
    EXPECT_EQ(decodeDesktopLinks(encodeDesktopLinks({})), DesktopLinks());
}

TEST(DesktopLinks, Anything_else_does_not_decode)
{
    const QByteArray begin = R"({"version":1,"links":{"11111111-1111-4111-8111-111111111111":)";
    EXPECT_TRUE(decodeDesktopLinks(begin + R"({"pin":3,"desktop":7}}})"));
    for (const QByteArray& json :
         {QByteArray("{}"), QByteArray(R"({"version":2,"links":{}})"),
          QByteArray(R"({"version":1,"pins":{}})"), QByteArray(begin + "7}}"),
          QByteArray(begin + R"({"pin":3}}})"), QByteArray(begin + R"({"desktop":7}}})"),
          QByteArray(begin + R"({"pin":0,"desktop":7}}})"),
          QByteArray(begin + R"({"pin":101,"desktop":7}}})"),
          QByteArray(begin + R"({"pin":3,"desktop":"7"}}})"),
          QByteArray(begin + R"({"pin":3,"desktop":18446744073709551615}}})")})
        EXPECT_EQ(decodeDesktopLinks(json), std::nullopt) << json.constData();
}

} // namespace
} // namespace kelpa
