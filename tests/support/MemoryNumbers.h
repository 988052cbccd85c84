// What a window server needs besides its compositor, without a disk and without installed
// applications: the marks of its window numbers, the table of their names, and a resolver.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/numbers/NameTableFile.h"
#include "platform/numbers/NumberSupply.h"

#include <optional>

namespace kelpa::test {

/// Knows no application.
class NoResolver final : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues&) override { return {}; }
};

/// Remembers the last mark, unless it fails.
class MemoryReservation final : public NumberReservation
{
public:
    bool reserve(WindowID upTo) override
    {
        if (isFailing)
            return false;
        mark = upTo;
        return true;
    }

    WindowID mark = 0;
    bool isFailing = false;
};

/// Keeps the last table, unless writing fails.
class MemoryNameTable final : public NameTableStorage
{
public:
    std::optional<NameTable> read() override { return table; }
    bool write(const NameTable& written) override
    {
        ++writes;
        if (isFailing)
            return false;
        table = written;
        return true;
    }

    std::optional<NameTable> table;
    int writes = 0;
    bool isFailing = false;
};

} // namespace kelpa::test
