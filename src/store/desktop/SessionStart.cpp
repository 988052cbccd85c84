#include "store/desktop/SessionStart.h"

#include "platform/Autostart.h"

#include <utility>

namespace kelpa {

namespace {

struct Change
{
    bool isOn = false;
    bool hasSucceeded = false;
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
        [this, isOn](const std::stop_token&) {
            const bool hasSucceeded = m_autostart.set(isOn);
            return Change{m_autostart.isOn(), hasSucceeded};
        },
        [this](const Change& change) {
            m_isWriting = false;
            if (m_wanted) {
                write();
                return;
            }
            show(change.isOn);
            if (!change.hasSucceeded)
                Q_EMIT failed();
        });
}

void SessionStart::show(bool isOn)
{
    if (std::exchange(m_isOn, isOn) != isOn)
        Q_EMIT isOnChanged();
}

} // namespace kelpa
