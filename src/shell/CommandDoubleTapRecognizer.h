// Recognises a quick double tap of the Command key, pressed alone, in the stream of modifier
// changes and key presses.
#pragma once

#include <optional>

namespace kelpa {

/// What an event that changes a modifier key tells.
struct ModifierChange
{
    /// Whether Command is down after the change, and whether any other modifier is.
    bool commandIsDown = false;
    bool hasOtherModifiers = false;
    /// Seconds on any clock that never goes back; only differences are used.
    double timestamp = 0;
};

/// A plain value; it keeps no clock and no timer of its own.
struct CommandDoubleTapRecognizer
{
    /// Longest press that is a tap, in seconds from press to release, inclusive.
    static constexpr double maximumPressDuration = 0.45;
    /// Longest time between two taps, in seconds from release to release, inclusive.
    static constexpr double maximumTapInterval = 0.36;

    bool commandIsDown = false;
    /// Set while Command is down.
    std::optional<double> currentPressStartedAt;
    /// Whether the current press can still become a tap.
    bool currentPressIsEligible = false;
    /// When the previous tap was released; absent when the next tap is a first one.
    std::optional<double> lastTapCompletedAt;

    /// To be called for every modifier change. True exactly when it completes a double tap.
    [[nodiscard]] bool handleFlagsChanged(const ModifierChange& change);

    /// To be called for every key press, before anything else is done with it: a key pressed
    /// during or between the taps makes them part of a shortcut.
    void handleKeyDown();

    friend bool operator==(const CommandDoubleTapRecognizer&,
                           const CommandDoubleTapRecognizer&) = default;

private:
    bool completesTap(double releasedAt) const;
};

} // namespace kelpa
