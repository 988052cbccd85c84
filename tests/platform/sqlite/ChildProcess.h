// Work in a child process, for what a test cannot do to itself: die, lose its rights, fill a disk.
#pragma once

#include <functional>

#include <sys/types.h>

namespace kelpa::test {

/// Runs `work` in a child and waits for it; true when it returned true (and did not crash).
bool succeedsInChild(const std::function<bool()>& work);

/// Starts `work` in a child; it ends with `work`'s result, or when it is killed.
pid_t startChild(const std::function<bool()>& work);

/// Ends the child at once, as a power cut would end all of it but the disk.
void killChild(pid_t child);

/// Makes this process one that file permissions hold for, also when it runs as root.
bool giveUpRights();

/// Gives this process a file system in memory at `folder` with tmpfs `options` ("size=1m"), which
/// no other process sees.
bool mountSmallDisk(const char* folder, const char* options);

} // namespace kelpa::test
