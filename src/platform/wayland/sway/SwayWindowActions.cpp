#include "platform/wayland/sway/SwayWindowActions.h"

#include "platform/wayland/sway/SwayCommands.h"
#include "platform/wayland/sway/SwayWindowServer.h"

#include <memory>
#include <utility>

namespace kelpa::wayland {

namespace {

class SwayElement final : public AccessibilityElement
{
public:
    SwayElement(SwayCommands& commands, std::int64_t container, AccessibilityWindow attributes)
        : m_commands(commands), m_container(container), m_attributes(std::move(attributes))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }
    void requestMinimized(bool) override {}
    /// With the focus it becomes the application's most recent window.
    void requestMain() override {}
    void requestFocus() override { m_commands.focus(m_container); }
    /// The focus has raised it.
    void requestRaise() override {}
    void requestClose() override { m_commands.close(m_container); }
    void requestVirtualDesktop(const NumberedDesktop& desktop) override
    {
        m_commands.sendTo(m_container, desktop.number);
    }

private:
    SwayCommands& m_commands;
    const std::int64_t m_container;
    const AccessibilityWindow m_attributes;
};

} // namespace

bool SwayWindowActions::isTrusted() const
{
    return m_server.isScreenCaptureTrusted();
}

void SwayWindowActions::showVirtualDesktop(const NumberedDesktop& desktop)
{
    m_commands.showWorkspace(desktop.number);
}

std::optional<AccessibilityElements> SwayWindowActions::elements(ProcessID process)
{
    const std::optional<std::vector<NumberedSwayWindow>> windows = m_server.windows();
    if (!windows)
        return std::nullopt;
    AccessibilityElements elements;
    for (const NumberedSwayWindow& each : *windows) {
        if (each.number && each.window.process == process)
            elements.push_back(std::make_unique<SwayElement>(m_commands, each.window.container,
                                                             accessibilityWindow(each)));
    }
    return elements;
}

} // namespace kelpa::wayland
