// The seed of randomised tests: different in every run, printed, and repeatable.
#pragma once

#include <QString>

#include <cstdint>
#include <random>
#include <string>

namespace kelpa::test {

/// KELPA_TEST_SEED from the environment, to repeat a run; otherwise a new seed.
inline std::uint64_t seed()
{
    bool isGiven = false;
    const qulonglong given = qEnvironmentVariable("KELPA_TEST_SEED").toULongLong(&isGiven);
    if (isGiven)
        return given;
    std::random_device device;
    return (std::uint64_t{device()} << 32) | device();
}

inline std::string seedText(std::uint64_t seed)
{
    return "repeat with KELPA_TEST_SEED=" + std::to_string(seed);
}

} // namespace kelpa::test
