#include "windows/memory/RememberingSessions.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelpa::test {

namespace {

using namespace std::chrono_literals;

/// How the windows of an application make themselves known.
struct Habits
{
    const char* name;
    bool hasDocuments;
    /// Whether the session manager knows it, and whether each of its windows has a role of its own.
    bool isInSession;
    bool hasNumberedRoles;
    bool hasCounters;
};

constexpr std::array applications{
    Habits{"Browser", false, true, false, true},  Habits{"Editor", true, false, false, false},
    Habits{"Terminal", false, true, true, false}, Habits{"Viewer", false, false, false, false},
    Habits{"Writer", true, true, false, false},   Habits{"Chat", false, false, false, true}};

constexpr int contentsOfEach = 12;
constexpr std::size_t goalCount = 4;
constexpr std::size_t mostWindows = 24;
constexpr int operationsOfSession = 12;
/// Then another person begins.
constexpr int sessionsOfBoard = 8;

const Habits& habitsOf(int application)
{
    return applications.at(static_cast<std::size_t>(application));
}

} // namespace

int RememberingSessions::below(int limit)
{
    return static_cast<int>(m_random() % static_cast<std::uint64_t>(limit));
}

bool RememberingSessions::chance(int percent)
{
    return below(100) < percent;
}

QString RememberingSessions::titleOf(const Window& window)
{
    const Habits& habits = habitsOf(window.application);
    const QString name = QString::fromLatin1(habits.name);
    if (!window.identity)
        return chance(50) ? name : QStringLiteral("New Tab - ") + name;
    // Two documents may have one name.
    const int content = window.identity->first;
    const int named = habits.hasDocuments ? content / 2 * 2 : content;
    QString title = QStringLiteral("Thing %1 - %2").arg(named).arg(name);
    if (habits.hasCounters && chance(50))
        title.prepend(QStringLiteral("(%1) ").arg(below(100)));
    else if (chance(30))
        title.prepend(u'*');
    return title;
}

void RememberingSessions::retitle(Window& window)
{
    window.item.title = titleOf(window);
    window.item.accessibilityDocument.reset();
}

/// The one that was shown last of those that no window shows: that is what a person opens again.
RememberingSessions::Identity RememberingSessions::identityOf(int content) const
{
    const auto isShown = [this](const Identity& identity) {
        const auto shows = [&identity](const Window& each) { return each.identity == identity; };
        return std::ranges::any_of(m_windows, shows) || std::ranges::any_of(m_open, shows);
    };
    std::optional<Identity> latest;
    std::int64_t latestTime = 0;
    int number = 0;
    for (Identity each{content, 0}; m_shown.contains(each); each.second = ++number) {
        if (const std::int64_t time = m_shown.at(each); !isShown(each) && time > latestTime) {
            latest = each;
            latestTime = time;
        }
    }
    return latest.value_or(Identity{content, number});
}

void RememberingSessions::show(Window& window, std::optional<int> content)
{
    window.identity.reset();
    // From now on, it is what it shows.
    window.isRestored = false;
    if (content) {
        window.identity = identityOf(*content);
        m_shown[*window.identity] = ++m_lastShown;
    }
    retitle(window);
}

void RememberingSessions::beginBoard()
{
    m_goals.clear();
    while (m_goals.size() < goalCount)
        m_goals.push_back(GoalID::create());
    m_windows.clear();
    m_open.clear();
    m_truth.clear();
    m_shown.clear();
    m_assignments.clear();
    m_memory = {};
    m_new = {};
}

void RememberingSessions::runSession()
{
    if (m_counts.sessions % sessionsOfBoard == 0)
        beginBoard();
    m_now.secondsSinceReferenceDate += 10 * 60 * 60;
    restore();
    for (int i = 0; i < operationsOfSession; ++i)
        operate();
    logOut();
    ++m_counts.sessions;
}

void RememberingSessions::restore()
{
    // Some applications get their sessions back, and the others new ones.
    for (int i = 0; i < static_cast<int>(applications.size()); ++i) {
        const bool isBack = chance(50);
        if (!isBack)
            m_sessionIDs[i] = QStringLiteral("session%1").arg(++m_lastSessionID);
        for (Window& window : m_open) {
            if (window.application != i || isBack || !habitsOf(i).isInSession)
                continue;
            window.item.sessionID = m_sessionIDs[i];
            if (habitsOf(i).hasNumberedRoles)
                window.item.role = QStringLiteral("window-%1").arg(++m_lastRole);
        }
    }
    std::ranges::shuffle(m_open, m_random);
    while (!m_open.empty()) {
        for (int i = 1 + below(3); i > 0 && !m_open.empty(); --i) {
            Window window = std::move(m_open.back());
            m_open.pop_back();
            if (chance(15))
                continue;
            window.item.id = ++m_lastNumber;
            window.item.goalID.reset();
            window.item.accessibilityDocument.reset();
            window.isRestored = true;
            window.isPlaced = window.wasOffered = false;
            window.item.title = chance(50) ? QString::fromLatin1(habitsOf(window.application).name)
                                           : titleOf(window);
            m_windows.push_back(std::move(window));
        }
        if (chance(20))
            open();
        pass();
        m_clock += 1s;
        for (Window& window : m_windows) {
            if (chance(60))
                window.item.title = titleOf(window);
        }
        pass();
        m_clock += 1s;
    }
    for (Window& window : m_windows)
        window.item.title = titleOf(window);
    pass();
    for (const Window& window : m_windows)
        count(window);
    m_clock += 10s;
}

void RememberingSessions::operate()
{
    switch (below(6)) {
    case 0:
    case 1:
        open();
        break;
    case 2:
        rename();
        break;
    case 3:
    case 4:
        assign();
        break;
    default:
        close();
        break;
    }
    pass();
    m_clock += chance(20) ? 130s : 10s;
    if (chance(5)) {
        // Kelpa alone starts anew.
        m_memory.settle(m_assignments);
        const RememberedWindows stored =
            m_memory.stored(m_assignments, {m_goals.begin(), m_goals.end()});
        m_memory = WindowMemory(stored);
        m_new = NewWindows(stored.newestWindow);
    }
    pass();
}

void RememberingSessions::open()
{
    if (m_windows.size() >= mostWindows)
        return;
    Window window;
    window.application = below(static_cast<int>(applications.size()));
    const Habits& habits = habitsOf(window.application);
    window.item.id = ++m_lastNumber;
    window.item.ownerName = QString::fromLatin1(habits.name);
    if (habits.isInSession) {
        window.item.sessionID = m_sessionIDs[window.application];
        window.item.role = habits.hasNumberedRoles ? QStringLiteral("window-%1").arg(++m_lastRole)
                                                   : QStringLiteral("main");
    }
    const int content = window.application * contentsOfEach + below(contentsOfEach);
    // What is about to be restored is not opened a second time before.
    const auto isOfContent = [content](const Window& each) {
        return each.identity && each.identity->first == content;
    };
    const auto isUntitled = [&](const Window& each) {
        return isOfContent(each) && !each.item.title.contains(QStringLiteral("Thing"));
    };
    const bool isAwaited =
        std::ranges::any_of(m_open, isOfContent) || std::ranges::any_of(m_windows, isUntitled);
    show(window, chance(20) || isAwaited ? std::nullopt : std::optional(content));
    m_windows.push_back(std::move(window));
}

void RememberingSessions::rename()
{
    if (m_windows.empty())
        return;
    Window& window =
        m_windows.at(static_cast<std::size_t>(below(static_cast<int>(m_windows.size()))));
    show(window, chance(20)
                     ? std::nullopt
                     : std::optional(window.application * contentsOfEach + below(contentsOfEach)));
}

void RememberingSessions::assign()
{
    if (m_windows.empty())
        return;
    Window& window =
        m_windows.at(static_cast<std::size_t>(below(static_cast<int>(m_windows.size()))));
    window.isPlaced = true;
    m_new.settle(window.item.id);
    const QString key = QString::number(window.item.id);
    if (chance(25)) {
        m_assignments.remove(key);
        window.item.goalID.reset();
        return;
    }
    const GoalID goalID = m_goals.at(static_cast<std::size_t>(below(goalCount)));
    if (const auto former = m_memory.counterpart(window.item.id, goalID, m_assignments))
        m_assignments.remove(QString::number(*former));
    m_assignments.insert(key, goalID);
    window.item.goalID = goalID;
}

void RememberingSessions::close()
{
    if (m_windows.empty())
        return;
    const auto closed = m_windows.begin() + below(static_cast<int>(m_windows.size()));
    if (closed->identity)
        m_truth[*closed->identity] = closed->item.goalID;
    m_windows.erase(closed);
}

void RememberingSessions::logOut()
{
    m_open = m_windows;
    for (Window& window : m_open) {
        window.formerGoal = window.item.goalID;
        if (window.identity)
            m_truth[*window.identity] = window.item.goalID;
    }
    // Either the windows go first or Kelpa.
    const bool isKelpaLast = chance(50);
    while (isKelpaLast && !m_windows.empty()) {
        m_windows.resize(m_windows.size() - std::min<std::size_t>(m_windows.size(), 5));
        noteWindows();
    }
    m_windows.clear();
    m_memory.settle(m_assignments);
    m_memory.prune(m_assignments, m_now);
    const RememberedWindows stored =
        m_memory.stored(m_assignments, {m_goals.begin(), m_goals.end()});
    m_memory = WindowMemory(stored);
    m_new = NewWindows(stored.newestWindow);
}

void RememberingSessions::reportDocuments()
{
    for (Window& window : m_windows) {
        const Habits& habits = habitsOf(window.application);
        const bool isShown = window.item.title.contains(QStringLiteral("Thing"));
        if (habits.hasDocuments && window.identity && isShown)
            window.item.accessibilityDocument =
                QStringLiteral("/home/ada/%1").arg(window.identity->first);
    }
}

} // namespace kelpa::test
