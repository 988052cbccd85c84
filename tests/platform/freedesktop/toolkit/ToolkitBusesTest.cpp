#include "platform/freedesktop/toolkit/ToolkitBuses.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct Case
{
    BusStates states;
    Diversion expected;
};

using enum BusState;

class Diversions : public testing::TestWithParam<Case>
{};

TEST_P(Diversions, Keep_the_toolkit_away_from_what_is_silent_and_from_nothing_else)
{
    EXPECT_EQ(diversionFor(GetParam().states), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(ToolkitBuses, Diversions,
                         testing::Values(Case{{answers, answers}, Diversion::nothing},
                                         Case{{answers, absent}, Diversion::nothing},
                                         Case{{absent, answers}, Diversion::nothing},
                                         Case{{absent, absent}, Diversion::nothing},
                                         Case{{answers, silent}, Diversion::accessibility},
                                         Case{{absent, silent}, Diversion::accessibility},
                                         Case{{silent, answers}, Diversion::allBuses},
                                         Case{{silent, absent}, Diversion::allBuses},
                                         Case{{silent, silent}, Diversion::allBuses}));

} // namespace
} // namespace kelpa::test
