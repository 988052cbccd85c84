// Names the cases of a parameterised test.
#pragma once

#include <string>

namespace kelpa::test {

/// For INSTANTIATE_TEST_SUITE_P over cases that have a `name`.
inline constexpr auto caseName = [](const auto& tested) { return std::string(tested.param.name); };

} // namespace kelpa::test
