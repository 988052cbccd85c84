// What every request says of itself.
#pragma once

#include <array>
#include <cstdint>
#include <tuple>

namespace kelpa::automation {

/// What the reply to a request has in it.
enum class ReplyKind : std::uint8_t {
    nothing,
    /// The identifier of what was added.
    identifier,
    goals,
    todos,
    windows,
};

/// The base of requests that have no parameters.
struct WithoutParameters
{
    static constexpr std::array<const char*, 0> parameters{};
    template <class Self>
    static auto fields(Self& /*self*/)
    {
        return std::tuple<>();
    }
    friend bool operator==(const WithoutParameters&, const WithoutParameters&) = default;
};

} // namespace kelpa::automation
