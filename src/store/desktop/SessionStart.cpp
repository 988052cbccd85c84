#include "store/desktop/SessionStart.h"

#include <utility>

namespace kelpa {

namespace {

struct Change
{
    bool isOn = false;
    AutostartOutcome outcome = AutostartOutcome::done;
};

} // namespace

SessionStart::SessionStart(Autostart& autostart, Scheduler& scheduler)
    : m_autostart(autostart), m_scheduler(scheduler)
{}

void SessionStart::read()
{
    if (m_isWriting)
        return;
    m_work = m_scheduler.inBackground([this](const std::stop_token&) { return m_autostart.isOn(); },
                                      [this](bool isOn) { show(isOn); });
}

void SessionStart::set(bool isOn)
{
    show(isOn);
    m_wanted = isOn;
    if (!m_isWriting)
        write();
}

void SessionStart::write()
{
    const bool isOn = *std::exchange(m_wanted, std::nullopt);
    m_isWriting = true;
    m_work = m_scheduler.inBackground(
        [this, isOn](const std::stop_token& stop) {
            const AutostartOutcome outcome = m_autostart.set(isOn, stop);
            return Change{m_autostart.isOn(), outcome};
        },
        [this](const Change& change) {
            m_isWriting = false;
            if (m_wanted) {
                write();
                return;
            }
            show(change.isOn);
            if (change.outcome != AutostartOutcome::done)
                Q_EMIT failed(change.outcome);
        });
}

void SessionStart::show(bool isOn)
{
    if (std::exchange(m_isOn, isOn) != isOn)
        Q_EMIT isOnChanged();
}

} // namespace kelpa
