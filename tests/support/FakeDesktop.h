// A desktop made of plain data, with every interface that the store asks.
#pragma once

#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/DiscoverySource.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/WindowServer.h"

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
                    public Pasteboard
{
public:
    FakeDesktop();
    ~FakeDesktop() override;

    /// The process that the fake takes for Kelpa's own.
    static constexpr ProcessID ownProcess = 4242;

    Platform platform() { return {*this, *this, *this, *this}; }

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
    QHash<ProcessID, std::optional<std::vector<AccessibilityWindow>>> elements;
    bool isAccessibilityGranted = true;
    bool isScreenCaptureGranted = true;
    /// Called once the full list has been read, in the middle of a pass.
    std::function<void()> inTheMiddleOfAPass;

    // What has been asked of the desktop.
    /// "windowList all", "windowList onScreen", "accessibilityWindows <process>", … in order.
    QStringList calls;
    QString pasteboardText;
    int pasteboardWrites = 0;

    /// Tells those who watch that windows have changed.
    void announceWindowChange();
    int watcherCount() const;

    // WindowServer
    bool isScreenCaptureTrusted() const override { return isScreenCaptureGranted; }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    std::unique_ptr<Subscription> watchWindows(std::function<void()> changed) override;
    // Accessibility
    bool isTrusted() const override { return isAccessibilityGranted; }
    // Applications
    ProcessID currentProcess() const override { return ownProcess; }
    QImage icon(const WindowItem& window, int pixels) override;
    // Pasteboard
    void setText(const QString& text) override;

private:
    class Source;
    class Watch;

    std::vector<Watch*> m_watches;
};

} // namespace kelpa::test
