// What the memory does with the windows of random logins, and whether that is right.
#include "windows/memory/RememberingSessions.h"

#include <algorithm>

namespace kelpa::test {

void RememberingSessions::pass()
{
    noteWindows();
    if (chance(50))
        match();
    reportDocuments();
    noteWindows();
    match();
    noteTruth();
}

void RememberingSessions::noteWindows()
{
    QList<WindowItem> items;
    for (const Window& window : m_windows)
        items.append(window.item);
    m_new.note(items, m_clock);
    m_memory.note(items, m_new.ids(), m_assignments, m_now);
    m_new.noteTitles(m_memory, m_clock);
}

void RememberingSessions::match()
{
    const QList<AbsentWindow> absent =
        m_memory.absent(m_assignments, {m_goals.begin(), m_goals.end()});
    const WindowMatches matches = matchedWindows(absent, m_new.toMatch(m_memory));
    for (auto it = matches.begin(); it != matches.end(); ++it) {
        if (it->certainty == MatchCertainty::certain) {
            place(it.key(), it->windows.first());
            continue;
        }
        const auto window =
            std::ranges::find(m_windows, it.key(), [](const Window& each) { return each.item.id; });
        window->wasOffered = true;
    }
    noteWindows();
}

void RememberingSessions::place(WindowID windowID, WindowID remembered)
{
    const auto window =
        std::ranges::find(m_windows, windowID, [](const Window& each) { return each.item.id; });
    const GoalID goalID = m_assignments.take(QString::number(remembered));
    m_assignments.insert(QString::number(windowID), goalID);
    m_memory.inherit(windowID, remembered);
    m_new.settle(windowID);
    window->item.goalID = goalID;
    window->isPlaced = true;

    std::optional<GoalID> expected = window->formerGoal;
    if (!window->isRestored) {
        const auto truth = window->identity ? m_truth.find(*window->identity) : m_truth.end();
        expected = truth != m_truth.end() ? truth->second : std::nullopt;
    }
    if (expected == goalID)
        return;
    ++m_counts.wrong;
    if (m_firstMistake.empty())
        m_firstMistake = window->item.title.toStdString() + " as " +
                         m_memory.find(remembered)->traits.title.toStdString() + ", session " +
                         std::to_string(m_counts.sessions) +
                         (window->isRestored ? ", restored" : ", opened") +
                         (expected ? " from another goal" : " from no goal") + ", window " +
                         std::to_string(windowID) + " as " + std::to_string(remembered);
}

void RememberingSessions::noteTruth()
{
    for (const Window& window : m_windows) {
        if (!window.identity)
            continue;
        m_shown[*window.identity] = ++m_lastShown;
        if (window.item.goalID || !m_new.contains(window.item.id))
            m_truth[*window.identity] = window.item.goalID;
    }
}

void RememberingSessions::count(const Window& window)
{
    if (!window.isRestored || !window.formerGoal) {
        ++(window.wasOffered ? m_counts.offeredAnother : m_counts.leftAlone);
        return;
    }
    if (window.item.goalID)
        ++m_counts.found;
    else
        ++(window.wasOffered ? m_counts.offered : m_counts.missed);
}

} // namespace kelpa::test
