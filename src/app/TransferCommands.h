// Export and import of the board, as the command line offers them, without a display.
#pragma once

#include "app/BackupCommands.h"
#include "store/board/BoardImport.h"
#include "transfer/Transfer.h"

#include <QString>

#include <optional>

namespace kelpa {

struct ExportCommand
{
    TransferFormat format = TransferFormat::json;
    /// Only the goals of this title; empty: the whole board.
    QString goalTitle{};
    /// Empty: standard output.
    QString path{};

    friend bool operator==(const ExportCommand&, const ExportCommand&) = default;
};

struct ImportCommand
{
    QString path{};
    /// Absent: the one that the file looks like.
    std::optional<TransferFormat> format{};
    ImportMode mode = ImportMode::add;

    friend bool operator==(const ImportCommand&, const ImportCommand&) = default;
};

/// Writes the board of the settings file, whether or not Kelpa runs with it: as it was saved last.
CommandOutput exportBoard(const QString& settingsPath, const ExportCommand& command);

/// Adds a file to the board, or replaces the board by it, and says what came and what was skipped.
/// Keeps the board before as a backup first, and changes nothing where that is not possible, the
/// file is refused, or Kelpa runs with the board.
CommandOutput importBoard(const QString& settingsPath, const ImportCommand& command);

} // namespace kelpa
