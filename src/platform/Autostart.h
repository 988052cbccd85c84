// Whether the session starts Kelpa when the person logs in.
#pragma once

namespace kelpa {

/// Any thread but the main one: reads and writes files of the person's configuration.
class Autostart
{
public:
    virtual ~Autostart() = default;

    virtual bool isOn() const = 0;
    /// False when the configuration could not be changed.
    [[nodiscard]] virtual bool set(bool isOn) = 0;
};

} // namespace kelpa
