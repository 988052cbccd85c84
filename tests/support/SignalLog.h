// Which signals of a store fire, and how often.
#pragma once

#include "store/WindowStore.h"

#include <QMap>
#include <QObject>
#include <QString>

namespace kelpa::test {

/// Counts from construction, or from the last `take`, on.
class SignalLog
{
public:
    explicit SignalLog(const WindowStore& store);

    /// Signal name to count; silent signals are absent. Starts anew.
    QMap<QString, int> take();

private:
    void count(const char* name);

    QObject m_context;
    QMap<QString, int> m_counts;
};

} // namespace kelpa::test
