// What the search of a desktop finds on the board: goals, todos and windows by what is typed.
#pragma once

#include "model/Goal.h"
#include "model/WindowItem.h"
#include "text/AppLanguage.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace kelpa::automation {

/// How many results there are of each kind: more than a desktop shows.
inline constexpr qsizetype mostFoundOfAKind = 8;
/// The most words of a query that count, and the longest word that can be found, in UTF-16 units.
inline constexpr qsizetype mostSearchedWords = 16;
inline constexpr qsizetype longestSearchedWord = 1'000;

/// Copies are cheap. Any thread.
struct SearchedBoard
{
    QList<Goal> goals;
    QList<TodoItem> unassignedTodos;
    /// Empty while Kelpa does not follow the windows.
    QList<WindowItem> windows;
    QLocale locale{};
};

using FoundID = std::variant<GoalID, TodoID, WindowID>;

/// "goal:" or "todo:" with an identifier, or "window:" with a number; absent for any other text.
QString textOf(const FoundID& id);
std::optional<FoundID> foundIDFrom(const QString& text);

/// What contains each word of the terms, in any order: first what has all of them at the beginning
/// of words, then the rest; each goals before todos before windows, in the order of the board. A
/// word is compared as by the board's own search, which takes the text as one. A todo that is
/// completed is not found, nor is anything without a word.
QList<FoundID> found(const SearchedBoard& board, const QStringList& terms);

struct FoundDescription
{
    FoundID id;
    /// In a single line, as on the board.
    QString title;
    /// The open todos of a goal; the goal of a todo or a window.
    QString detail;
    /// From the icon theme: the name, and one that is there where this is not.
    QString iconName;
    QString otherIconName;

    friend bool operator==(const FoundDescription&, const FoundDescription&) = default;
};

/// Absent where it is gone.
std::optional<FoundDescription> described(const FoundID& id, const SearchedBoard& board,
                                          AppLanguage language);

} // namespace kelpa::automation
