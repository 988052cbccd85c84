#include "platform/freedesktop/portals/DesktopAutostart.h"

#include <utility>

namespace kelpa {

DesktopAutostart::DesktopAutostart(const Places& places, QStringList command, AskPortal ask)
    : m_isSandboxed(places.isSandboxed), m_command(std::move(command)), m_ask(std::move(ask)),
      m_entry(places.configuration, m_command), m_granted(places.ownData, m_command)
{}

bool DesktopAutostart::isOn() const
{
    // No session reads the configuration within a sandbox.
    return m_granted.isOn() || (!m_isSandboxed && m_entry.isOn());
}

AutostartOutcome DesktopAutostart::set(bool isOn, const std::stop_token& stop)
{
    if (isOn) {
        const bool isByPortal = m_isSandboxed || m_granted.isOn();
        return !isByPortal && m_entry.set(true) ? AutostartOutcome::done : ask(true, stop);
    }
    if (!m_isSandboxed && !m_entry.set(false))
        return AutostartOutcome::failed;
    return m_granted.isOn() ? ask(false, stop) : AutostartOutcome::done;
}

AutostartOutcome DesktopAutostart::ask(bool isOn, const std::stop_token& stop)
{
    const AutostartOutcome outcome =
        m_ask({.command = m_command,
               .isOn = isOn,
               .identity = m_isSandboxed ? PortalIdentity::sandbox : PortalIdentity::given},
              stop);
    if (outcome != AutostartOutcome::done)
        return outcome;
    return m_granted.set(isOn) ? AutostartOutcome::done : AutostartOutcome::failed;
}

} // namespace kelpa
