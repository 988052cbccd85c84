// The identity of one run of a compositor, by which the numbers of its windows are known again.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace kelpa {

/// What tells one run from another. Nothing of it depends on a clock that can be set, and a process
/// id only counts together with when its process was started.
struct CompositorRun
{
    /// Another one after each start of the system.
    QByteArray bootID;
    /// The device and the inode of the compositor's socket, which each run makes anew.
    std::uint64_t socketDevice = 0;
    std::uint64_t socketInode = 0;
    /// The process that listens on the socket, and when it was started, in clock ticks after the
    /// start of the system.
    std::int64_t process = 0;
    std::uint64_t processStart = 0;

    friend bool operator==(const CompositorRun&, const CompositorRun&) = default;
};

/// The same text for the same run, and another one for every other.
QByteArray identityOf(const CompositorRun& run);
/// For an absent run, which cannot be known again, another text each time.
QByteArray identityOrAnew(const std::optional<CompositorRun>& run);

/// The run behind a connected socket, whose path is `path`. Absent when not all of it can be known;
/// then nothing may be remembered of its windows. Reads /proc; does not wait for the compositor.
std::optional<CompositorRun> compositorRun(int socket, const QByteArray& path);

/// The run of the process, where its socket is not known: the process alone identifies it.
/// Otherwise as above.
std::optional<CompositorRun> compositorRun(std::int64_t process);

/// The start time in the contents of /proc/PID/stat; absent when they are malformed.
std::optional<std::uint64_t> processStartIn(const QByteArray& stat);

} // namespace kelpa
