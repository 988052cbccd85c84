// Reading and acting on the windows of other applications.
#pragma once

namespace kelpa {

class Accessibility
{
public:
    virtual ~Accessibility() = default;

    /// Whether other applications' windows may be acted on, as last seen. Main thread; returns at
    /// once.
    virtual bool isTrusted() const = 0;
};

} // namespace kelpa
