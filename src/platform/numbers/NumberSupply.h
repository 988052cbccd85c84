// Gives window numbers that no window had before, also not in an earlier session: it reserves them
// on disk in blocks before they are used.
#pragma once

#include "model/Identifiers.h"

#include <optional>
#include <set>

namespace kelpa {

/// Keeps the high-water mark of the numbers on disk, so that a new login never gives one of them
/// again: assignments stay on disk too.
class NumberReservation
{
public:
    virtual ~NumberReservation() = default;

    /// Raises the high-water mark to `upTo`: every number up to and including it counts as given.
    /// True once that has reached the disk. Numbers are given even when it has not, since a window
    /// without a number is not on the board; a later start then only knows those that a window or
    /// an assignment bears. Called on the thread of the discovery pass, about once for every 256
    /// new windows, and once a pass after a failure; may take as long as the disk does.
    virtual bool reserve(WindowID upTo) = 0;
};

/// Used on one thread at a time.
class NumberSupply
{
public:
    /// `highWaterMark` is the greatest number reserved on disk, 0 at first. Numbers in `taken` are
    /// not given, even above the mark. `reservation` outlives this object.
    NumberSupply(NumberReservation& reservation, WindowID highWaterMark, std::set<WindowID> taken);

    /// The next number, reserved unless the disk refuses; absent when there are no more.
    std::optional<WindowID> next();

    /// The last number given, or the greatest that is known to have been given.
    WindowID last() const { return m_last; }

    /// `number` was given by somebody else: all numbers from now on are greater.
    void raise(WindowID number);

    /// `number` is in use: reserves it and those after it, unless that has been done.
    void reserve(WindowID number);

    /// Reserves again what the disk has refused. Called once a pass.
    void retryReserving();

    /// Whether Kelpa may have given this number: one far ahead of the reserved ones is forged.
    bool isPlausible(WindowID number) const;

private:
    NumberReservation& m_reservation;
    const std::set<WindowID> m_taken;
    WindowID m_reservedUpTo;
    /// The greatest number in use whose reservation was tried.
    WindowID m_wanted = 0;
    /// A reservation has failed during this pass.
    bool m_hasFailed = false;
    WindowID m_last;
};

} // namespace kelpa
