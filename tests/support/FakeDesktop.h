// A desktop made of plain data, which implements every interface that the store needs.
#pragma once

#include "platform/AbilityReport.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/DiscoverySource.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <QHash>
#include <QList>
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
                    public Workspace,
                    public AbilityReport
{
public:
    FakeDesktop();
    ~FakeDesktop() override;

    /// The process that the fake takes for Kelpa's own.
    static constexpr ProcessID ownProcess = 4242;

    Platform platform() { return {*this, *this, *this, *this, *this, *this}; }

    /// Adds an ordinary window of a regular application in front of the others. Adds the
    /// application if necessary; it reports no window to the accessibility side.
    WindowListEntry& addWindow(WindowID id, ProcessID process, const QString& title);
    /// As `addWindow`, and reports the window to the accessibility side with the same title and
    /// frame.
    WindowListEntry& addAccessibleWindow(WindowID id, ProcessID process, const QString& title);
    void removeWindow(WindowID id);

    // The state of the desktop; tests change it freely.
    /// Front to back; absent makes the list unavailable.
    std::optional<std::vector<WindowListEntry>> windowList;
    QSet<WindowID> onScreen;
    bool isOnScreenListAvailable = true;
    /// The names of the virtual desktops.
    QStringList virtualDesktops;
    /// Their identities; none where numbers do not shift.
    DesktopIDs desktopIDs;
    /// The numbers of those that are not there until a window is sent to them.
    QList<int> unofferedDesktops;
    QHash<ProcessID, RunningApplication> applications;
    /// A process without an entry has an empty list; an absent value makes the query fail.
    QHash<ProcessID, std::optional<std::vector<AccessibilityWindow>>> accessibilityWindows;
    bool isAccessibilityGranted = true;
    bool isScreenCaptureGranted = true;
    /// Called once the full list has been read, in the middle of a pass.
    std::function<void()> inTheMiddleOfAPass;
    /// Sizes of the captures of windows, which are red but for one pixel in a corner; a window
    /// without one cannot be captured.
    QHash<WindowID, QSize> captureSizes;
    /// Windows whose captures are red altogether, as if they had not drawn themselves yet.
    QSet<WindowID> blankWindows;
    /// Windows whose contents have not changed since their last capture. A capture adds its window,
    /// whether or not the result is used; removing a window changes its contents.
    QSet<WindowID> unchangedWindows;
    /// Whether no window can be captured at present.
    bool isPausingCaptures = false;
    /// Called in the middle of a capture.
    std::function<void()> inTheMiddleOfACapture;
    bool canLaunch = true;
    /// The documents that are no longer there.
    QStringList goneDocuments;
    /// The identifier of a launched application; absent when it is unknown at first.
    std::optional<QString> launchedIdentifier;
    /// The result of `identifierOf` for such an application.
    std::optional<QString> watchedIdentifier;
    /// The startup ids of windows: "launch 1" for the first launch and so on.
    QHash<WindowID, QByteArray> startupIDs;
    /// The results of permission requests.
    bool grantsAccessibilityWhenAsked = false;
    bool grantsScreenCaptureWhenAsked = false;
    bool hasSettingsForPermissions = true;
    bool hasFileManager = true;
    /// What is in the way of what is not granted; absent while that is not known.
    std::optional<Obstacle> obstacleOfAccessibility = Obstacle::permission;
    std::optional<Obstacle> obstacleOfScreenCapture = Obstacle::permission;

    // The requests that the desktop has received.
    /// "windowList all", "accessibilityWindows <process>", "raise <title>", … in order.
    QStringList calls;
    /// The virtual desktops of these requests, in order.
    QList<NumberedDesktop> requestedDesktops;
    QList<WindowID> captured;
    /// `CaptureRequest::next` of the last capture.
    std::vector<WindowID> announcedForCapture;
    QList<QUrl> openedUrls;
    QString pasteboardText;
    int pasteboardWrites = 0;

    /// Notifies all watchers of changed windows.
    void announceWindowChange();
    int watcherCount() const;
    /// Takes an ability away, and notifies who watches.
    void lack(DesktopAbility ability, AbilityShortfall shortfall = {});
    /// Gives all abilities back, and notifies who watches.
    void lackNothing();

    // WindowServer
    bool isScreenCaptureTrusted() const override { return isScreenCaptureGranted; }
    std::optional<Obstacle> screenCaptureObstacle() const override
    {
        return obstacleOfScreenCapture;
    }
    bool requestScreenCapture() override;
    bool isPausing() const override { return isPausingCaptures; }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    std::unique_ptr<Subscription> watchWindows(std::function<void()> changed) override;
    // Accessibility
    bool isTrusted() const override { return isAccessibilityGranted; }
    std::optional<Obstacle> accessibilityObstacle() const override
    {
        return obstacleOfAccessibility;
    }
    bool requestTrust() override;
    void showVirtualDesktop(const NumberedDesktop& desktop) override;
    std::optional<AccessibilityElements> elements(ProcessID process) override;
    // Applications
    ProcessID currentProcess() const override { return ownProcess; }
    bool isRunning(ProcessID process) override { return applications.contains(process); }
    void requestActivation(ProcessID process) override;
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;
    // Pasteboard
    void setText(const QString& text) override;
    // Workspace
    TaskHandle findOpener(const QUrl& url, std::function<void(bool isThere)> found) override;
    void requestOpen(const QUrl& url) override { openedUrls.append(url); }
    // AbilityReport
    DesktopAbilities abilities() const override { return m_abilities; }
    std::unique_ptr<Subscription> watchAbilities(std::function<void()> changed) override;
    bool canRequestAbilities() const override { return givesAbilities; }
    void requestAbilities() override { ++abilityRequests; }

    /// Whether it gives what it lacks when it is asked, and how often it was.
    bool givesAbilities = false;
    int abilityRequests = 0;

private:
    class Source;
    class Element;
    class Watch;

    std::vector<Watch*> m_watches;
    DesktopAbilities m_abilities;
    std::vector<Watch*> m_abilityWatches;
    int m_launches = 0;
};

} // namespace kelpa::test
