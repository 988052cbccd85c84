#include "platform/qt/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace kelpa {

namespace {

/// The signals that are not ignored: a program started to outlive its terminal ignores SIGHUP.
sigset_t endingSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            sigaddset(&signals, number);
    }
    return signals;
}

void unblock(const sigset_t& signals)
{
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    const sigset_t signals = endingSignals();
    m_descriptor = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
    // Threads that are created from now on inherit the mask.
    if (m_descriptor >= 0)
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void TerminationSignals::release()
{
    unblock(endingSignals());
}

bool TerminationSignals::takeAll()
{
    bool hasTaken = false;
    signalfd_siginfo taken{};
    while (::read(m_descriptor, &taken, sizeof taken) == sizeof taken)
        hasTaken = true;
    return hasTaken;
}

void TerminationSignals::listen(std::function<void()> ended)
{
    if (m_descriptor < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this, ended = std::move(ended)] {
                         if (!takeAll())
                             return;
                         sigset_t again;
                         sigemptyset(&again);
                         sigaddset(&again, SIGINT);
                         unblock(again);
                         ended();
                     });
}

void TerminationSignals::stopListening()
{
    m_notifier.reset();
}

} // namespace kelpa
