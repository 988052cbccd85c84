#pragma once

#include <array>

namespace kelpa::test {

/// The arguments for a QCoreApplication, which they must outlive.
struct ProgramArguments
{
    int count = 1;
    std::array<char, 5> name{"test"};
    std::array<char*, 2> values{name.data(), nullptr};
};

} // namespace kelpa::test
