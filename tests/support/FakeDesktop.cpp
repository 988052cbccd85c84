#include "support/FakeDesktop.h"

#include <algorithm>

namespace kelpa::test {

namespace {

/// Removes the window at the place of the listed one; two may have one place.
void removeAccessible(const WindowListEntry& entry,
                      QHash<ProcessID, std::optional<std::vector<AccessibilityWindow>>>& windows)
{
    if (!entry.ownerProcess || !entry.bounds)
        return;
    const auto ofProcess = windows.find(*entry.ownerProcess);
    if (ofProcess == windows.end() || !*ofProcess)
        return;
    const auto isThere = [&bounds = *entry.bounds](const AccessibilityWindow& each) {
        return each.position && each.position->x == bounds.x && each.position->y == bounds.y;
    };
    const auto found = std::ranges::find_if(**ofProcess, isThere);
    if (found != (*ofProcess)->end())
        (*ofProcess)->erase(found);
}

} // namespace

class FakeDesktop::Source : public DiscoverySource
{
public:
    explicit Source(FakeDesktop& desktop) : m_desktop(desktop) {}

    std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) override
    {
        if (scope == WindowListScope::all) {
            m_desktop.calls.append(QStringLiteral("windowList all"));
            auto list = m_desktop.windowList;
            if (m_desktop.inTheMiddleOfAPass)
                m_desktop.inTheMiddleOfAPass();
            return list;
        }
        m_desktop.calls.append(QStringLiteral("windowList onScreen"));
        if (!m_desktop.isOnScreenListAvailable)
            return std::nullopt;
        std::vector<WindowListEntry> entries;
        for (const WindowID id : m_desktop.onScreen)
            entries.emplace_back().number = id;
        // An entry without a number says nothing.
        entries.emplace_back();
        return entries;
    }

    std::optional<RunningApplication> runningApplication(ProcessID process) override
    {
        const auto found = m_desktop.applications.constFind(process);
        return found != m_desktop.applications.constEnd() ? std::optional(*found) : std::nullopt;
    }

    QStringList virtualDesktops() override { return m_desktop.virtualDesktops; }
    DesktopIDs desktopIDs() override { return m_desktop.desktopIDs; }
    QList<int> unofferedDesktops() override { return m_desktop.unofferedDesktops; }

    bool isAccessibilityTrusted() override { return m_desktop.isAccessibilityGranted; }

    std::optional<std::vector<AccessibilityWindow>> accessibilityWindows(ProcessID process) override
    {
        m_desktop.calls.append(QStringLiteral("accessibilityWindows %1").arg(process));
        return m_desktop.accessibilityWindows.value(process, std::vector<AccessibilityWindow>());
    }

private:
    FakeDesktop& m_desktop;
};

class FakeDesktop::Element : public AccessibilityElement
{
public:
    Element(FakeDesktop& desktop, AccessibilityWindow attributes)
        : m_desktop(desktop), m_attributes(std::move(attributes))
    {}

    const AccessibilityWindow& attributes() const override { return m_attributes; }
    void requestMinimized(bool isMinimized) override
    {
        note(isMinimized ? QStringLiteral("minimize") : QStringLiteral("unminimize"));
    }
    void requestMain() override { note(QStringLiteral("main")); }
    void requestFocus() override { note(QStringLiteral("focus")); }
    void requestRaise() override { note(QStringLiteral("raise")); }
    void requestClose() override { note(QStringLiteral("close")); }
    void requestVirtualDesktop(const NumberedDesktop& desktop) override
    {
        note(QStringLiteral("send to %1:").arg(desktop.number));
        m_desktop.requestedDesktops.append(desktop);
    }

private:
    void note(const QString& action)
    {
        m_desktop.calls.append(action + u' ' + m_attributes.title.value_or(QString()));
    }

    FakeDesktop& m_desktop;
    AccessibilityWindow m_attributes;
};

class FakeDesktop::Watch : public Subscription
{
public:
    /// One of `watches`, which outlives it.
    Watch(std::vector<Watch*>& watches, std::function<void()> changed)
        : m_watches(watches), m_changed(std::move(changed))
    {
        m_watches.push_back(this);
    }
    ~Watch() override { std::erase(m_watches, this); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    void announce() const { m_changed(); }

private:
    std::vector<Watch*>& m_watches;
    std::function<void()> m_changed;
};

FakeDesktop::FakeDesktop() : windowList(std::vector<WindowListEntry>()) {}

FakeDesktop::~FakeDesktop() = default;

WindowListEntry& FakeDesktop::addWindow(WindowID id, ProcessID process, const QString& title)
{
    const QString name = QStringLiteral("App %1").arg(process);
    if (!applications.contains(process)) {
        const QString identifier = QStringLiteral("org.example.App%1").arg(process);
        applications.insert(process, {ActivationPolicy::regular, identifier});
    }
    onScreen.insert(id);
    const Rect bounds{10.0 * id, 20, 640, 480};
    return *windowList->insert(windowList->begin(), {.number = id,
                                                     .ownerProcess = process,
                                                     .ownerName = name,
                                                     .bounds = bounds,
                                                     .layer = 0,
                                                     .alpha = 1.0,
                                                     .name = title});
}

WindowListEntry& FakeDesktop::addAccessibleWindow(WindowID id, ProcessID process,
                                                  const QString& title)
{
    WindowListEntry& entry = addWindow(id, process, title);
    auto& ofProcess = accessibilityWindows[process];
    if (!ofProcess)
        ofProcess.emplace();
    ofProcess->push_back({.position = Point{entry.bounds->x, entry.bounds->y},
                          .size = Size{entry.bounds->width, entry.bounds->height},
                          .isMinimized = false,
                          .title = title,
                          .document = std::nullopt,
                          .windowNumber = std::nullopt});
    return entry;
}

void FakeDesktop::removeWindow(WindowID id)
{
    const auto isRemoved = [id](const WindowListEntry& entry) { return entry.number == id; };
    if (const auto found = std::ranges::find_if(*windowList, isRemoved); found != windowList->end())
        removeAccessible(*found, accessibilityWindows);
    std::erase_if(*windowList, isRemoved);
    onScreen.remove(id);
    unchangedWindows.remove(id);
}

void FakeDesktop::announceWindowChange()
{
    const std::vector<Watch*> watches = m_watches;
    for (const Watch* const watch : watches)
        watch->announce();
}

int FakeDesktop::watcherCount() const
{
    return static_cast<int>(m_watches.size());
}

std::unique_ptr<DiscoverySource> FakeDesktop::openDiscoverySource()
{
    calls.append(QStringLiteral("openDiscoverySource"));
    return std::make_unique<Source>(*this);
}

std::unique_ptr<Subscription> FakeDesktop::watchWindows(std::function<void()> changed)
{
    return std::make_unique<Watch>(m_watches, std::move(changed));
}

std::unique_ptr<Subscription> FakeDesktop::watchAbilities(std::function<void()> changed)
{
    return std::make_unique<Watch>(m_abilityWatches, std::move(changed));
}

void FakeDesktop::lack(DesktopAbility ability, AbilityShortfall shortfall)
{
    m_abilities.shortfalls[ability] = shortfall;
    for (const Watch* const watch : std::vector(m_abilityWatches))
        watch->announce();
}

void FakeDesktop::lackNothing()
{
    m_abilities = {};
    for (const Watch* const watch : std::vector(m_abilityWatches))
        watch->announce();
}

void FakeDesktop::showVirtualDesktop(const NumberedDesktop& desktop)
{
    calls.append(QStringLiteral("show desktop %1").arg(desktop.number));
    requestedDesktops.append(desktop);
}

bool FakeDesktop::requestScreenCapture()
{
    calls.append(QStringLiteral("requestScreenCapture"));
    isScreenCaptureGranted = isScreenCaptureGranted || grantsScreenCaptureWhenAsked;
    return isScreenCaptureGranted;
}

std::optional<WindowCapture> FakeDesktop::captureWindow(const CaptureRequest& request,
                                                        const std::stop_token& /*stop*/)
{
    captured.append(request.window);
    announcedForCapture = request.next;
    if (inTheMiddleOfACapture)
        inTheMiddleOfACapture();
    const auto size = captureSizes.constFind(request.window);
    if (size == captureSizes.constEnd() || isPausingCaptures)
        return std::nullopt;
    if (request.need == CaptureNeed::ifChanged && unchangedWindows.contains(request.window))
        return std::nullopt;
    unchangedWindows.insert(request.window);
    QImage image(size->boundedTo(request.largest), QImage::Format_RGB32);
    image.fill(Qt::red);
    if (!blankWindows.contains(request.window))
        image.setPixel(0, 0, qRgb(0, 0, 255));
    return WindowCapture{image, *size};
}

bool FakeDesktop::requestTrust()
{
    calls.append(QStringLiteral("requestTrust"));
    isAccessibilityGranted = isAccessibilityGranted || grantsAccessibilityWhenAsked;
    return isAccessibilityGranted;
}

std::optional<AccessibilityElements> FakeDesktop::elements(ProcessID process)
{
    calls.append(QStringLiteral("elements %1").arg(process));
    const auto windows = accessibilityWindows.value(process, std::vector<AccessibilityWindow>());
    if (!windows)
        return std::nullopt;
    AccessibilityElements result;
    for (const AccessibilityWindow& window : *windows)
        result.push_back(std::make_unique<Element>(*this, window));
    return result;
}

void FakeDesktop::requestActivation(ProcessID process)
{
    calls.append(QStringLiteral("activate %1").arg(process));
}

void FakeDesktop::requestQuit(ProcessID process)
{
    calls.append(QStringLiteral("quit %1").arg(process));
}

std::optional<Launch> FakeDesktop::launch(LaunchableApplication application)
{
    calls.append(application == LaunchableApplication::terminal ? QStringLiteral("launch terminal")
                                                                : QStringLiteral("launch chrome"));
    if (!canLaunch)
        return std::nullopt;
    return Launch{launchedIdentifier, "launch " + QByteArray::number(++m_launches), 0};
}

Reopening FakeDesktop::reopen(const FormerWindow& window)
{
    calls.append(QStringLiteral("reopen %1 %2").arg(window.application, window.document).trimmed());
    Reopening reopening;
    reopening.isDocumentGone = goneDocuments.contains(window.document);
    if (canLaunch)
        reopening.launch =
            Launch{launchedIdentifier, "launch " + QByteArray::number(++m_launches), 0};
    return reopening;
}

std::optional<QString> FakeDesktop::identifierOf(const Launch& launch,
                                                 const std::stop_token& /*stop*/)
{
    calls.append(QStringLiteral("identifierOf ") + QString::fromUtf8(launch.startupID));
    return watchedIdentifier;
}

std::optional<WindowID> FakeDesktop::windowOf(const Launch& launch,
                                              const QList<WindowItem>& windows)
{
    for (const WindowItem& each : windows) {
        if (startupIDs.value(each.id) == launch.startupID)
            return each.id;
    }
    return std::nullopt;
}

QImage FakeDesktop::icon(const WindowItem& /*window*/, int /*pixels*/)
{
    return {};
}

TaskHandle FakeDesktop::findOpener(const QUrl& url, std::function<void(bool isThere)> found)
{
    found(url.isLocalFile() ? hasFileManager : hasSettingsForPermissions);
    return nullptr;
}

void FakeDesktop::setText(const QString& text)
{
    pasteboardText = text;
    ++pasteboardWrites;
}

} // namespace kelpa::test
