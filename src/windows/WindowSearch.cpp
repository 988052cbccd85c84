#include "windows/WindowSearch.h"

#include <algorithm>

namespace kelpa {

namespace {

/// One text for all that differ in case only. Upper case first, because some letters have no
/// single lower-case partner ("ß" and "SS"); the locale decides where languages differ ("i" in
/// Turkish); folding at the end unites what is left ("σ" and "ς").
QString folded(const QString& text, const QLocale& locale)
{
    return locale.toLower(locale.toUpper(text))
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

} // namespace

bool containsIgnoringCase(const QString& text, const QString& query, const QLocale& locale)
{
    return folded(text, locale).contains(folded(query, locale));
}

QList<WindowItem> filteredWindows(const QList<WindowItem>& windows, const QString& searchText,
                                  const QLocale& locale)
{
    const QString query = folded(searchText.trimmed(), locale);
    if (query.isEmpty())
        return windows;
    QList<WindowItem> found;
    std::ranges::copy_if(windows, std::back_inserter(found), [&](const WindowItem& window) {
        return folded(window.displayTitle(), locale).contains(query) ||
               folded(window.ownerName, locale).contains(query);
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
