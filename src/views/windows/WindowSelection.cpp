#include "views/windows/WindowSelection.h"

#include "windows/WindowSearch.h"

#include <QCollator>
#include <QUuid>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// Orders names as file managers do: by the rules of the language, numbers by their value. The
/// locale without a language compares only code units; English is used in its place.
QCollator nameCollator(const QLocale& locale)
{
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    return collator;
}

/// The keys by which a window is sorted, computed once for each, not for each comparison.
struct RankedWindow
{
    WindowItem window;
    bool isInTarget;
    bool isInGoal;
    QCollatorSortKey ownerName;
    QCollatorSortKey title;
};

bool comesBefore(const RankedWindow& a, const RankedWindow& b)
{
    if (a.isInTarget != b.isInTarget)
        return b.isInTarget;
    if (a.isInGoal != b.isInGoal)
        return b.isInGoal;
    const int byOwner = a.ownerName.compare(b.ownerName);
    return byOwner != 0 ? byOwner < 0 : a.title.compare(b.title) < 0;
}

} // namespace

QString LocationTitles::of(const WindowItem& window) const
{
    return window.goalID ? goals.value(*window.goalID, unsorted) : unsorted;
}

LocationTitles locationTitles(const QList<Goal>& goals, const QString& unsorted)
{
    LocationTitles titles{{}, unsorted};
    for (const Goal& goal : goals)
        titles.goals.insert(goal.id, goal.title);
    return titles;
}

QSet<WindowID> selectableWindowIDs(const QList<WindowItem>& windows, GoalID target)
{
    QSet<WindowID> ids;
    for (const WindowItem& window : windows)
        if (window.goalID != target)
            ids.insert(window.id);
    return ids;
}

QList<WindowItem> windowsToSelect(const QList<WindowItem>& windows, GoalID target,
                                  const LocationTitles& titles, const QString& searchText,
                                  const QLocale& locale)
{
    const TextSearch search(searchText, locale);
    // Each place is searched once, not for each of its windows: titles of goals can be long.
    QHash<QUuid, bool> foundPlaces;
    const auto matchesPlace = [&](const WindowItem& window) {
        const QUuid place = window.goalID ? window.goalID->value : QUuid();
        const auto known = foundPlaces.constFind(place);
        return known != foundPlaces.constEnd()
                   ? *known
                   : *foundPlaces.insert(place, search.matches(titles.of(window)));
    };
    const auto matches = [&](const WindowItem& window) {
        return search.matches(window.ownerName) || search.matches(window.title) ||
               matchesPlace(window);
    };
    const QCollator collator = nameCollator(locale);
    std::vector<RankedWindow> ranked;
    for (const WindowItem& window : windows) {
        if (!matches(window))
            continue;
        const bool isInGoal = window.goalID && titles.goals.contains(*window.goalID);
        ranked.push_back({window, window.goalID == target, isInGoal,
                          collator.sortKey(window.ownerName),
                          collator.sortKey(window.displayTitle())});
    }
    std::ranges::stable_sort(ranked, comesBefore);
    QList<WindowItem> result;
    result.reserve(static_cast<qsizetype>(ranked.size()));
    for (RankedWindow& each : ranked)
        result.append(std::move(each.window));
    return result;
}

QList<WindowItem> inShownOrder(const QList<WindowItem>& windows, const QList<WindowItem>& shown)
{
    QList<WindowItem> result;
    result.reserve(windows.size());
    for (const WindowItem& before : shown) {
        const WindowItem* const now = windowWith(before.id, windows);
        if (now == nullptr)
            continue;
        if (now->goalID != before.goalID)
            return windows;
        result.append(*now);
    }
    // A new window is inserted behind the one that is before it now.
    qsizetype place = 0;
    for (const WindowItem& window : windows) {
        const qsizetype shownAt = indexOf(result, window.id);
        if (shownAt < 0)
            result.insert(place, window);
        place = (shownAt < 0 ? place : shownAt) + 1;
    }
    return result;
}

WindowSelection toggledSelection(WindowSelection selection, WindowID windowID,
                                 const QSet<WindowID>& selectable)
{
    if (!selectable.contains(windowID))
        return selection;
    if (!selection.chosen.remove(windowID))
        selection.chosen.insert(windowID);
    // A person who chooses again has read the reason.
    selection.isRefused = false;
    return selection;
}

QSet<WindowID> confirmedWindows(const WindowSelection& selection, const QSet<WindowID>& selectable)
{
    return selection.chosen & selectable;
}

WindowSelection refusedSelection(const WindowSelection& selection, const QSet<WindowID>& selectable)
{
    return {confirmedWindows(selection, selectable), true};
}

} // namespace kelpa
