// The system's requests to end the program, as calls on the main thread.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace kelpa {

/// SIGTERM, SIGINT and SIGHUP, unless they were ignored when the program was started. A session
/// that ends sends several of them together, which are one request; who presses Ctrl-C once more
/// does not want to wait, and that ends the program as if nobody listened.
class TerminationSignals
{
public:
    /// To be made before the program has a second thread. From then on the signals wait.
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

    /// A file that can be read while one of them waits; -1 where they do not wait.
    int descriptor() const { return m_descriptor; }
    /// Lets them do what they do by themselves, from now on: one that waits ends the program here.
    void release();

    /// Calls `ended` in the event loop for the first of them, also for one that came before. Beside
    /// a QCoreApplication; to be dropped before that with `stopListening`.
    void listen(std::function<void()> ended);
    void stopListening();

private:
    /// Whether there was any that waited.
    bool takeAll();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kelpa
