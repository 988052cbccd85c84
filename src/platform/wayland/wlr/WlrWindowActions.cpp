#include "platform/wayland/wlr/WlrWindowActions.h"

#include "platform/wayland/wlr/WlrWindowServer.h"

#include <memory>
#include <utility>

namespace kelpa::wayland {

namespace {

class WlrElement final : public AccessibilityElement
{
public:
    WlrElement(WlrWindowServer& server, const NumberedToplevel& window)
        : m_server(server), m_window(window.window.id), m_attributes(accessibilityWindow(window))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }
    void requestMinimized(bool isMinimized) override
    {
        // Also where it is reported to be so: what was requested before may not be reported yet.
        m_server.request(m_window,
                         isMinimized ? ToplevelAction::minimize : ToplevelAction::restore);
    }
    void requestMain() override {}
    void requestFocus() override { m_server.request(m_window, ToplevelAction::activate); }
    /// The activation has raised it.
    void requestRaise() override {}
    void requestClose() override { m_server.request(m_window, ToplevelAction::close); }

private:
    WlrWindowServer& m_server;
    const ToplevelID m_window;
    const AccessibilityWindow m_attributes;
};

} // namespace

std::optional<AccessibilityElements> WlrWindowActions::elements(ProcessID process)
{
    AccessibilityElements elements;
    if (const std::optional<NumberedToplevel> window = m_server.windowOf(process))
        elements.push_back(std::make_unique<WlrElement>(m_server, *window));
    return elements;
}

} // namespace kelpa::wayland
