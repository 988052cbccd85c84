// Decides when each process is asked for its documents: at once when its windows change, else
// rarely, and less often the less it answers. A value without a clock of its own.
#pragma once

#include "platform/DocumentSource.h"

#include <QStringList>

#include <chrono>
#include <cstdint>
#include <map>
#include <vector>

namespace kelpa {

/// The outcome of asking a process.
enum class DocumentAnswer : std::uint8_t {
    /// The process shows at least one document.
    documents,
    /// It replied and shows no document.
    none,
    /// It does not support the call.
    unable,
    /// It is not on the bus (yet).
    absent,
    /// It did not reply in time.
    silent,
};

struct DocumentIntervals
{
    std::chrono::milliseconds betweenChanges = std::chrono::seconds(1);
    /// For a process whose windows and titles do not change, and for one that is not on the bus.
    std::chrono::milliseconds refresh = std::chrono::seconds(10);
    /// For a process that did not reply, does not support the call, or shows no document.
    std::chrono::milliseconds backOff = std::chrono::seconds(60);
};

class DocumentSchedule
{
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit DocumentSchedule(DocumentIntervals intervals = {}) : m_intervals(intervals) {}

    /// Replaces the windows; processes without a window are forgotten.
    void note(const std::vector<DocumentQuery>& windows);

    /// The processes to ask now, in ascending order.
    std::vector<ProcessID> due(Time now) const;

    /// Called when a request to the process is sent; window changes after that make it due again.
    void asked(ProcessID process);
    /// Called with the outcome of that request.
    void answered(ProcessID process, DocumentAnswer answer, Time now);

private:
    struct Process
    {
        QStringList titles;
        bool hasChanged = true;
        Time notBefore = Time::min();
        Time refresh = Time::min();
    };

    DocumentIntervals m_intervals;
    std::map<ProcessID, Process> m_processes;
};

} // namespace kelpa
