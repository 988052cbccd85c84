// Whether the session starts Kelpa when the person logs in.
#pragma once

#include <cstdint>
#include <stop_token>

namespace kelpa {

enum class AutostartOutcome : std::uint8_t {
    done,
    /// The configuration could not be changed, or the desktop did not answer.
    failed,
    /// The person or the desktop does not allow it.
    refused,
};

/// Any thread but the main one: reads and writes files of the person's configuration.
class Autostart
{
public:
    virtual ~Autostart() = default;

    virtual bool isOn() const = 0;
    /// May wait minutes for the person's answer to a question of the desktop's; fails soon when it
    /// is to stop.
    [[nodiscard]] virtual AutostartOutcome set(bool isOn, const std::stop_token& stop) = 0;
};

} // namespace kelpa
