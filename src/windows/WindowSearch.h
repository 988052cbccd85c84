// The board's search over windows, and the order in which a target shows them.
#pragma once

#include "model/WindowItem.h"

#include <QHash>
#include <QList>
#include <QLocale>
#include <QString>

#include <functional>
#include <optional>

namespace kelpa {

/// Texts that differ only in case, by the rules of `locale`, or are canonically equivalent become
/// the same text.
QString foldedForSearch(const QString& text, const QLocale& locale);

/// Searches texts for what a person typed, ignoring case by the rules of `locale`. Canonically
/// equivalent texts count as equal. Of a very long text, `longestSearchedText` is searched.
class TextSearch
{
public:
    /// White space at the ends of `query` is ignored.
    TextSearch(const QString& query, const QLocale& locale);

    /// Whether the trimmed query is empty, so that every text matches.
    bool isEmpty() const { return m_query.isEmpty(); }
    bool matches(const QString& text) const;

private:
    QLocale m_locale;
    QString m_query;
};

/// The windows whose display title or owner contains the trimmed `searchText`, in order; all of
/// them when it is empty.
QList<WindowItem> filteredWindows(const QList<WindowItem>& windows, const QString& searchText,
                                  const QLocale& locale);

/// Windows grouped by the goal they are assigned to.
struct WindowsByGoal
{
    QList<WindowItem> unassigned;
    QHash<GoalID, QList<WindowItem>> assigned;

    /// The windows of one goal, or the unassigned ones when none is given.
    QList<WindowItem> of(const std::optional<GoalID>& goalID) const
    {
        return goalID ? assigned.value(*goalID) : unassigned;
    }
};

/// In each group the windows for which `hasPreview` holds come first; otherwise in order.
WindowsByGoal windowsByGoal(const QList<WindowItem>& windows,
                            const std::function<bool(WindowID)>& hasPreview);

} // namespace kelpa
