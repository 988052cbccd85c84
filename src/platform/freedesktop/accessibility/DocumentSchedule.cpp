#include "platform/freedesktop/accessibility/DocumentSchedule.h"

#include <utility>

namespace kelpa {

void DocumentSchedule::note(const std::vector<DocumentQuery>& windows)
{
    std::map<ProcessID, QStringList> titles;
    for (const DocumentQuery& window : windows)
        titles[window.process].append(window.title);
    std::erase_if(m_processes, [&](const auto& known) { return !titles.contains(known.first); });
    for (auto& [process, now] : titles) {
        // Their order is the stacking order, which does not affect documents.
        now.sort();
        Process& known = m_processes[process];
        if (known.titles != now) {
            known.titles = std::move(now);
            known.hasChanged = true;
        }
    }
}

std::vector<ProcessID> DocumentSchedule::due(Time now) const
{
    std::vector<ProcessID> processes;
    for (const auto& [process, state] : m_processes) {
        if (now >= state.notBefore && (state.hasChanged || now >= state.refresh))
            processes.push_back(process);
    }
    return processes;
}

void DocumentSchedule::asked(ProcessID process)
{
    if (const auto found = m_processes.find(process); found != m_processes.end())
        found->second.hasChanged = false;
}

void DocumentSchedule::answered(ProcessID process, DocumentAnswer answer, Time now)
{
    const auto found = m_processes.find(process);
    if (found == m_processes.end())
        return;
    Process& state = found->second;
    switch (answer) {
    case DocumentAnswer::documents:
        state.notBefore = now + m_intervals.betweenChanges;
        state.refresh = now + m_intervals.refresh;
        break;
    case DocumentAnswer::none:
        state.notBefore = now + m_intervals.betweenChanges;
        state.refresh = now + m_intervals.backOff;
        break;
    case DocumentAnswer::absent:
        state.notBefore = now + m_intervals.refresh;
        state.refresh = state.notBefore;
        break;
    case DocumentAnswer::unable:
    case DocumentAnswer::silent:
        state.notBefore = now + m_intervals.backOff;
        state.refresh = state.notBefore;
        break;
    }
}

} // namespace kelpa
