// The board in the settings store: its keys, how it is read and what a save writes.
#pragma once

#include "model/BoardJson.h"
#include "model/RememberedWindow.h"
#include "platform/Backups.h"
#include "platform/SettingsStore.h"
#include "store/board/BoardContents.h"
#include "text/AppLanguage.h"

#include <QList>
#include <QMap>

#include <optional>
#include <set>
#include <vector>

namespace kelpa {

inline const QString goalsKey = QStringLiteral("kelpa.goals");
inline const QString unassignedTodosKey = QStringLiteral("kelpa.unassignedTodos");
inline const QString assignmentsKey = QStringLiteral("kelpa.windowAssignments");
inline const QString goalPinsKey = QStringLiteral("kelpa.goalPins");
inline const QString desktopLinksKey = QStringLiteral("kelpa.desktopLinks");
inline const QString languageKey = QStringLiteral("kelpa.language");
inline const QString windowMemoryKey = keyWithoutBackup;
inline const QString rememberingWindowsKey = QStringLiteral("kelpa.rememberingWindows");
inline const QString closingQuitsKey = QStringLiteral("kelpa.closingQuits");
inline const QString closingExplainedKey = QStringLiteral("kelpa.closingExplained");
inline const QString autoSortingGoalsKey = QStringLiteral("kelpa.autoSortingGoals");
inline const QString unsortedUnfoldedKey = QStringLiteral("kelpa.unsortedUnfolded");
/// Keys of an earlier release: read where the present ones are absent, never written.
inline const QString legacyGoalsKey = QStringLiteral("dorvane.goals");
inline const QString legacyAssignmentsKey = QStringLiteral("dorvane.windowAssignments");

struct StoredBoard
{
    /// Absent when nothing is stored or it names no language.
    std::optional<AppLanguage> language;
    /// Absent when nothing is stored or it is not a Boolean.
    std::optional<bool> isAutoSortingGoals;
    /// The same for the windows of "Unsorted".
    std::optional<bool> isUnsortedUnfolded;
    BoardContents contents;
    /// Pins are stored, but did not decode.
    bool arePinsUnreadable = false;
    /// What the pins meant; empty where nothing is stored or it does not decode.
    DesktopLinks desktopLinks;
    /// The document that the assignments were read from, byte for byte; absent when there is none.
    std::optional<QByteArray> assignmentsDocument;
    /// Absent when nothing is stored or it is not a Boolean.
    std::optional<bool> isRememberingWindows;
    /// The document of the remembered windows, not decoded; absent when there is none.
    std::optional<QByteArray> windowMemoryDocument;
    /// Absent when nothing is stored or they are not Booleans.
    std::optional<bool> isClosingQuitting;
    std::optional<bool> isClosingExplained;
};

/// A board with its goals and todos as they are stored, encoded off the main thread.
struct EncodedBoard
{
    BoardContents contents;
    std::vector<SettingsEntry> entries;
};

/// Reads everything. Goals, todos, assignments or pins that do not decode count as empty, and are
/// first copied aside in `settings`, since the next save overwrites them; a language or a setting
/// that does not decode counts as absent.
StoredBoard loadBoard(SettingsStore& settings);

/// The board that the values of a file hold, as in a backup. Absent when a part of it does not
/// decode, or there is neither a goal nor a todo nor a place for them. Pins that do not decode
/// count as none.
std::optional<BoardContents> boardIn(const QMap<QString, SettingsValue>& values);

/// The window numbers that are assigned in `settings`, also under the keys of an earlier release.
std::set<WindowID> assignedWindows(const SettingsStore& settings);

/// The entries that a save writes. A part that cannot be encoded is left out.
std::vector<SettingsEntry> boardEntries(const QList<Goal>& goals,
                                        const QList<TodoItem>& unassignedTodos);
/// The entries of a whole board, its assignments and pins too. Absent when a part cannot be
/// encoded.
std::optional<std::vector<SettingsEntry>> wholeBoardEntries(const BoardContents& board);
SettingsEntry assignmentsEntry(const Assignments& assignments);
SettingsEntry goalPinsEntry(const GoalPins& pins);
SettingsEntry desktopLinksEntry(const DesktopLinks& links);
SettingsEntry windowMemoryEntry(const RememberedWindows& windows);

} // namespace kelpa
