#include "platform/windowless/NoWindows.h"

#include <QCoreApplication>

namespace kelpa {

namespace {

class NothingDiscovered final : public DiscoverySource
{
public:
    std::optional<std::vector<WindowListEntry>> windowList(WindowListScope) override
    {
        return std::nullopt;
    }
    std::optional<RunningApplication> runningApplication(ProcessID) override
    {
        return std::nullopt;
    }
    bool isAccessibilityTrusted() override { return true; }
    std::optional<std::vector<AccessibilityWindow>> accessibilityWindows(ProcessID) override
    {
        return std::nullopt;
    }
};

} // namespace

std::unique_ptr<DiscoverySource> NoWindows::openDiscoverySource()
{
    return std::make_unique<NothingDiscovered>();
}

std::optional<WindowCapture> NoWindows::captureWindow(const CaptureRequest&, const std::stop_token&)
{
    return std::nullopt;
}

std::unique_ptr<Subscription> NoWindows::watchWindows(std::function<void()>)
{
    return nullptr;
}

std::optional<AccessibilityElements> NoWindows::elements(ProcessID)
{
    return std::nullopt;
}

ProcessID NoWindows::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool NoWindows::isRunning(ProcessID)
{
    return false;
}

void NoWindows::requestActivation(ProcessID) {}

void NoWindows::requestQuit(ProcessID) {}

std::optional<Launch> NoWindows::launch(LaunchableApplication)
{
    return std::nullopt;
}

Reopening NoWindows::reopen(const FormerWindow&)
{
    return {};
}

std::optional<QString> NoWindows::identifierOf(const Launch&, const std::stop_token&)
{
    return std::nullopt;
}

std::optional<WindowID> NoWindows::windowOf(const Launch&, const QList<WindowItem>&)
{
    return std::nullopt;
}

QImage NoWindows::icon(const WindowItem&, int)
{
    return {};
}

std::unique_ptr<Subscription> NoWindows::watchKeys(GlobalKeyHandlers)
{
    return nullptr;
}

std::unique_ptr<Subscription> NoWindows::watchAnimations(std::function<void(std::optional<bool>)>)
{
    return nullptr;
}

} // namespace kelpa
