// Recognises a quick double tap of the Command key, pressed alone, in the stream of modifier
// changes and key presses.
#pragma once

#include <optional>

namespace kelpa {

/// An event that changes a modifier key.
struct ModifierChange
{
    /// Whether Command is down after the change, and whether any other modifier is.
    bool commandIsDown = false;
    bool hasOtherModifiers = false;
    /// Seconds on any monotonic clock; only differences are used.
    double timestamp = 0;
};

/// A plain value without a clock or timer.
struct CommandDoubleTapRecognizer
{
    /// Longest press that counts as a tap, in seconds from press to release, inclusive.
    static constexpr double maximumPressDuration = 0.45;
    /// Longest time between two taps, in seconds from release to release, inclusive.
    static constexpr double maximumTapInterval = 0.36;

    bool commandIsDown = false;
    /// Set while Command is down.
    std::optional<double> currentPressStartedAt;
    /// Whether the current press can still become a tap.
    bool currentPressIsEligible = false;
    /// When the previous tap was released; absent when the next tap starts a pair.
    std::optional<double> lastTapCompletedAt;

    /// Call for every modifier change. True exactly when it completes a double tap.
    [[nodiscard]] bool handleFlagsChanged(const ModifierChange& change);

    /// Call for every key press, before handling it otherwise: a key pressed during or between the
    /// taps makes them part of a shortcut.
    void handleKeyDown();

    friend bool operator==(const CommandDoubleTapRecognizer&,
                           const CommandDoubleTapRecognizer&) = default;

private:
    bool completesTap(double releasedAt) const;
};

} // namespace kelpa
