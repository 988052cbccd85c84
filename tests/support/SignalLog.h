// Counts the signals that a store emits.
#pragma once

#include "store/WindowStore.h"

#include <QMap>
#include <QObject>
#include <QString>

namespace kelpa::test {

/// Counts since construction or the last `take`.
class SignalLog
{
public:
    explicit SignalLog(const WindowStore& store);

    /// Signal name to count, without signals that were not emitted. Resets the counts.
    QMap<QString, int> take();

private:
    void count(const char* name);

    QObject m_context;
    QMap<QString, int> m_counts;
};

} // namespace kelpa::test
