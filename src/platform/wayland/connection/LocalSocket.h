// A socket of this machine, by its path, and waiting for it no longer than allowed.
#pragma once

#include "platform/FileDescriptor.h"

#include <QByteArray>

#include <sys/types.h>

#include <chrono>
#include <optional>

namespace kelpa::wayland {

/// Connected and non-blocking; closed when nobody listens, and when the listener has not accepted
/// earlier connections for so long that its queue is full. Does not wait.
FileDescriptor connectedSocket(const QByteArray& path);

/// Whether anybody listens, also one whose queue is full. Does not wait.
bool hasListener(const QByteArray& path);

/// The process that listens; absent when nobody does, and when its queue is full. Does not wait.
std::optional<pid_t> listenerAt(const QByteArray& path);

/// Whether one process listens at both paths. False where nobody listens at one of them, or its
/// queue is full. Does not wait.
bool haveOneListener(const QByteArray& path, const QByteArray& otherPath);

/// As poll() wants it: rounded up, 0 once `end` has passed.
int millisecondsUntil(std::chrono::steady_clock::time_point end);

} // namespace kelpa::wayland
