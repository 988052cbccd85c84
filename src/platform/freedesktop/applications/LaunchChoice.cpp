#include "platform/freedesktop/applications/LaunchChoice.h"

#include <QFileInfo>
#include <QProcess>

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace kelpa {

namespace {

struct KnownTerminal
{
    std::string_view program;
    /// The option by which a running instance opens a window instead of coming forward; empty where
    /// every start opens one.
    std::string_view newWindow = {};
};

/// Terminals of desktops first: whoever has one installed uses that desktop.
constexpr std::array knownTerminals = {
    KnownTerminal{"ptyxis", "--new-window"},
    KnownTerminal{"gnome-terminal", "--window"},
    KnownTerminal{"kgx"},
    KnownTerminal{"konsole"},
    KnownTerminal{"xfce4-terminal"},
    KnownTerminal{"mate-terminal", "--window"},
    KnownTerminal{"lxterminal"},
    KnownTerminal{"qterminal"},
    KnownTerminal{"deepin-terminal"},
    KnownTerminal{"terminator"},
    KnownTerminal{"tilix"},
    KnownTerminal{"terminology"},
    KnownTerminal{"alacritty"},
    KnownTerminal{"kitty"},
    KnownTerminal{"wezterm"},
    KnownTerminal{"sakura"},
    KnownTerminal{"urxvt"},
    KnownTerminal{"st"},
    KnownTerminal{"xterm"},
    KnownTerminal{"uxterm"},
};

QString toText(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

const QString wrapperSuffix = QStringLiteral(".wrapper");

QStringList newWindowArguments(const QString& program)
{
    for (const KnownTerminal& known : knownTerminals) {
        if (toText(known.program) == program && !known.newWindow.empty())
            return {toText(known.newWindow)};
    }
    return {};
}

/// The command that makes the terminal at `path` open a window.
QStringList newWindowCommand(const QString& path, const ProgramFinder& find,
                             const LinkFollower& follow)
{
    const QString real = follow(path);
    const QString program = programOf(real.isEmpty() ? path : real);
    if (!real.endsWith(wrapperSuffix))
        return QStringList(path) + newWindowArguments(program);
    // A wrapper knows the options of another terminal instead of the program's own.
    const QString wrapped = find(QFileInfo(real).path() + u'/' + program);
    return wrapped.isEmpty() ? QStringList(path)
                             : QStringList(wrapped) + newWindowArguments(program);
}

const QString newWindowOption = QStringLiteral("--new-window");

struct FreeArguments
{
    void operator()(char** arguments) const { g_strfreev(arguments); }
};

/// Absent when the program is not installed.
std::optional<QStringList> foundCommand(const QString& exec, const ProgramFinder& find)
{
    std::optional<QStringList> command = commandOf(exec);
    if (!command)
        return std::nullopt;
    command->front() = find(command->front());
    return command->front().isEmpty() ? std::nullopt : std::move(command);
}

std::optional<LaunchCandidate> candidateOf(const LaunchableEntry& entry, const ProgramFinder& find,
                                           const QStringList& otherwise)
{
    if (std::optional<QStringList> command = foundCommand(entry.newWindowExec, find))
        return LaunchCandidate{*command, entry.id};
    if (std::optional<QStringList> command = foundCommand(entry.exec, find))
        return LaunchCandidate{*command + otherwise, entry.id};
    return std::nullopt;
}

void addFamily(std::vector<LaunchCandidate>& candidates, const QStringList& ids,
               const QStringList& programs, const std::vector<LaunchableEntry>& installed,
               const ProgramFinder& find)
{
    for (const QString& id : ids) {
        const auto entry = std::find_if(installed.begin(), installed.end(),
                                        [&](const LaunchableEntry& each) { return each.id == id; });
        if (entry == installed.end())
            continue;
        if (auto candidate = candidateOf(*entry, find, {newWindowOption}))
            candidates.push_back(std::move(*candidate));
    }
    for (const QString& program : programs) {
        if (const QString path = find(program); !path.isEmpty())
            candidates.push_back({{path, newWindowOption}, {}});
    }
}

/// Exec with `document` in place of an argument that is one of the field codes in `codes`. All
/// others are dropped.
std::optional<QStringList> expandedCommand(const QString& exec, const QString& codes,
                                           const QString& document)
{
    char** parsed = nullptr;
    int count = 0;
    if (g_shell_parse_argv(exec.toUtf8().constData(), &count, &parsed, nullptr) == FALSE)
        return std::nullopt;
    const std::unique_ptr<char*, FreeArguments> arguments(parsed);
    QStringList command;
    for (int index = 0; index < count; ++index) {
        const QString argument = QString::fromUtf8(arguments.get()[index]);
        if (index > 0 && argument.size() == 2 && argument[0] == u'%' &&
            codes.contains(argument[1])) {
            command.append(document);
            continue;
        }
        QString expanded;
        for (qsizetype at = 0; at < argument.size(); ++at) {
            if (argument[at] != u'%')
                expanded += argument[at];
            else if (++at < argument.size() && argument[at] == u'%')
                expanded += u'%';
        }
        // Without a program what follows, or the document, would be run.
        if (index == 0 && expanded.isEmpty())
            return std::nullopt;
        // An argument that was only a field code is dropped with it.
        if (!expanded.isEmpty() || argument.isEmpty())
            command.append(expanded);
    }
    if (command.isEmpty() || command.front().isEmpty())
        return std::nullopt;
    return command;
}

} // namespace

std::optional<QStringList> commandOf(const QString& exec)
{
    return expandedCommand(exec, {}, {});
}

std::optional<QStringList> commandOf(const QString& exec, const QString& document)
{
    const bool isPath = document.startsWith(u'/');
    // Codes of URLs take paths as well.
    const QString codes = isPath ? QStringLiteral("fFuU") : QStringLiteral("uU");
    std::optional<QStringList> command = expandedCommand(exec, codes, document);
    // The program may happen to be called as the document is.
    return command && command->indexOf(document, 1) > 0 ? std::move(command) : std::nullopt;
}

QString programOf(const QString& path)
{
    QString name = QFileInfo(path).fileName();
    if (name.endsWith(wrapperSuffix))
        name.chop(wrapperSuffix.size());
    return name;
}

std::vector<LaunchCandidate> terminalCandidates(const QString& terminalVariable,
                                                const ProgramFinder& find,
                                                const LinkFollower& follow)
{
    std::vector<LaunchCandidate> candidates;
    const auto add = [&](QStringList command) {
        command.front() = find(command.front());
        if (command.front().isEmpty())
            return;
        if (command.size() == 1)
            command = newWindowCommand(command.front(), find, follow);
        const bool isKnown =
            std::any_of(candidates.begin(), candidates.end(), [&](const LaunchCandidate& each) {
                return each.command.front() == command.front();
            });
        if (!isKnown)
            candidates.push_back({command, {}});
    };
    if (const QStringList chosen = QProcess::splitCommand(terminalVariable); !chosen.isEmpty())
        add(chosen);
    add({QStringLiteral("xdg-terminal-exec")});
    add({QStringLiteral("x-terminal-emulator")});
    for (const KnownTerminal& known : knownTerminals)
        add({toText(known.program)});
    return candidates;
}

QStringList chromeEntryIDs()
{
    return {QStringLiteral("google-chrome"), QStringLiteral("com.google.Chrome")};
}

QStringList chromiumEntryIDs()
{
    return {QStringLiteral("chromium"), QStringLiteral("chromium-browser"),
            QStringLiteral("chromium_chromium"), QStringLiteral("org.chromium.Chromium")};
}

std::vector<LaunchCandidate> browserCandidates(const std::vector<LaunchableEntry>& installed,
                                               const std::optional<LaunchableEntry>& defaultBrowser,
                                               const ProgramFinder& find)
{
    std::vector<LaunchCandidate> candidates;
    addFamily(candidates, chromeEntryIDs(),
              {QStringLiteral("google-chrome"), QStringLiteral("google-chrome-stable")}, installed,
              find);
    addFamily(candidates, chromiumEntryIDs(),
              {QStringLiteral("chromium"), QStringLiteral("chromium-browser")}, installed, find);
    if (defaultBrowser) {
        if (auto candidate = candidateOf(*defaultBrowser, find, {}))
            candidates.push_back(std::move(*candidate));
    }
    return candidates;
}

} // namespace kelpa
