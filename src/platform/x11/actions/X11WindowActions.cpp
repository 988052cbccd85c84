#include "platform/x11/actions/X11WindowActions.h"

#include "platform/x11/actions/EwmhPager.h"

#include <utility>

namespace kelpa::x11 {

namespace {

class X11WindowElement : public AccessibilityElement
{
public:
    X11WindowElement(EwmhPager& pager, const WindowTarget& target, AccessibilityWindow attributes)
        : m_pager(pager), m_target(target), m_attributes(std::move(attributes))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }

    void requestMinimized(bool isMinimized) override
    {
        if (isMinimized) {
            m_activation = Activation::notRequested;
            m_pager.minimize(m_target);
        } else {
            // Activating it is the only way that all window managers support.
            activate();
        }
    }

    void requestMain() override { activate(); }
    void requestFocus() override { activate(); }
    void requestRaise() override { activate(); }
    void requestClose() override { m_pager.close(m_target); }

private:
    enum class Activation : std::uint8_t { notRequested, confirmed, unconfirmed };

    void activate()
    {
        // A window manager that did not confirm may still carry out the request; repeating it would
        // only make this thread wait again.
        const bool isNeeded =
            m_activation == Activation::notRequested ||
            (m_activation == Activation::confirmed && !m_pager.isStillActive(m_target));
        if (isNeeded)
            m_activation =
                m_pager.activate(m_target) ? Activation::confirmed : Activation::unconfirmed;
    }

    EwmhPager& m_pager;
    const WindowTarget m_target;
    const AccessibilityWindow m_attributes;
    Activation m_activation = Activation::notRequested;
};

} // namespace

std::optional<AccessibilityElements> X11WindowActions::elements(ProcessID process)
{
    const std::optional<EwmhPager::Windows> windows = m_pager.windows(process);
    if (!windows)
        return std::nullopt;
    AccessibilityElements elements;
    for (const ClientWindow& client : windows->clients) {
        if (!client.number)
            continue;
        const Rect frame = bounds(client, windows->context);
        AccessibilityWindow attributes;
        attributes.position = Point{frame.x, frame.y};
        attributes.size = Size{frame.width, frame.height};
        attributes.isMinimized = isMinimized(client, windows->context);
        attributes.title = client.title;
        attributes.windowNumber = client.number;
        elements.push_back(std::make_unique<X11WindowElement>(
            m_pager, WindowTarget{client.window, *client.number, process}, attributes));
    }
    return elements;
}

} // namespace kelpa::x11
