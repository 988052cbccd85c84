// Runs work in a child process that a test cannot run itself: dying, dropping rights, filling a
// disk.
#pragma once

#include <functional>

#include <sys/types.h>

namespace kelpa::test {

/// Runs `work` in a child and waits for it; true when it returned true (and did not crash).
bool succeedsInChild(const std::function<bool()>& work);

/// Starts `work` in a child; it ends with `work`'s result, or when it is killed.
pid_t startChild(const std::function<bool()>& work);

/// Kills the child at once, as a power cut would, except for the page cache. False when it had
/// ended by itself before.
bool killChild(pid_t child);

/// Makes file permissions apply to this process, also when it runs as root.
bool giveUpRights();

/// Mounts a file system in memory for this process at `folder` with tmpfs `options` ("size=1m"),
/// which no other process sees.
bool mountSmallDisk(const char* folder, const char* options);

} // namespace kelpa::test
