#include "store/board/BoardPersistence.h"

#include "model/WindowMemoryJson.h"
#include "platform/LoggingCategories.h"
#include "windows/WindowReconciliation.h"

namespace kelpa {

namespace {

template <class Value>
std::optional<Value> stored(const SettingsStore& settings, const QString& key)
{
    const std::optional<SettingsValue> value = settings.value(key);
    if (!value)
        return std::nullopt;
    const Value* const typed = std::get_if<Value>(&*value);
    return typed != nullptr ? std::optional<Value>(*typed) : std::nullopt;
}

/// The document under `key`, or under `legacyKey` when there is none.
std::optional<QByteArray> storedDocument(SettingsStore& settings, const QString& key,
                                         const QString& legacyKey = {})
{
    if (std::optional<QByteArray> document = stored<QByteArray>(settings, key))
        return document;
    // The value is no document: the next save would destroy it.
    if (settings.value(key))
        settings.copyAside(key);
    return legacyKey.isEmpty() ? std::nullopt : stored<QByteArray>(settings, legacyKey);
}

} // namespace

StoredBoard loadBoard(SettingsStore& settings)
{
    StoredBoard board;
    if (const auto language = stored<QString>(settings, languageKey))
        board.language = appLanguageFromRawValue(*language);
    board.isAutoSortingGoals = stored<bool>(settings, autoSortingGoalsKey);
    board.isClosingQuitting = stored<bool>(settings, closingQuitsKey);
    board.isClosingExplained = stored<bool>(settings, closingExplainedKey);
    board.isUnsortedUnfolded = stored<bool>(settings, unsortedUnfoldedKey);

    if (const auto document = storedDocument(settings, goalsKey, legacyGoalsKey)) {
        if (auto goals = decodeGoals(*document))
            board.contents.goals = *std::move(goals);
        else
            settings.copyAside(goalsKey);
    }
    if (const auto document = storedDocument(settings, unassignedTodosKey)) {
        if (auto todos = decodeTodos(*document))
            board.contents.unassignedTodos = *std::move(todos);
        else
            settings.copyAside(unassignedTodosKey);
    }
    if (auto document = storedDocument(settings, assignmentsKey, legacyAssignmentsKey)) {
        if (auto assignments = decodeAssignments(*document)) {
            board.contents.assignments = *std::move(assignments);
            board.assignmentsDocument = std::move(document);
        } else {
            settings.copyAside(assignmentsKey);
        }
    }
    if (settings.value(goalPinsKey)) {
        const auto document = storedDocument(settings, goalPinsKey);
        if (auto pins = document ? decodeGoalPins(*document) : std::nullopt) {
            board.contents.pins = *std::move(pins);
        } else {
            settings.copyAside(goalPinsKey);
            board.arePinsUnreadable = true;
        }
    }
    // Nothing is lost with those: they end with the login anyway.
    if (const auto document = stored<QByteArray>(settings, desktopLinksKey))
        board.desktopLinks = decodeDesktopLinks(*document).value_or(DesktopLinks());
    board.isRememberingWindows = stored<bool>(settings, rememberingWindowsKey);
    if (board.isRememberingWindows.value_or(true))
        board.windowMemoryDocument = storedDocument(settings, windowMemoryKey);
    else if (settings.value(windowMemoryKey))
        // Something that is no document is emptied like one that does not decode, not copied aside.
        board.windowMemoryDocument =
            stored<QByteArray>(settings, windowMemoryKey).value_or(QByteArray());
    qCDebug(logStore, "loaded %lld goals and %lld unassigned todos",
            qlonglong(board.contents.goals.size()),
            qlonglong(board.contents.unassignedTodos.size()));
    return board;
}

std::optional<BoardContents> boardIn(const QMap<QString, SettingsValue>& values)
{
    BoardContents board;
    bool isFound = false;
    // False where the value does not decode.
    const auto read = [&](auto& part, auto decode, const QString& key, const QString& legacyKey) {
        const auto value =
            values.contains(key) ? values.constFind(key) : values.constFind(legacyKey);
        if (value == values.constEnd())
            return true;
        const auto* const document = std::get_if<QByteArray>(&*value);
        auto decoded = document != nullptr ? decode(*document) : std::nullopt;
        if (!decoded)
            return false;
        part = *std::move(decoded);
        isFound = true;
        return true;
    };
    const bool isRead =
        read(board.goals, decodeGoals, goalsKey, legacyGoalsKey) &&
        read(board.unassignedTodos, decodeTodos, unassignedTodosKey, QString()) &&
        read(board.assignments, decodeAssignments, assignmentsKey, legacyAssignmentsKey);
    // The goals are worth more than where they are pinned to.
    read(board.pins, decodeGoalPins, goalPinsKey, QString());
    return isRead && isFound ? std::optional(std::move(board)) : std::nullopt;
}

std::set<WindowID> assignedWindows(const SettingsStore& settings)
{
    std::set<WindowID> windows;
    for (const QString& key : {assignmentsKey, legacyAssignmentsKey}) {
        const auto document = stored<QByteArray>(settings, key);
        if (const auto assignments = document ? decodeAssignments(*document) : std::nullopt)
            windows.merge(assignedWindows(*assignments));
    }
    return windows;
}

std::vector<SettingsEntry> boardEntries(const QList<Goal>& goals,
                                        const QList<TodoItem>& unassignedTodos)
{
    std::vector<SettingsEntry> entries;
    if (auto document = encodeGoals(goals))
        entries.push_back({goalsKey, *std::move(document)});
    if (auto document = encodeTodos(unassignedTodos))
        entries.push_back({unassignedTodosKey, *std::move(document)});
    return entries;
}

std::optional<std::vector<SettingsEntry>> wholeBoardEntries(const BoardContents& board)
{
    constexpr std::size_t lists = 2;
    std::vector<SettingsEntry> entries = boardEntries(board.goals, board.unassignedTodos);
    if (entries.size() != lists)
        return std::nullopt;
    entries.push_back(assignmentsEntry(board.assignments));
    entries.push_back(goalPinsEntry(board.pins));
    return entries;
}

SettingsEntry assignmentsEntry(const Assignments& assignments)
{
    return {assignmentsKey, encodeAssignments(assignments)};
}

SettingsEntry goalPinsEntry(const GoalPins& pins)
{
    return {goalPinsKey, encodeGoalPins(pins)};
}

SettingsEntry desktopLinksEntry(const DesktopLinks& links)
{
    return {desktopLinksKey, encodeDesktopLinks(links)};
}

SettingsEntry windowMemoryEntry(const RememberedWindows& windows)
{
    return {windowMemoryKey, encodeRememberedWindows(windows)};
}

} // namespace kelpa
