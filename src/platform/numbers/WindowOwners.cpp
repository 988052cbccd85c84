#include "platform/numbers/WindowOwners.h"

#include <QFile>
#include <QList>

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// Whether the process that owned the window still runs, or may do so.
bool mayRun(const WindowOwner& owner)
{
    return !owner.process || !owner.processStart ||
           processStart(*owner.process) == owner.processStart;
}

} // namespace

bool contradict(const WindowOwner& one, const WindowOwner& other)
{
    if (one.window == 0 || other.window == 0)
        return false;
    if (one.window != other.window)
        return true;
    if (!one.process || !other.process) {
        return !one.application.isEmpty() && !other.application.isEmpty() &&
               one.application != other.application;
    }
    if (one.process != other.process)
        return true;
    return one.processStart && other.processStart && one.processStart != other.processStart;
}

std::optional<std::uint64_t> processStart(ProcessID process)
{
    // Number, name in parentheses, then fields from the third one on; the name may contain
    // anything.
    constexpr qsizetype startField = 22 - 3;
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (process <= 0 || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray line = file.readAll();
    const QList<QByteArray> rest = line.mid(line.lastIndexOf(')') + 1).simplified().split(' ');
    bool isNumber = false;
    const std::uint64_t start = rest.value(startField).toULongLong(&isNumber);
    return isNumber ? std::optional(start) : std::nullopt;
}

WindowOwners::WindowOwners(OwnerStorage* storage, RecordedOwners recorded,
                           std::set<WindowID> assigned)
    : m_storage(storage), m_assigned(std::move(assigned)), m_recorded(std::move(recorded))
{}

bool WindowOwners::mayBear(WindowID number, const WindowOwner& window) const
{
    if (number > m_recorded.upTo || !m_assigned.contains(number))
        return true;
    const auto known = m_recorded.owners.find(number);
    return known != m_recorded.owners.end() && !contradict(known->second, window);
}

bool WindowOwners::isNoted(WindowID number, std::uint32_t window) const
{
    const auto noted = m_noted.find(window);
    return noted != m_noted.end() && noted->second == number;
}

void WindowOwners::note(WindowID number, const WindowOwner& owner)
{
    m_noted[owner.window] = number;
    // Of windows that got numbers below this one, and that no run has recorded, nothing is known;
    // without that they would count as closed.
    for (auto it = m_assigned.upper_bound(m_recorded.upTo); it != m_assigned.end() && *it < number;
         ++it)
        m_recorded.owners.try_emplace(*it);
    m_recorded.upTo = std::max(m_recorded.upTo, number);
    WindowOwner& recorded = m_recorded.owners[number];
    m_isChanged = m_isChanged || recorded != owner;
    recorded = owner;
    if (m_recorded.owners.size() > maxOwners)
        drop(m_recorded.owners.begin()->first);
}

void WindowOwners::windowDestroyed(std::uint32_t window)
{
    const auto noted = m_noted.find(window);
    if (noted != m_noted.end())
        drop(noted->second);
}

void WindowOwners::drop(WindowID number)
{
    const auto known = m_recorded.owners.find(number);
    if (known == m_recorded.owners.end())
        return;
    m_noted.erase(known->second.window);
    m_recorded.owners.erase(known);
    m_isChanged = true;
}

/// Windows of another display may have been numbered with the same board: what is not seen here is
/// kept for as long as its process runs.
void WindowOwners::dropEnded()
{
    std::erase_if(m_recorded.owners, [this](const auto& each) {
        return !m_noted.contains(each.second.window) && !mayRun(each.second);
    });
}

void WindowOwners::save(Time now)
{
    if (!m_storage || !m_isChanged || (m_saved && now - *m_saved < saveInterval))
        return;
    dropEnded();
    m_storage->save(m_recorded);
    m_saved = now;
    m_isChanged = false;
}

} // namespace kelpa
