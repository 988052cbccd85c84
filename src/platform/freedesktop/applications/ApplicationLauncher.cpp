#include "platform/freedesktop/applications/ApplicationLauncher.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/applications/DetachedProcess.h"
#include "platform/freedesktop/applications/UrlHandlers.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

#include <thread>
#include <utility>

namespace kelpa {

namespace {

constexpr std::chrono::milliseconds recognitionInterval(20);

/// The target of a path that is a link, such as x-terminal-emulator.
QString realPath(const QString& path)
{
    return QFileInfo(path).canonicalFilePath();
}

bool isScript(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(2) == "#!";
}

/// A document as it is passed to a program: an absolute path or a URL. Empty for what is neither,
/// absent for a file that is gone.
std::optional<QString> presentDocument(const QString& document)
{
    const QUrl url(document, QUrl::StrictMode);
    const QString path = url.isLocalFile() ? url.toLocalFile() : document;
    if (path.startsWith(u'/'))
        return QFileInfo::exists(path) ? std::optional(path) : std::nullopt;
    return url.isValid() && !url.scheme().isEmpty() && !url.host().isEmpty() ? document : QString();
}

QString tokenIn(const LaunchSurroundings& surroundings)
{
    return surroundings.isActivationToken ? QString::fromUtf8(surroundings.startupID) : QString();
}

} // namespace

ApplicationLauncher::ApplicationLauncher(DesktopEntries& entries,
                                         std::chrono::milliseconds recognition,
                                         const QProcessEnvironment& environment)
    : m_entries(entries), m_recognition(recognition), m_environment(environment)
{}

std::optional<Launch> ApplicationLauncher::launch(LaunchableApplication application,
                                                  const LaunchSurroundings& surroundings)
{
    const QProcessEnvironment environment = environmentFor(surroundings);
    qCDebug(logApplications, "launching a %s",
            application == LaunchableApplication::terminal ? "terminal" : "browser");
    for (const LaunchCandidate& candidate : candidates(application)) {
        std::optional<QString> expected = predictedIdentifier(candidate);
        if (const auto process =
                startDetached(candidate.command, environment, tokenIn(surroundings)))
            return Launch{std::move(expected), surroundings.startupID, *process};
    }
    qCDebug(logApplications, "no candidate could be started");
    return std::nullopt;
}

Reopening ApplicationLauncher::reopen(const FormerWindow& window,
                                      const LaunchSurroundings& surroundings)
{
    std::optional<LaunchableEntry> entry = launchable(window.application);
    if (!entry) {
        // A window whose entry was not known bears the name of its program, in either case.
        for (const QString& program : {window.application, window.application.toLower()}) {
            if (const auto id = entry ? std::nullopt : m_entries.idOfProgram(program))
                entry = launchable(*id);
        }
    }
    Reopening reopening;
    if (!entry)
        return reopening;
    const std::optional<QString> document = presentDocument(window.document);
    reopening.isDocumentGone = !document;
    std::vector<std::optional<QStringList>> commands;
    if (document && !document->isEmpty())
        commands = {commandOf(entry->newWindowExec, *document), commandOf(entry->exec, *document)};
    commands.push_back(commandOf(entry->newWindowExec));
    commands.push_back(commandOf(entry->exec));
    const QProcessEnvironment environment = environmentFor(surroundings);
    const QStringList folders =
        m_environment.value(QStringLiteral("PATH")).split(u':', Qt::SkipEmptyParts);
    for (std::optional<QStringList>& command : commands) {
        if (!command)
            continue;
        command->front() = QStandardPaths::findExecutable(command->front(), folders);
        if (command->front().isEmpty())
            continue;
        if (const auto process = startDetached(*command, environment, tokenIn(surroundings))) {
            reopening.launch =
                Launch{m_entries.idOfWindows(entry->id), surroundings.startupID, *process};
            return reopening;
        }
    }
    return reopening;
}

QProcessEnvironment
ApplicationLauncher::environmentFor(const LaunchSurroundings& surroundings) const
{
    QProcessEnvironment environment = m_environment;
    if (!surroundings.display.isEmpty())
        environment.insert(QStringLiteral("DISPLAY"), QString::fromUtf8(surroundings.display));
    const QString startupID = QString::fromUtf8(surroundings.startupID);
    environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), startupID);
    return environment;
}

std::vector<LaunchCandidate> ApplicationLauncher::candidates(LaunchableApplication application)
{
    const QStringList folders =
        m_environment.value(QStringLiteral("PATH")).split(u':', Qt::SkipEmptyParts);
    const ProgramFinder find = [&folders](const QString& program) {
        return program.isEmpty() ? QString() : QStandardPaths::findExecutable(program, folders);
    };
    if (application == LaunchableApplication::terminal)
        return terminalCandidates(m_environment.value(QStringLiteral("TERMINAL")), find, realPath);
    std::vector<LaunchableEntry> installed;
    for (const QString& id : chromeEntryIDs() + chromiumEntryIDs()) {
        if (std::optional<LaunchableEntry> entry = launchable(id))
            installed.push_back(std::move(*entry));
    }
    std::optional<LaunchableEntry> standard;
    if (const std::optional<QString> id = defaultBrowser())
        standard = launchable(*id);
    return browserCandidates(installed, standard, find);
}

std::optional<LaunchableEntry> ApplicationLauncher::launchable(const QString& desktopEntryID)
{
    const std::optional<DesktopEntry> entry = m_entries.entry(desktopEntryID);
    if (!entry)
        return std::nullopt;
    const EntryCommands commands = readEntryCommands(entry->path);
    return LaunchableEntry{entry->id, commands.exec, commands.newWindowExec};
}

std::optional<QString> ApplicationLauncher::predictedIdentifier(const LaunchCandidate& candidate)
{
    if (!candidate.desktopEntryID.isEmpty())
        return m_entries.idOfWindows(candidate.desktopEntryID);
    const QString real = realPath(candidate.command.front());
    const QString name = programOf(real.isEmpty() ? candidate.command.front() : real);
    if (std::optional<QString> id = m_entries.idOfProgram(name))
        return id;
    if (isScript(candidate.command.front())) {
        // A wrapper's name does not determine the windows of the program that it starts.
        return std::nullopt;
    }
    return m_entries.resolve({{}, {}, name, name, 0}).desktopEntryID;
}

std::optional<QString> ApplicationLauncher::identifierOf(const Launch& launch,
                                                         const std::stop_token& stop)
{
    if (launch.bundleIdentifier || launch.process <= 0)
        return launch.bundleIdentifier;
    const auto end = std::chrono::steady_clock::now() + m_recognition;
    while (!stop.stop_requested() && std::chrono::steady_clock::now() < end) {
        const std::vector<ProcessID> processes = processesOfSession(launch.process);
        for (const ProcessID process : processes) {
            if (auto id = m_entries.resolve({{}, {}, {}, {}, process}).desktopEntryID)
                return id;
        }
        if (processes.empty())
            return std::nullopt;
        std::this_thread::sleep_for(recognitionInterval);
    }
    return std::nullopt;
}

} // namespace kelpa
