// Delivers the system's termination signals as calls on the main thread.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace kelpa {

/// Handles SIGTERM, SIGINT and SIGHUP, unless they were ignored when the program was started. A
/// session that ends sends several of them together, which count as one request. A second Ctrl-C
/// ends the program at once, by the signal's default action.
class TerminationSignals
{
public:
    /// Construct before the program has a second thread. From then on the signals are pending.
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

    /// A file descriptor that is readable while a signal is pending; -1 where they are not blocked.
    int descriptor() const { return m_descriptor; }
    /// Restores their default action from now on: a pending signal ends the program here.
    void release();

    /// Calls `ended` in the event loop for the first signal, also for a pending one. Needs a
    /// QCoreApplication; call `stopListening` before destroying that.
    void listen(std::function<void()> ended);
    void stopListening();

private:
    /// Takes all pending signals; whether there were any.
    bool takeAll();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kelpa
