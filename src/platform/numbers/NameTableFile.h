// Keeps the numbers of a compositor's windows on disk, beside the board that they are assigned in.
#pragma once

#include "platform/numbers/NameTable.h"

#include <QString>

#include <optional>
#include <utility>

namespace kelpa {

/// Where a table is kept. Called on the thread of the discovery pass; may take as long as the disk
/// does.
class NameTableStorage
{
public:
    virtual ~NameTableStorage() = default;

    /// Absent when there is none, or it cannot be read or believed.
    virtual std::optional<NameTable> read() = 0;
    /// Replaces the table. True once that has reached the disk.
    virtual bool write(const NameTable& table) = 0;
};

/// A file that each write replaces atomically.
class NameTableFile final : public NameTableStorage
{
public:
    explicit NameTableFile(QString path) : m_path(std::move(path)) {}

    std::optional<NameTable> read() override;
    bool write(const NameTable& table) override;

private:
    const QString m_path;
};

} // namespace kelpa
