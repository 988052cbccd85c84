// Which processes are worth asking for their documents, and when. A value; no clock of its own.
#pragma once

#include "platform/DocumentSource.h"

#include <QStringList>

#include <chrono>
#include <cstdint>
#include <map>
#include <vector>

namespace kelpa {

/// How a process took the question.
enum class DocumentAnswer : std::uint8_t {
    /// It shows at least one document.
    documents,
    /// It answered, and shows none.
    none,
    /// It cannot be asked for documents.
    unable,
    /// It is not on the bus (yet).
    absent,
    /// It did not answer in time.
    silent,
};

struct DocumentIntervals
{
    std::chrono::milliseconds betweenChanges = std::chrono::seconds(1);
    /// For a process whose windows and titles stay as they are, and for one that is not on the bus.
    std::chrono::milliseconds refresh = std::chrono::seconds(10);
    /// For a process that did not answer, cannot be asked, or shows no document.
    std::chrono::milliseconds rest = std::chrono::seconds(60);
};

class DocumentSchedule
{
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit DocumentSchedule(DocumentIntervals intervals = {}) : m_intervals(intervals) {}

    /// Replaces what is known of the windows; processes without a window are forgotten.
    void note(const std::vector<DocumentQuery>& windows);

    /// The processes to ask now, in ascending order.
    std::vector<ProcessID> due(Time now) const;

    /// To be said of each process that was asked, with what its windows were when it was.
    void asked(ProcessID process);
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
