// Numbers of windows that are never used twice, although the server's own ids are.
//
// A window bears its number as a tag, a property that any client may write. A tag is therefore
// believed only from a window that was not met before, and only when nothing speaks against it: it
// was given before this program began to watch, and no other window bears or bore it. Of a window
// that is known, the number is remembered and a changed tag is put right.
#pragma once

#include "model/Identifiers.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace kelpa {

/// Keeps on disk up to where numbers may have been given, so that a new login never starts again at
/// one of them: assignments stay on disk too.
class NumberReservation
{
public:
    virtual ~NumberReservation() = default;

    /// Makes every number up to and including `upTo` count as given. True once that has reached the
    /// disk. Numbers are given even when it has not, since a window without one is not on the
    /// board; a later start then only knows of those that the display or an assignment tells of.
    /// Called on the thread that looks at the desktop, about once for every 256 new windows, and
    /// once for each look after it has failed; may take as long as the disk does.
    virtual bool reserve(WindowID upTo) = 0;
};

/// The decisions, without the window system. Used on one thread at a time.
class WindowNumbers
{
public:
    struct Sighting
    {
        /// The server's id.
        std::uint32_t window = 0;
        /// The tag as read; absent when there is none or it has not a tag's shape.
        std::optional<std::uint32_t> tag;
    };

    struct Tag
    {
        std::uint32_t window = 0;
        WindowID number = 0;

        friend bool operator==(const Tag&, const Tag&) = default;
    };

    struct Numbering
    {
        /// One for each sighting, in its order; absent when the window has no number now.
        std::vector<std::optional<WindowID>> numbers;
        /// The server's counter to write, before the tags; absent when it is right.
        std::optional<WindowID> counter;
        std::vector<Tag> tags;
    };

    /// `floor`: what was last reserved on disk, 0 at first. `taken`: numbers that are not given to
    /// any window anew, wherever they lie. `reservation` outlives this object.
    WindowNumbers(NumberReservation& reservation, WindowID floor, std::set<WindowID> taken = {});

    /// From now on this program alone gives numbers on the display. `counter` is the one found
    /// there; one so far ahead of the reserved numbers that it must be forged is not believed.
    void beginWriting(std::optional<WindowID> counter);

    /// From now on another program gives the numbers; they are only read.
    void beginReading();

    /// For all windows of one look at the desktop. `counter` is the one found on the display.
    Numbering number(const std::vector<Sighting>& sightings, std::optional<WindowID> counter);

    /// Whether the window's end would be heard of, so that its number is remembered.
    bool isKnown(std::uint32_t window) const { return m_numbers.contains(window); }

    /// The server said that the window is gone; its id may name another one now.
    void windowDestroyed(std::uint32_t window);

    /// The ends of windows may have been missed: nothing is remembered of any.
    void forgetAll();

    /// What is known now, by the server's id.
    const std::map<std::uint32_t, WindowID>& known() const { return m_numbers; }

private:
    bool isPlausible(WindowID number) const;
    void reserve(WindowID number);
    void retryReserving();
    std::optional<WindowID> next();
    bool isBelievable(WindowID tag) const;
    void remember(std::uint32_t window, WindowID number);
    Numbering readNumbers(const std::vector<Sighting>& sightings, WindowID counter);

    NumberReservation& m_reservation;
    const std::set<WindowID> m_taken;
    WindowID m_reservedUpTo;
    /// The greatest number in use whose reservation was tried.
    WindowID m_wanted = 0;
    /// The disk has refused a number during this look.
    bool m_isRefused = false;
    WindowID m_last;
    /// Tags up to here were given before this program began to watch.
    WindowID m_believedUpTo = 0;
    bool m_isWriting = false;
    std::map<std::uint32_t, WindowID> m_numbers;
    std::set<WindowID> m_borne;
    std::set<WindowID> m_dead;
};

} // namespace kelpa
