#include "windows/WindowSearch.h"

#include "model/Text.h"

#include <algorithm>
#include <iterator>

namespace kelpa {

QString foldedForSearch(const QString& text, const QLocale& locale)
{
    // Upper case first, because some letters have no single lower-case counterpart ("ß" and "SS");
    // the locale decides where languages differ ("i" in Turkish); the final case folding unites the
    // rest ("σ" and "ς").
    return locale.toLower(locale.toUpper(text))
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

TextSearch::TextSearch(const QString& query, const QLocale& locale)
    : m_locale(locale), m_query(foldedForSearch(query.trimmed(), locale))
{}

bool TextSearch::matches(const QString& text) const
{
    return isEmpty() || foldedForSearch(text.left(longestSearchedText), m_locale).contains(m_query);
}

QList<WindowItem> filteredWindows(const QList<WindowItem>& windows, const QString& searchText,
                                  const QLocale& locale)
{
    const TextSearch search(searchText, locale);
    if (search.isEmpty())
        return windows;
    QList<WindowItem> found;
    std::ranges::copy_if(windows, std::back_inserter(found), [&search](const WindowItem& window) {
        return search.matches(window.displayTitle()) || search.matches(window.ownerName);
    });
    return found;
}

WindowsByGoal windowsByGoal(const QList<WindowItem>& windows,
                            const std::function<bool(WindowID)>& hasPreview)
{
    QList<WindowItem> ordered = windows;
    std::stable_partition(ordered.begin(), ordered.end(), [&hasPreview](const WindowItem& window) {
        return hasPreview(window.id);
    });
    WindowsByGoal groups;
    for (const WindowItem& window : ordered) {
        QList<WindowItem>& group =
            window.goalID ? groups.assigned[*window.goalID] : groups.unassigned;
        group.append(window);
    }
    return groups;
}

} // namespace kelpa
