// Remembers whose windows got which numbers, across starts of this program. A number is kept with
// its window, where any client can write it: while both this program and the owner of a window are
// away, another window could take its number, and with it its goal. So what is known of each
// numbered window is saved, and a window that contradicts it is not believed.
#pragma once

#include "model/Identifiers.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>

namespace kelpa {

/// What lasts as long as a window does, as far as it is known.
struct WindowOwner
{
    /// The window system's id, of which a part names the client; 0 where nothing is known.
    std::uint32_t window = 0;
    /// Absent when it is not known.
    std::optional<ProcessID> process;
    /// When the process began, as `processStart` gives it.
    std::optional<std::uint64_t> processStart;
    /// The class that the application gives its windows; empty when it gives none. Some change it,
    /// so it counts only where the process is not known.
    QString application;

    friend bool operator==(const WindowOwner&, const WindowOwner&) = default;
};

/// Whether the two cannot be the same window.
bool contradict(const WindowOwner& one, const WindowOwner& other);

/// When the process began, in clock ticks since the machine started; absent for one that is gone.
/// Another process of the same number began at another time. Any thread; reads /proc.
std::optional<std::uint64_t> processStart(ProcessID process);

/// The owners at one moment.
struct RecordedOwners
{
    /// Windows with numbers up to this one, but without an owner below, were closed.
    WindowID upTo = 0;
    std::map<WindowID, WindowOwner> owners;

    friend bool operator==(const RecordedOwners&, const RecordedOwners&) = default;
};

/// Keeps the owners on disk.
class OwnerStorage
{
public:
    virtual ~OwnerStorage() = default;

    /// Called on the thread of the discovery pass. What cannot be saved is saved with a later
    /// change.
    virtual void save(const RecordedOwners& owners) = 0;
};

/// Used on one thread at a time.
class WindowOwners
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// The least time between two saves.
    static constexpr std::chrono::seconds saveInterval{10};
    /// Owners of so many windows are kept, those of the greatest numbers.
    static constexpr std::size_t maxOwners = 4096;

    /// `recorded` is what the last run saved. `assigned` are the numbers for whose windows
    /// something is stored: only with these is there anything to gain. `storage` outlives this
    /// object; null saves nothing.
    WindowOwners(OwnerStorage* storage, RecordedOwners recorded, std::set<WindowID> assigned);

    /// Whether the window may be the one that got the number. Where nothing was recorded, as by an
    /// earlier release, it may.
    bool mayBear(WindowID number, const WindowOwner& window) const;
    /// Whether the owner of the window was noted under the number during this run.
    bool isNoted(WindowID number, std::uint32_t window) const;
    void note(WindowID number, const WindowOwner& owner);
    /// The window is gone; its id may be another window's by now.
    void windowDestroyed(std::uint32_t window);
    /// Saves what has changed, unless that was done only just now.
    void save(Time now);

private:
    void drop(WindowID number);
    void dropEnded();

    OwnerStorage* const m_storage;
    const std::set<WindowID> m_assigned;
    RecordedOwners m_recorded;
    /// Of windows that were seen during this run, by the window system's id.
    std::map<std::uint32_t, WindowID> m_noted;
    bool m_isChanged = false;
    std::optional<Time> m_saved;
};

} // namespace kelpa
