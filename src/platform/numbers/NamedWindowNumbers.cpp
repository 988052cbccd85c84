#include "platform/numbers/NamedWindowNumbers.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kelpa {

NamedWindowNumbers::NamedWindowNumbers(NumberReservation& reservation, NameTableStorage& storage,
                                       WindowID highWaterMark, std::set<WindowID> taken)
    : m_storage(storage), m_supply(reservation, highWaterMark, std::move(taken))
{}

void NamedWindowNumbers::begin(const QByteArray& run)
{
    if (m_table.run == run)
        return;
    std::optional<NameTable> stored = m_storage.read();
    if (stored && stored->run == run)
        m_table = *std::move(stored);
    else
        m_table = {.run = run, .numbers = {}};
    m_isUnwritten = false;
    // The file with the mark may be lost while this one is not.
    for (const auto& [name, number] : m_table.numbers) {
        m_supply.raise(number);
        m_supply.reserve(number);
    }
}

void NamedWindowNumbers::rename(const QByteArray& from, const QByteArray& to)
{
    const auto known = m_table.numbers.find(from);
    if (known == m_table.numbers.end() || to.isEmpty() || to.size() > NameTable::longestName)
        return;
    const WindowID number = known->second;
    m_table.numbers.erase(known);
    m_table.numbers.emplace(to, number);
    m_isUnwritten = true;
}

std::vector<std::optional<WindowID>>
NamedWindowNumbers::number(const std::vector<QByteArray>& names)
{
    m_supply.retryReserving();
    std::vector<std::optional<WindowID>> numbers;
    numbers.reserve(names.size());
    for (const QByteArray& name : names)
        numbers.push_back(numberOf(name));
    forgetClosed(names);
    if (m_isUnwritten)
        m_isUnwritten = !m_storage.write(m_table);
    return numbers;
}

std::optional<WindowID> NamedWindowNumbers::numberOf(const QByteArray& name)
{
    if (name.isEmpty() || name.size() > NameTable::longestName)
        return std::nullopt;
    const auto known = m_table.numbers.find(name);
    if (known != m_table.numbers.end())
        return known->second;
    const std::optional<WindowID> number = m_supply.next();
    if (number) {
        m_table.numbers.emplace(name, *number);
        m_isUnwritten = true;
    }
    return number;
}

void NamedWindowNumbers::forgetClosed(const std::vector<QByteArray>& names)
{
    // A compositor may leave a hidden window out for a while, so names stay until there are too
    // many.
    if (m_table.numbers.size() <= NameTable::mostWindows)
        return;
    const std::set<QByteArray> present(names.begin(), names.end());
    std::map<WindowID, QByteArray> closed;
    for (const auto& [name, number] : m_table.numbers) {
        if (!present.contains(name))
            closed.emplace(number, name);
    }
    // Half of the room, so that this is not done for every window.
    constexpr std::size_t wanted = NameTable::mostWindows / 2;
    for (const auto& [number, name] : closed) {
        if (m_table.numbers.size() <= wanted)
            break;
        m_table.numbers.erase(name);
    }
}

} // namespace kelpa
