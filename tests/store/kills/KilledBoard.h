// A board that does random changes on a real file until it is killed, and says through a pipe what
// it is about to store and what is on the disk.
#pragma once

#include "platform/SettingsStore.h"

#include <QMap>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace kelpa::test {

/// Of all values of a file.
using Digest = std::array<char, 32>;

Digest digestOf(const QMap<QString, SettingsValue>& values);

struct BoardMessage
{
    enum class Kind : char {
        /// The values are handed to the disk next.
        storing,
        /// The disk has them.
        stored,
    };

    Kind kind{};
    Digest digest{};
};

/// The next message; absent once the board is gone and everything has been read.
std::optional<BoardMessage> readMessage(int pipe);

enum class Saving : std::uint8_t {
    /// Each change waits for the disk.
    atOnce,
    /// As in the program: a thread writes, and a change waits a frame for it at most.
    behind,
};

/// For a process of its own; returns only when the pipe or the disk fails.
bool changeBoardForever(const QString& path, Saving saving, std::uint64_t seed, int pipe);

} // namespace kelpa::test
