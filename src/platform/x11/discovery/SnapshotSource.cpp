#include "platform/x11/discovery/SnapshotSource.h"

#include "platform/DialogOwners.h"
#include "platform/DocumentSource.h"

#include <QFile>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace kelpa::x11 {

namespace {

/// Resolves clues that many windows have in common only once.
class CachingResolver
{
public:
    explicit CachingResolver(ApplicationResolver& resolver) : m_resolver(resolver) {}

    const ResolvedApplication& resolve(const ApplicationClues& clues)
    {
        const auto it = std::find_if(m_resolved.begin(), m_resolved.end(),
                                     [&](const auto& known) { return known.first == clues; });
        if (it != m_resolved.end())
            return it->second;
        return m_resolved.emplace_back(clues, m_resolver.resolve(clues)).second;
    }

private:
    ApplicationResolver& m_resolver;
    std::vector<std::pair<ApplicationClues, ResolvedApplication>> m_resolved;
};

QString processName(ProcessID process)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(process));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(64)).trimmed() : QString();
}

/// Absent when neither the desktop entry, WM_CLASS nor the process has one.
std::optional<QString> ownerName(const ClientWindow& client, const ResolvedApplication& resolved)
{
    QString name = resolved.name;
    if (name.isEmpty())
        name = client.clues.wmClassName;
    if (name.isEmpty() && client.process)
        name = processName(*client.process);
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

AccessibilityWindow accessibilityWindow(const ClientWindow& client, const DesktopContext& context,
                                        DocumentSource* documents)
{
    const Rect frame = bounds(client, context);
    AccessibilityWindow window;
    window.position = Point{frame.x, frame.y};
    window.size = Size{frame.width, frame.height};
    window.isMinimized = isMinimized(client, context);
    window.title = client.title;
    window.windowNumber = client.number;
    if (documents && client.process)
        window.document = documents->document({*client.process, frame, client.title});
    return window;
}

} // namespace

SnapshotSource::SnapshotSource(const std::vector<ClientWindow>& clients,
                               const DesktopContext& context, ApplicationResolver& resolver,
                               DocumentSource* documents)
    : m_isPresent(true), m_virtualDesktops(x11::virtualDesktops(context))
{
    CachingResolver applications(resolver);
    const std::map<std::uint32_t, std::uint32_t> owners = ownersOfDialogs(clients);
    const std::set<std::uint32_t> awaitingAnswer = kelpa::windowsAwaitingAnswer(owners);
    std::map<std::uint32_t, std::optional<WindowID>> numbers;
    for (const ClientWindow& client : clients)
        numbers.emplace(client.window, client.number);
    for (const ClientWindow& client : clients) {
        const ResolvedApplication& resolved = applications.resolve(client.clues);
        WindowListEntry entry;
        entry.number = client.number;
        entry.ownerProcess = client.process;
        entry.ownerName = ownerName(client, resolved);
        entry.bundleIdentifier = resolved.desktopEntryID;
        entry.bounds = bounds(client, context);
        entry.layer = layer(client);
        entry.alpha = client.opacity;
        entry.name = client.title;
        entry.role = client.role;
        entry.instance = client.clues.wmClassInstance;
        entry.windowClass = client.clues.wmClassName;
        entry.sessionID = client.sessionID;
        entry.iconRevision = client.iconRevision;
        entry.virtualDesktop = virtualDesktop(client, context);
        entry.desktopNumber = desktopNumber(client, context);
        entry.isAwaitingAnswer = awaitingAnswer.contains(client.window);
        if (const auto owner = owners.find(client.window); owner != owners.end())
            entry.dialogOf = numbers.at(owner->second);
        if (isOnScreen(client, context))
            m_onScreen.push_back(entry);
        m_windows.push_back(std::move(entry));
        if (!client.process)
            continue;
        const bool isOrdinary = layer(client) == 0;
        const auto [it, isNew] = m_processes.try_emplace(*client.process);
        Process& process = it->second;
        if (isNew)
            process.application.activationPolicy = ActivationPolicy::accessory;
        if (isOrdinary) {
            process.application.activationPolicy = ActivationPolicy::regular;
            process.named.insert(resolved.desktopEntryID);
        }
        process.windows.push_back(accessibilityWindow(client, context, documents));
    }
    for (auto& [id, process] : m_processes) {
        if (process.named.size() == 1)
            process.application.bundleIdentifier = *process.named.begin();
    }
    if (documents) {
        std::vector<DocumentQuery> queries;
        for (const ClientWindow& client : clients) {
            if (client.process && layer(client) == 0)
                queries.push_back({*client.process, bounds(client, context), client.title});
        }
        documents->noteWindows(std::move(queries));
    }
}

std::optional<std::vector<WindowListEntry>> SnapshotSource::windowList(WindowListScope scope)
{
    if (!m_isPresent)
        return std::nullopt;
    return scope == WindowListScope::all ? m_windows : m_onScreen;
}

std::optional<RunningApplication> SnapshotSource::runningApplication(ProcessID process)
{
    const auto it = m_processes.find(process);
    return it == m_processes.end() ? std::nullopt : std::optional(it->second.application);
}

bool SnapshotSource::isAccessibilityTrusted()
{
    return m_isPresent;
}

std::optional<std::vector<AccessibilityWindow>>
SnapshotSource::accessibilityWindows(ProcessID process)
{
    const auto it = m_processes.find(process);
    return it == m_processes.end() ? std::nullopt : std::optional(it->second.windows);
}

} // namespace kelpa::x11
