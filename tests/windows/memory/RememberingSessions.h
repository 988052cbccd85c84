// Random logins of somebody who works with many windows, beside a memory of them and an oracle that
// knows which window is which.
#pragma once

#include "windows/memory/NewWindows.h"
#include "windows/memory/WindowMemory.h"

#include <QHash>
#include <QList>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace kelpa::test {

/// What became of the windows that belonged to a goal and were restored.
struct RecallCounts
{
    std::int64_t sessions = 0;
    std::int64_t found = 0;
    std::int64_t offered = 0;
    std::int64_t missed = 0;
    /// Windows in a goal that they were not in.
    std::int64_t wrong = 0;
    /// New windows, and restored ones of no goal, that were left alone or offered a goal.
    std::int64_t leftAlone = 0;
    std::int64_t offeredAnother = 0;
};

class RememberingSessions
{
public:
    explicit RememberingSessions(std::uint64_t seed) : m_random(seed) {}

    /// One login: windows are restored and opened, worked with, and closed or lost at the end.
    void runSession();

    const RecallCounts& counts() const { return m_counts; }
    /// What the first wrong window was; empty while there is none.
    const std::string& firstMistake() const { return m_firstMistake; }

private:
    /// Something that windows show: a page, a document. The second number tells several windows
    /// of the same thing apart.
    using Identity = std::pair<int, int>;

    /// A window as the oracle knows it.
    struct Window
    {
        WindowItem item;
        int application = 0;
        /// Absent for one that shows nothing in particular.
        std::optional<Identity> identity;
        /// Restored from the login before, where it belonged to this goal, or to none.
        bool isRestored = false;
        std::optional<GoalID> formerGoal;
        /// Whether it has been given a place, by the memory or by the person.
        bool isPlaced = false;
        bool wasOffered = false;
    };

    int below(int limit);
    bool chance(int percent);

    void beginBoard();
    void restore();
    void operate();
    void open();
    void show(Window& window, std::optional<int> content);
    void rename();
    void assign();
    void close();
    void logOut();

    QString titleOf(const Window& window);
    void retitle(Window& window);
    Identity identityOf(int content) const;
    /// They come late, after the titles.
    void reportDocuments();

    // In RememberingSessionsOracle.cpp.

    /// Lists the windows as a discovery pass does, and lets the memory act.
    void pass();
    void noteWindows();
    void match();
    void place(WindowID windowID, WindowID remembered);
    void noteTruth();
    void count(const Window& window);

    std::mt19937_64 m_random;
    RecallCounts m_counts;
    std::string m_firstMistake;

    // The desktop.
    std::vector<Window> m_windows;
    std::vector<Window> m_open;
    WindowID m_lastNumber = 0;
    int m_lastRole = 0;
    /// The session manager's identifier of each application's process.
    std::map<int, QString> m_sessionIDs;
    int m_lastSessionID = 0;
    /// The goal that each thing was in when it was shown last.
    std::map<Identity, std::optional<GoalID>> m_truth;
    /// When each thing was shown last.
    std::map<Identity, std::int64_t> m_shown;
    std::int64_t m_lastShown = 0;

    // Kelpa.
    std::vector<GoalID> m_goals;
    Assignments m_assignments;
    WindowMemory m_memory;
    NewWindows m_new;
    NewWindows::Time m_clock{};
    Date m_now{700'000'000};
};

} // namespace kelpa::test
