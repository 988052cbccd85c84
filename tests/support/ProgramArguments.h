#pragma once

#include <array>

namespace kelpa::test {

/// What a QCoreApplication wants of a program; outlives it.
struct ProgramArguments
{
    int count = 1;
    std::array<char, 5> name{"test"};
    std::array<char*, 2> values{name.data(), nullptr};
};

} // namespace kelpa::test
