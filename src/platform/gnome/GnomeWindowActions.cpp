#include "platform/gnome/GnomeWindowActions.h"

#include "platform/gnome/GnomeWindowServer.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace kelpa::gnome {

namespace {

class GnomeElement final : public AccessibilityElement
{
public:
    GnomeElement(ShellClient& client, std::uint64_t window, AccessibilityWindow attributes)
        : m_client(client), m_window(window), m_attributes(std::move(attributes))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }
    void requestMinimized(bool isMinimized) override
    {
        if (isMinimized)
            m_client.minimize(m_window);
        else
            m_client.restore(m_window);
    }
    /// With the focus it becomes the application's most recent window.
    void requestMain() override {}
    void requestFocus() override { m_client.activate(m_window); }
    /// The focus has raised it.
    void requestRaise() override {}
    void requestClose() override { m_client.close(m_window); }
    void requestVirtualDesktop(const NumberedDesktop& desktop) override
    {
        m_client.sendTo(m_window, desktop);
    }

private:
    ShellClient& m_client;
    const std::uint64_t m_window;
    const AccessibilityWindow m_attributes;
};

} // namespace

bool GnomeWindowActions::isTrusted() const
{
    return m_server.isScreenCaptureTrusted();
}

std::optional<AccessibilityElements> GnomeWindowActions::elements(ProcessID process)
{
    const std::optional<std::vector<NumberedShellWindow>> windows = m_server.windows();
    if (!windows)
        return std::nullopt;
    AccessibilityElements elements;
    for (const NumberedShellWindow& each : *windows) {
        if (each.number && each.window.process == process)
            elements.push_back(std::make_unique<GnomeElement>(m_client, each.window.id,
                                                              accessibilityWindow(each)));
    }
    return elements;
}

} // namespace kelpa::gnome
