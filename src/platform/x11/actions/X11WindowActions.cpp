#include "platform/x11/actions/X11WindowActions.h"

#include "platform/x11/actions/EwmhPager.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace kelpa::x11 {

namespace {

/// The window manager counts from 0.
std::uint32_t desktopFrom(int number)
{
    return static_cast<std::uint32_t>(number - 1);
}

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
    void requestVirtualDesktop(const NumberedDesktop& desktop) override
    {
        // It may take the focus away, and does not bring it back.
        m_activation = Activation::notRequested;
        m_pager.sendToDesktop(m_target, desktopFrom(desktop.number));
    }

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

/// Null for a window that the listing does not know.
std::unique_ptr<X11WindowElement> elementOf(EwmhPager& pager, const ClientWindow& client,
                                            const DesktopContext& context)
{
    if (!client.number || !client.process)
        return nullptr;
    const Rect frame = bounds(client, context);
    AccessibilityWindow attributes;
    attributes.position = Point{frame.x, frame.y};
    attributes.size = Size{frame.width, frame.height};
    attributes.isMinimized = isMinimized(client, context);
    attributes.title = client.title;
    attributes.windowNumber = client.number;
    return std::make_unique<X11WindowElement>(
        pager, WindowTarget{client.window, *client.number, *client.process}, attributes);
}

} // namespace

std::optional<AccessibilityElements> X11WindowActions::elements(ProcessID process)
{
    const std::optional<EwmhPager::Windows> windows = m_pager.windows(process);
    if (!windows)
        return std::nullopt;
    AccessibilityElements elements;
    for (const ClientWindow& client : windows->clients) {
        if (auto element = elementOf(m_pager, client, windows->context))
            elements.push_back(std::move(element));
    }
    return elements;
}

void X11WindowActions::showVirtualDesktop(const NumberedDesktop& desktop)
{
    m_pager.showDesktop(desktopFrom(desktop.number));
}

std::map<ProcessID, AccessibilityElements>
X11WindowActions::elementsOf(const std::set<ProcessID>& processes)
{
    std::map<ProcessID, AccessibilityElements> elements;
    if (processes.empty())
        return elements;
    const std::optional<EwmhPager::Windows> windows = m_pager.windows(processes);
    for (const ProcessID process : processes)
        elements.try_emplace(process);
    if (!windows)
        return elements;
    for (const ClientWindow& client : windows->clients) {
        if (auto element = elementOf(m_pager, client, windows->context))
            elements[*client.process].push_back(std::move(element));
    }
    return elements;
}

} // namespace kelpa::x11
