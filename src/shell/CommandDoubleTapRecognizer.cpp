#include "shell/CommandDoubleTapRecognizer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelpa {

namespace {

/// Whether at most `limit` seconds lie between the two. Timestamps are rounded to the precision of
/// their magnitude (1000.36 − 1000 is a little more than 0.36), so the comparison tolerates exactly
/// that much.
bool isWithin(double limit, double from, double to)
{
    const double magnitude = std::max(std::abs(from), std::abs(to));
    const double rounding =
        std::nextafter(magnitude, std::numeric_limits<double>::infinity()) - magnitude;
    return to - from <= limit + rounding;
}

} // namespace

bool CommandDoubleTapRecognizer::handleFlagsChanged(const ModifierChange& change)
{
    if (change.commandIsDown && !commandIsDown) {
        commandIsDown = true;
        currentPressStartedAt = change.timestamp;
        currentPressIsEligible = !change.hasOtherModifiers;
        return false;
    }
    if (change.commandIsDown) {
        if (change.hasOtherModifiers) {
            currentPressIsEligible = false;
            lastTapCompletedAt.reset();
        }
        return false;
    }
    if (!commandIsDown) {
        if (change.hasOtherModifiers)
            lastTapCompletedAt.reset();
        return false;
    }

    const bool isTap = completesTap(change.timestamp);
    const bool isDoubleTap = isTap && lastTapCompletedAt &&
                             isWithin(maximumTapInterval, *lastTapCompletedAt, change.timestamp);
    *this = {};
    // The second tap of a pair is not the first of the next, so that a triple tap counts once.
    if (isTap && !isDoubleTap)
        lastTapCompletedAt = change.timestamp;
    return isDoubleTap;
}

void CommandDoubleTapRecognizer::handleKeyDown()
{
    lastTapCompletedAt.reset();
    if (commandIsDown)
        currentPressIsEligible = false;
}

bool CommandDoubleTapRecognizer::completesTap(double releasedAt) const
{
    return currentPressIsEligible && currentPressStartedAt &&
           isWithin(maximumPressDuration, *currentPressStartedAt, releasedAt);
}

} // namespace kelpa
