#include "windows/memory/WindowMemory.h"

#include "windows/WindowReconciliation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// How exactly it is known when a listed window was seen: a change by itself is not worth storing.
constexpr double dayInSeconds = 24.0 * 60 * 60;

/// The keys that other windows may have too; that of role and title follows the title's.
constexpr std::array sharedKeys{WindowKey::session, WindowKey::document, WindowKey::title};

std::optional<GoalID> goalOf(WindowID window, const Assignments& assignments)
{
    const auto found = assignments.constFind(assignmentKey(window));
    return found != assignments.constEnd() ? std::optional(*found) : std::nullopt;
}

/// The listed windows that have a key in common.
struct KeyHolders
{
    WindowID windowID = 0;
    /// Absent for none.
    std::optional<GoalID> goalID;
    bool areSeveral = false;
    bool haveSeveralGoals = false;
};

/// Of two that were seen at one time, the one that appeared later.
bool wasSeenLater(const RememberedWindow& left, const RememberedWindow& right)
{
    return std::pair(right.seenAt, right.windowID) < std::pair(left.seenAt, left.windowID);
}

bool hasSameTraits(const WindowItem& left, const WindowItem& right)
{
    return left.title == right.title && left.accessibilityDocument == right.accessibilityDocument &&
           left.bundleIdentifier == right.bundleIdentifier && left.ownerName == right.ownerName &&
           left.role == right.role && left.instance == right.instance &&
           left.sessionID == right.sessionID && left.windowClass == right.windowClass;
}

} // namespace

WindowMemory::WindowMemory(const RememberedWindows& stored) : m_newestWindow(stored.newestWindow)
{
    m_entries.reserve(stored.windows.size());
    for (const RememberedWindow& window : stored.windows) {
        if (privacyOf(window.traits) != Privacy::none) {
            m_entries.remove(window.windowID);
            continue;
        }
        Entry entry;
        entry.window = window;
        // A file may have been written by anybody.
        entry.window.traits = boundedTraits(window.traits);
        entry.keys = kelpa::keysOf(entry.window.traits);
        entry.newestWindow = stored.newestWindow;
        entry.wasAssigned = true;
        m_entries.insert(window.windowID, entry);
    }
}

bool WindowMemory::note(const QList<WindowItem>& windows, const QSet<WindowID>& newWindows,
                        const Assignments& assignments, Date now)
{
    Changes changes;
    QSet<WindowID> listed;
    listed.reserve(windows.size());
    for (const WindowItem& window : windows) {
        listed.insert(window.id);
        m_newestWindow = std::max(m_newestWindow, window.id);
        noteListed(window, newWindows.contains(window.id), now, changes);
    }
    noteGone(listed, now, changes);
    for (const auto& [windowID, goalID] : changes.renamed) {
        if (const std::optional<WindowID> former = counterpart(windowID, goalID, assignments))
            m_entries.remove(*former);
    }
    if (changes.mayBeShared)
        noteShared(assignments, changes);
    return changes.isWorthStoring;
}

void WindowMemory::noteListed(const WindowItem& window, bool isNew, Date now, Changes& changes)
{
    const auto known = m_entries.find(window.id);
    const bool isRemembered = known != m_entries.end();
    const bool isKnown = isRemembered && known->isListed;
    if (isKnown && hasSameTraits(known->item, window)) {
        changes.mayBeShared |= known->isNew != isNew || known->item.goalID != window.goalID;
        changes.isWorthStoring |= known->item.goalID != window.goalID;
        known->item.goalID = window.goalID;
        known->isNew = isNew;
        known->wasAssigned |= window.goalID.has_value();
        known->newestWindow = m_newestWindow;
        const double age =
            now.secondsSinceReferenceDate - known->window.seenAt.secondsSinceReferenceDate;
        if (std::abs(age) > dayInSeconds) {
            known->window.seenAt = now;
            changes.isWorthStoring |= window.goalID.has_value();
        }
        return;
    }
    const Privacy privacy = m_private.contains(window.id) ? Privacy::said : privacyOf(window);
    if (privacy == Privacy::said)
        m_private.insert(window.id);
    if (privacy != Privacy::none) {
        if (isRemembered) {
            changes.isWorthStoring |= known->wasAssigned;
            m_hasForgottenPrivate |= known->wasAssigned;
            m_entries.erase(known);
        }
        return;
    }
    Entry& entry = m_entries[window.id];
    changes.mayBeShared |= !isKnown || entry.isNew != isNew || entry.item.goalID != window.goalID;
    changes.isWorthStoring |= !isRemembered && window.goalID;
    changes.isWorthStoring |= isKnown && entry.item.goalID != window.goalID;
    noteTraits(entry, window, traitsOf(window), changes);
    if (!isRemembered)
        entry.window.seenAt = now;
    entry.window.windowID = window.id;
    entry.item = window;
    entry.isListed = true;
    entry.isNew = isNew;
    entry.wasAssigned |= window.goalID.has_value();
    entry.newestWindow = m_newestWindow;
}

void WindowMemory::noteTraits(Entry& entry, const WindowItem& window, WindowTraits traits,
                              Changes& changes)
{
    WindowKeys keys = kelpa::keysOf(traits);
    // A document is asked for in the background, and is unknown for a moment after each change.
    if (traits.document.isEmpty() && !entry.window.traits.document.isEmpty() &&
        keys.title == entry.keys.title) {
        traits.document = entry.window.traits.document;
        keys = kelpa::keysOf(traits);
    }
    if (keys != entry.keys) {
        if (window.goalID)
            changes.renamed.emplace_back(window.id, *window.goalID);
        else if (entry.isNew)
            changes.unplaced.push_back(entry);
        changes.isWorthStoring |= window.goalID.has_value();
        changes.mayBeShared = true;
        if (keys[WindowKey::session] != entry.keys[WindowKey::session])
            entry.window.shared.session = false;
        if (keys[WindowKey::document] != entry.keys[WindowKey::document])
            entry.window.shared.document = false;
        if (keys[WindowKey::title] != entry.keys[WindowKey::title])
            entry.window.shared.title = false;
    }
    entry.keys = std::move(keys);
    entry.window.traits = std::move(traits);
}

void WindowMemory::noteGone(const QSet<WindowID>& listed, Date now, Changes& changes)
{
    m_entries.removeIf([&](const auto& each) {
        Entry& entry = each.value();
        if (!entry.isListed || listed.contains(each.key()))
            return false;
        changes.mayBeShared = true;
        if (entry.isNew)
            changes.unplaced.push_back(entry);
        entry.isListed = false;
        entry.isNew = false;
        entry.window.seenAt = now;
        changes.isWorthStoring |= entry.item.goalID.has_value();
        return !entry.wasAssigned;
    });
}

bool WindowMemory::settle(const Assignments& assignments)
{
    Changes changes;
    for (Entry& entry : m_entries)
        entry.isNew = false;
    noteShared(assignments, changes);
    return changes.isWorthStoring;
}

void WindowMemory::noteShared(const Assignments& assignments, Changes& changes)
{
    QHash<QString, KeyHolders> holders;
    const auto hold = [&holders](const Entry& entry) {
        for (const WindowKey key : sharedKeys) {
            if (entry.keys[key].isEmpty())
                continue;
            const auto holder = holders.find(entry.keys[key]);
            if (holder == holders.end()) {
                holders.insert(entry.keys[key],
                               {entry.window.windowID, entry.item.goalID, false, false});
                continue;
            }
            holder->areSeveral = true;
            holder->haveSeveralGoals |= holder->goalID != entry.item.goalID;
        }
    };
    for (const Entry& entry : std::as_const(m_entries)) {
        if (entry.isListed && !entry.isNew)
            hold(entry);
    }
    std::ranges::for_each(changes.unplaced, hold);

    for (Entry& entry : m_entries) {
        SharedTraits shared = entry.window.shared;
        for (const WindowKey key : sharedKeys) {
            const auto holder = holders.constFind(entry.keys[key]);
            if (holder == holders.constEnd() || entry.keys[key].isEmpty())
                continue;
            // Within one session, a role belongs to one window, whatever the goals.
            const bool isOther =
                key == WindowKey::session
                    ? holder->areSeveral || holder->windowID != entry.window.windowID
                    : holder->haveSeveralGoals || holder->goalID != goalOf(entry, assignments);
            if (isOther)
                share(shared, key);
        }
        if (shared != entry.window.shared) {
            entry.window.shared = shared;
            changes.isWorthStoring |= goalOf(entry, assignments).has_value();
        }
    }
}

std::optional<GoalID> WindowMemory::goalOf(const Entry& entry, const Assignments& assignments)
{
    return entry.isListed ? entry.item.goalID : kelpa::goalOf(entry.window.windowID, assignments);
}

std::optional<WindowID> WindowMemory::counterpart(WindowID windowID, GoalID goalID,
                                                  const Assignments& assignments) const
{
    const auto window = m_entries.constFind(windowID);
    if (window == m_entries.constEnd())
        return std::nullopt;
    for (const WindowKey key : sharedKeys) {
        const QString& text = window->keys[key];
        if (text.isEmpty())
            continue;
        const RememberedWindow* latest = nullptr;
        for (const Entry& entry : m_entries) {
            const bool isAlike = !entry.isListed && entry.window.windowID != windowID &&
                                 entry.keys[key] == text && goalOf(entry, assignments) == goalID;
            if (isAlike && (latest == nullptr || wasSeenLater(entry.window, *latest)))
                latest = &entry.window;
        }
        if (latest != nullptr)
            return latest->windowID;
    }
    return std::nullopt;
}

QList<AbsentWindow> WindowMemory::absent(const Assignments& assignments,
                                         const QSet<GoalID>& goalIDs) const
{
    std::vector<std::pair<const Entry*, GoalID>> found;
    for (const Entry& entry : m_entries) {
        const std::optional<GoalID> goalID =
            entry.isListed ? std::nullopt : goalOf(entry, assignments);
        if (goalID && goalIDs.contains(*goalID))
            found.emplace_back(&entry, *goalID);
    }
    std::ranges::sort(found, [](const auto& left, const auto& right) {
        return wasSeenLater(left.first->window, right.first->window);
    });
    QList<AbsentWindow> windows;
    windows.reserve(static_cast<qsizetype>(found.size()));
    for (const auto& [entry, goalID] : found)
        windows.append({entry->window.windowID, goalID, entry->keys, entry->window.shared,
                        entry->newestWindow});
    return windows;
}

bool WindowMemory::hasAbsent() const
{
    return std::ranges::any_of(m_entries, [](const Entry& entry) { return !entry.isListed; });
}

std::optional<WindowKeys> WindowMemory::keysOf(WindowID listed) const
{
    const auto found = m_entries.constFind(listed);
    return found != m_entries.constEnd() && found->isListed ? std::optional(found->keys)
                                                            : std::nullopt;
}

const RememberedWindow* WindowMemory::find(WindowID windowID) const
{
    const auto found = m_entries.constFind(windowID);
    return found != m_entries.constEnd() ? &found->window : nullptr;
}

bool WindowMemory::hasBeenListed(WindowID windowID) const
{
    const auto found = m_entries.constFind(windowID);
    return found != m_entries.constEnd() && found->item.id == windowID;
}

void WindowMemory::inherit(WindowID newWindow, WindowID absent)
{
    const auto heir = m_entries.find(newWindow);
    const auto former = m_entries.constFind(absent);
    if (heir == m_entries.end() || former == m_entries.constEnd())
        return;
    heir->window.shared.session |= former->window.shared.session;
    heir->window.shared.document |= former->window.shared.document;
    heir->window.shared.title |= former->window.shared.title;
}

void WindowMemory::forgetAll()
{
    m_entries.clear();
    m_newestWindow = 0;
    m_hasForgottenPrivate = false;
}

RememberedWindows WindowMemory::stored(const Assignments& assignments,
                                       const QSet<GoalID>& goalIDs) const
{
    RememberedWindows stored{m_newestWindow, {}};
    for (const Entry& entry : m_entries) {
        const std::optional<GoalID> goalID = kelpa::goalOf(entry.window.windowID, assignments);
        if (goalID && goalIDs.contains(*goalID))
            stored.windows.append(entry.window);
    }
    if (stored.windows.size() > maxWindows) {
        std::ranges::sort(stored.windows, wasSeenLater);
        stored.windows.resize(maxWindows);
    }
    std::ranges::sort(stored.windows, {}, &RememberedWindow::windowID);
    return stored;
}

void WindowMemory::prune(const Assignments& assignments, Date now)
{
    /// Those without a goal first, which only undo could bring back; then the oldest.
    using Rank = std::tuple<bool, Date, WindowID>;
    std::vector<Rank> absent;
    m_entries.removeIf([&](const auto& each) {
        Entry& entry = each.value();
        if (entry.isListed)
            return false;
        if (entry.window.seenAt < earliestDate && earliestDate < now)
            entry.window.seenAt = now;
        const double age =
            now.secondsSinceReferenceDate - entry.window.seenAt.secondsSinceReferenceDate;
        if (age > maxAgeInSeconds)
            return true;
        absent.emplace_back(goalOf(entry, assignments).has_value(), entry.window.seenAt,
                            each.key());
        return false;
    });
    const auto tooMany = static_cast<qsizetype>(absent.size()) - maxWindows;
    if (tooMany <= 0)
        return;
    std::ranges::sort(absent);
    for (qsizetype i = 0; i < tooMany; ++i)
        m_entries.remove(std::get<WindowID>(absent[static_cast<std::size_t>(i)]));
}

} // namespace kelpa
