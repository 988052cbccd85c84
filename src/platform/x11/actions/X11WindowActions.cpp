#include "platform/x11/actions/X11WindowActions.h"

#include "platform/x11/actions/WindowActor.h"

#include <utility>

namespace kelpa::x11 {

namespace {

class X11Element : public AccessibilityElement
{
public:
    X11Element(WindowActor& actor, const WindowTarget& target, AccessibilityWindow attributes)
        : m_actor(actor), m_target(target), m_attributes(std::move(attributes))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }

    void requestMinimized(bool isMinimized) override
    {
        if (isMinimized) {
            m_progress = Progress::notAsked;
            m_actor.minimize(m_target);
        } else {
            // Window managers agree on no other way than to activate it.
            bringForward();
        }
    }

    void requestMain() override { bringForward(); }
    void requestFocus() override { bringForward(); }
    void requestRaise() override { bringForward(); }

private:
    enum class Progress : std::uint8_t { notAsked, isInFront, isLeftAlone };

    void bringForward()
    {
        // A window manager that did not answer has the request and may still carry it out; asking
        // again would only make this thread wait again.
        const bool isNeeded = m_progress == Progress::notAsked ||
                              (m_progress == Progress::isInFront && !m_actor.isInFront(m_target));
        if (isNeeded)
            m_progress =
                m_actor.bringForward(m_target) ? Progress::isInFront : Progress::isLeftAlone;
    }

    WindowActor& m_actor;
    const WindowTarget m_target;
    const AccessibilityWindow m_attributes;
    Progress m_progress = Progress::notAsked;
};

} // namespace

std::optional<AccessibilityElements> X11WindowActions::elements(ProcessID process)
{
    const std::optional<WindowActor::Windows> windows = m_actor.windows(process);
    if (!windows)
        return std::nullopt;
    AccessibilityElements elements;
    for (const ClientWindow& client : windows->clients) {
        if (!client.number)
            continue;
        AccessibilityWindow attributes;
        attributes.position = Point{client.frame.x, client.frame.y};
        attributes.size = Size{client.frame.width, client.frame.height};
        attributes.isMinimized = isMinimized(client, windows->context);
        attributes.title = client.title;
        attributes.windowNumber = client.number;
        elements.push_back(std::make_unique<X11Element>(
            m_actor, WindowTarget{client.window, *client.number, process}, attributes));
    }
    return elements;
}

} // namespace kelpa::x11
