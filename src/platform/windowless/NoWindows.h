// A desktop on which Kelpa sees no window of another program: it answers every question with
// nothing, at once.
#pragma once

#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/GlobalKeys.h"
#include "platform/MotionSetting.h"
#include "platform/WindowServer.h"

namespace kelpa {

/// No permission is missing either: there is nothing to ask for.
class NoWindows final : public WindowServer,
                        public Accessibility,
                        public Applications,
                        public GlobalKeys,
                        public MotionSetting
{
public:
    // WindowServer
    bool isScreenCaptureTrusted() const override { return true; }
    std::optional<Obstacle> screenCaptureObstacle() const override { return std::nullopt; }
    bool requestScreenCapture() override { return true; }
    /// The lists are absent, not empty: windows may be there.
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    std::unique_ptr<Subscription> watchWindows(std::function<void()> changed) override;
    // Accessibility
    bool isTrusted() const override { return true; }
    std::optional<Obstacle> accessibilityObstacle() const override { return std::nullopt; }
    bool requestTrust() override { return true; }
    std::optional<AccessibilityElements> elements(ProcessID process) override;
    // Applications
    ProcessID currentProcess() const override;
    bool isRunning(ProcessID process) override;
    void requestActivation(ProcessID process) override;
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;
    // GlobalKeys
    std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) override;
    // MotionSetting
    std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool> areWanted)> changed) override;
};

} // namespace kelpa
