#include "platform/freedesktop/portals/DesktopAutostart.h"

#include <utility>

namespace kelpa {

DesktopAutostart::DesktopAutostart(const Places& places, QStringList command, AskPortal ask)
    : m_isByPortal(places.isByPortal), m_command(std::move(command)), m_ask(std::move(ask)),
      m_entry(places.configuration, m_command), m_granted(places.ownData, m_command)
{}

bool DesktopAutostart::isOn() const
{
    return m_isByPortal ? m_granted.isOn() : m_entry.isOn();
}

AutostartOutcome DesktopAutostart::set(bool isOn, const std::stop_token& stop)
{
    if (!m_isByPortal)
        return m_entry.set(isOn) ? AutostartOutcome::done : AutostartOutcome::failed;
    return isOn || m_granted.isOn() ? ask(isOn, stop) : AutostartOutcome::done;
}

AutostartOutcome DesktopAutostart::ask(bool isOn, const std::stop_token& stop)
{
    const AutostartOutcome outcome = m_ask({.command = m_command, .isOn = isOn}, stop);
    if (outcome != AutostartOutcome::done)
        return outcome;
    return m_granted.set(isOn) ? AutostartOutcome::done : AutostartOutcome::failed;
}

} // namespace kelpa
