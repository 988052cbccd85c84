// Gives windows numbers that are never used twice, although window systems reuse their own ids.
// Knows no window system; whatever it is used with must provide:
//
// - ids: 32 bits each, for all windows of a discovery pass; no two windows have the same id at the
//   same time. Before an id passes on to another window, `windowDestroyed` is called; where that
//   may have been missed, `forgetAll`.
// - tags: each window bears its number where it lasts as long as the window and survives a restart
//   of this program.
// - a counter: the last number given, where it lasts as long as the window system runs. It is
//   written before the tags that it covers.
// - one writer: among programs that number the same windows, one gives numbers and the others read.
//
// Tags may be forged, since any client can write one. A tag is therefore believed only of a window
// that is not known yet, and only when it was given before this program began to watch and no other
// window bears or bore it. The number of a known window is remembered, and a changed tag corrected.
#pragma once

#include "model/Identifiers.h"
#include "platform/numbers/NumberSupply.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace kelpa {

/// Used on one thread at a time.
class WindowNumbers
{
public:
    /// A window as a discovery pass finds it.
    struct Sighting
    {
        /// The window system's id.
        std::uint32_t window = 0;
        /// The tag as read; absent when there is none or it is malformed.
        std::optional<std::uint32_t> tag;
    };

    /// A tag to write.
    struct Tag
    {
        std::uint32_t window = 0;
        WindowID number = 0;

        friend bool operator==(const Tag&, const Tag&) = default;
    };

    struct Numbering
    {
        /// One for each sighting, in the same order; absent when the window has no number now.
        std::vector<std::optional<WindowID>> numbers;
        /// The counter to write, before the tags; absent when the present one is right.
        std::optional<WindowID> counter;
        std::vector<Tag> tags;
    };

    /// `highWaterMark` is the greatest number reserved on disk, 0 at first. No window gets a number
    /// in `taken`, even above the mark. `reservation` outlives this object.
    WindowNumbers(NumberReservation& reservation, WindowID highWaterMark,
                  std::set<WindowID> taken = {});

    /// This program becomes the writer. `counter` is the one found in the window system; one so far
    /// ahead of the reserved numbers that it must be forged is ignored.
    void beginWriting(std::optional<WindowID> counter);

    /// Another program is the writer; this one only reads its numbers.
    void beginReading();

    /// Numbers all windows of one discovery pass. `counter` is the one found in the window system.
    Numbering number(const std::vector<Sighting>& sightings, std::optional<WindowID> counter);

    /// Whether the window's number is remembered; its destruction must be reported.
    bool isKnown(std::uint32_t window) const { return m_numbers.contains(window); }

    /// The window is gone; its id may be another window's by now.
    void windowDestroyed(std::uint32_t window);

    /// Forgets the numbers of all windows, because the destruction of some may have been missed.
    void forgetAll();

private:
    bool isBelievable(WindowID tag) const;
    void remember(std::uint32_t window, WindowID number);
    Numbering readNumbers(const std::vector<Sighting>& sightings, WindowID counter);

    NumberSupply m_supply;
    /// Tags up to this number were given before this program began to watch.
    WindowID m_believedUpTo = 0;
    bool m_isWriting = false;
    /// By the window system's id.
    std::map<std::uint32_t, WindowID> m_numbers;
    std::set<WindowID> m_inUse;
    std::set<WindowID> m_retired;
};

} // namespace kelpa
