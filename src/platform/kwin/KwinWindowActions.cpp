#include "platform/kwin/KwinWindowActions.h"

#include "platform/kwin/KwinWindowServer.h"

#include <memory>
#include <utility>

namespace kelpa::kwin {

namespace {

class KwinElement final : public AccessibilityElement
{
public:
    KwinElement(KwinWindowServer& server, QByteArray uuid, AccessibilityWindow attributes)
        : m_server(server), m_uuid(std::move(uuid)), m_attributes(std::move(attributes))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }
    void requestMinimized(bool isMinimized) override
    {
        order(isMinimized ? KwinAction::minimize : KwinAction::restore);
    }
    /// With the focus it becomes the application's most recent window.
    void requestMain() override {}
    void requestFocus() override { order(KwinAction::activate); }
    /// The focus has raised it.
    void requestRaise() override {}
    void requestClose() override { order(KwinAction::close); }
    void requestVirtualDesktop(const NumberedDesktop& desktop) override
    {
        m_server.order({.action = KwinAction::send, .window = m_uuid, .desktop = desktop.number});
    }

private:
    void order(KwinAction action) { m_server.order({.action = action, .window = m_uuid}); }

    KwinWindowServer& m_server;
    const QByteArray m_uuid;
    const AccessibilityWindow m_attributes;
};

} // namespace

bool KwinWindowActions::isTrusted() const
{
    return m_server.isScreenCaptureTrusted();
}

void KwinWindowActions::showVirtualDesktop(const NumberedDesktop& desktop)
{
    m_server.order({.action = KwinAction::showDesktop, .desktop = desktop.number});
}

std::optional<AccessibilityElements> KwinWindowActions::elements(ProcessID process)
{
    const std::optional<std::vector<NumberedKwinWindow>> windows = m_server.windows();
    if (!windows)
        return std::nullopt;
    AccessibilityElements elements;
    for (const NumberedKwinWindow& each : *windows) {
        if (each.number && each.window.isOrdinary && each.window.process == process)
            elements.push_back(std::make_unique<KwinElement>(m_server, each.window.uuid,
                                                             accessibilityWindow(each)));
    }
    return elements;
}

} // namespace kelpa::kwin
