// The windows of one run of a compositor with their numbers, and its form on disk. A table that is
// not exactly what Kelpa writes is no table: a wrong number would show a window in a stranger's
// goal.
#pragma once

#include "model/Identifiers.h"

#include <QByteArray>

#include <map>
#include <optional>

namespace kelpa {

struct NameTable
{
    /// No name is longer, in bytes, and none is empty.
    static constexpr qsizetype longestName = 256;
    /// No table has more windows.
    static constexpr std::size_t mostWindows = 4096;

    /// The identity of the run, as `CompositorRun` gives it; never empty.
    QByteArray run;
    /// Each number once.
    std::map<QByteArray, WindowID> numbers;

    friend bool operator==(const NameTable&, const NameTable&) = default;
};

QByteArray encodedNameTable(const NameTable& table);

/// Absent when `text` is not what `encodedNameTable` gives, or a number is 0 or above
/// `greatestBelievedWindow`.
std::optional<NameTable> decodedNameTable(const QByteArray& text);

} // namespace kelpa
