// The file that keeps for which board the person has chosen keys of the desktop.
#pragma once

#include <QString>

namespace kelpa {

/// Whether keys were chosen for the board with that path. Any thread; may wait for the disk.
bool areKeysChosenFor(const QString& board, const QString& choiceFile);
/// Stores that keys were chosen for that board, or that none are. What cannot be stored is logged.
/// Any thread; may wait for the disk.
void storeKeysChoice(const QString& board, const QString& choiceFile, bool isChosen);

} // namespace kelpa
