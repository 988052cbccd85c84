// The board as its file has it, whether or not Kelpa runs with it.
#pragma once

#include "store/board/BoardContents.h"

#include <QString>

#include <optional>

namespace kelpa {

/// As it was saved last; absent where none can be read. Creates and changes nothing.
std::optional<BoardContents> savedBoard(const QString& settingsPath);

} // namespace kelpa
