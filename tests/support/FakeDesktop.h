// A desktop made of plain data, with every interface that the store asks.
#pragma once

#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/DiscoverySource.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa::test {

class FakeDesktop : public WindowServer,
                    public Accessibility,
                    public Applications,
                    public Pasteboard,
                    public Workspace
{
public:
    FakeDesktop();
    ~FakeDesktop() override;

    /// The process that the fake takes for Kelpa's own.
    static constexpr ProcessID ownProcess = 4242;

    Platform platform() { return {*this, *this, *this, *this, *this}; }

    /// An ordinary window of a regular application, in front of those there are. The application
    /// is made when it is not there yet; it tells nothing of its windows to the accessibility side.
    WindowListEntry& addWindow(WindowID id, ProcessID process, const QString& title);
    /// As `addWindow`, and the accessibility side knows the window under the same title and frame.
    WindowListEntry& addAccessibleWindow(WindowID id, ProcessID process, const QString& title);
    void removeWindow(WindowID id);

    // What the desktop holds; tests change it as they like.
    /// Front to back; none makes the list unavailable.
    std::optional<std::vector<WindowListEntry>> windowList;
    QSet<WindowID> onScreen;
    bool isOnScreenListAvailable = true;
    QHash<ProcessID, RunningApplication> applications;
    /// An absent process has an empty list; an absent value makes the question fail.
    QHash<ProcessID, std::optional<std::vector<AccessibilityWindow>>> accessibilityWindows;
    bool isAccessibilityGranted = true;
    bool isScreenCaptureGranted = true;
    /// Called once the full list has been read, in the middle of a pass.
    std::function<void()> inTheMiddleOfAPass;
    /// Sizes of the pictures that windows give, red ones; a window without one cannot be captured.
    QHash<WindowID, QSize> captureSizes;
    /// Windows that show what they showed in the last picture that was given; a picture puts its
    /// window here, whatever becomes of it. Taken out, a window shows something else.
    QSet<WindowID> unchangedWindows;
    /// Called in the middle of a capture.
    std::function<void()> inTheMiddleOfACapture;
    bool canLaunch = true;
    /// Under which identifier a launched application is known; none for one of which nothing tells
    /// what it is.
    std::optional<QString> launchedIdentifier;
    /// What watching such an application finds out.
    std::optional<QString> watchedIdentifier;
    /// The startup ids that windows carry: "launch 1" of the first launch and so on.
    QHash<WindowID, QByteArray> startupIDs;
    /// The answers to asking for permissions.
    bool grantsAccessibilityWhenAsked = false;
    bool grantsScreenCaptureWhenAsked = false;
    bool hasSettingsForPermissions = true;

    // What has been asked of the desktop.
    /// "windowList all", "accessibilityWindows <process>", "raise <title>", … in order.
    QStringList calls;
    QList<WindowID> captured;
    /// The windows that come next, as the last capture gave them.
    std::vector<WindowID> announcedForCapture;
    QList<QUrl> openedUrls;
    QString pasteboardText;
    int pasteboardWrites = 0;

    /// Tells those who watch that windows have changed.
    void announceWindowChange();
    int watcherCount() const;

    // WindowServer
    bool isScreenCaptureTrusted() const override { return isScreenCaptureGranted; }
    bool requestScreenCapture() override;
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    std::unique_ptr<Subscription> watchWindows(std::function<void()> changed) override;
    // Accessibility
    bool isTrusted() const override { return isAccessibilityGranted; }
    bool requestTrust() override;
    std::optional<AccessibilityElements> elements(ProcessID process) override;
    // Applications
    ProcessID currentProcess() const override { return ownProcess; }
    bool isRunning(ProcessID process) override { return applications.contains(process); }
    void requestActivation(ProcessID process) override;
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;
    // Pasteboard
    void setText(const QString& text) override;
    // Workspace
    bool hasPermissionSettings() const override { return hasSettingsForPermissions; }
    void requestOpen(const QUrl& url) override { openedUrls.append(url); }

private:
    class Source;
    class Element;
    class Watch;

    std::vector<Watch*> m_watches;
    int m_launches = 0;
};

} // namespace kelpa::test
