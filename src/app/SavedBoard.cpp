#include "app/SavedBoard.h"

#include "platform/sqlite/backup/BackupFolder.h"
#include "store/board/BoardPersistence.h"

#include <memory>
#include <variant>

namespace kelpa {

std::optional<BoardContents> savedBoard(const QString& settingsPath)
{
    const SettingsResult<std::unique_ptr<SqliteFile>> file = snapshotOf(settingsPath);
    const auto* const board = std::get_if<std::unique_ptr<SqliteFile>>(&file);
    if (board == nullptr || !*board)
        return std::nullopt;
    const FileContents contents = (*board)->read();
    return contents.error ? std::nullopt : boardIn(contents.values);
}

} // namespace kelpa
