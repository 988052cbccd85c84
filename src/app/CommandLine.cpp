#include "app/CommandLine.h"

#include "automation/Commands.h"
#include "platform/sqlite/SettingsFiles.h"

#include <QCommandLineParser>

namespace kelpa {

namespace {

QString formatNames()
{
    QStringList names;
    for (const TransferFormat format : allTransferFormats)
        names.append(rawValue(format));
    return names.join(QStringLiteral(", "));
}

struct Options
{
    QCommandLineOption show{
        QStringLiteral("show"),
        QStringLiteral("Bring Kelpa forward if it runs, and start it if not, as "
                       "without any option.")};
    QCommandLineOption hidden{QStringLiteral("hidden"),
                              QStringLiteral("Start without a window and listen for what brings "
                                             "Kelpa forward, as at the beginning of a session.")};
    QCommandLineOption service{
        QStringLiteral("service"),
        QStringLiteral("As --hidden, for a call by the session bus: Kelpa ends some minutes after "
                       "the last call where closing quits.")};
    QCommandLineOption newTodo{QStringLiteral("new-todo"),
                               QStringLiteral("Open the field for a todo over whatever is in "
                                              "front; start Kelpa without a window if it does "
                                              "not run.")};
    QCommandLineOption settings{QStringLiteral("settings"),
                                QStringLiteral("Keep the board in this file."),
                                QStringLiteral("path"), defaultSettingsPath()};
    QCommandLineOption desktop{QStringLiteral("desktop"),
                               QStringLiteral("Work on this desktop, whatever the session "
                                              "offers: %1.")
                                   .arg(desktopNames().join(QStringLiteral(", "))),
                               QStringLiteral("name")};
    QCommandLineOption aboutDesktop{
        QStringLiteral("about-desktop"),
        QStringLiteral("Say what the session offers, what Kelpa can do there, and why not the "
                       "rest.")};
    QCommandLineOption listBackups{QStringLiteral("list-backups"),
                                   QStringLiteral("List the backups of the board.")};
    QCommandLineOption restore{
        QStringLiteral("restore"),
        QStringLiteral("Replace the board by a backup; the board before is kept as another one."),
        QStringLiteral("name")};
    QCommandLineOption exportTo{
        QStringLiteral("export"),
        QStringLiteral("Write the board to the file that follows, or to standard output: %1.")
            .arg(formatNames()),
        QStringLiteral("format")};
    QCommandLineOption goal{QStringLiteral("goal"),
                            QStringLiteral("With --export: only the goal of this title."),
                            QStringLiteral("title")};
    QCommandLineOption import{
        QStringLiteral("import"),
        QStringLiteral("Add a file to the board; the board before is kept as a backup."),
        QStringLiteral("file")};
    QCommandLineOption format{QStringLiteral("format"),
                              QStringLiteral("With --import: what the file is, whatever it looks "
                                             "like."),
                              QStringLiteral("format")};
    QCommandLineOption replace{QStringLiteral("replace"),
                               QStringLiteral("With --import: replace the board by the file.")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("List what there is.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Say which version this is.")};
};

void describe(QCommandLineParser& parser, const Options& options)
{
    parser.setApplicationDescription(QStringLiteral("Puts open windows back where the work is."));
    // The toolkit's own options are words with a single dash.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({options.show, options.hidden, options.service, options.newTodo,
                       options.settings, options.desktop, options.aboutDesktop, options.listBackups,
                       options.restore, options.exportTo, options.goal, options.import,
                       options.format, options.replace, options.help, options.version});
}

/// Why the parser's result is invalid; empty when it is valid.
QString readTransfer(const QCommandLineParser& parser, const Options& options, CommandLine& line)
{
    const auto formatOf = [&parser](const QCommandLineOption& option) {
        return transferFormatFromRawValue(parser.value(option));
    };
    const bool isExport = parser.isSet(options.exportTo);
    const bool isImport = parser.isSet(options.import);
    const QStringList files = parser.positionalArguments();
    if (const qsizetype known = isExport ? 1 : 0; files.size() > known)
        return QStringLiteral("unexpected argument '%1'; --help lists what there is")
            .arg(files.at(known));
    if (isExport && isImport)
        return QStringLiteral("--export and --import exclude each other");
    if (!isExport && parser.isSet(options.goal))
        return QStringLiteral("--goal needs --export");
    if (!isImport && (parser.isSet(options.format) || parser.isSet(options.replace)))
        return QStringLiteral("--format and --replace need --import");
    for (const QCommandLineOption& option : {options.exportTo, options.format}) {
        if (parser.isSet(option) && !formatOf(option))
            return QStringLiteral("there is no format '%1'; there are %2")
                .arg(parser.value(option), formatNames());
    }
    if (isExport)
        line.exportCommand = {*formatOf(options.exportTo), parser.value(options.goal),
                              files.value(0)};
    if (isImport)
        line.importCommand = {parser.value(options.import), formatOf(options.format),
                              parser.isSet(options.replace) ? ImportMode::replace
                                                            : ImportMode::add};
    return {};
}

} // namespace

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

CommandLine readCommandLine(const QStringList& arguments)
{
    const Options options;
    QCommandLineParser parser;
    describe(parser, options);
    CommandLine line;
    if (!parser.parse(arguments))
        line.error = parser.errorText();
    else
        line.error = line.transferError = readTransfer(parser, options, line);
    line.settingsPath = parser.value(options.settings);
    if (parser.isSet(options.desktop)) {
        const QString name = parser.value(options.desktop);
        line.desktop = desktopNamed(name);
        if (!line.desktop)
            line.desktopError =
                QStringLiteral("there is no desktop '%1'; --help lists them").arg(name);
        if (line.error.isEmpty())
            line.error = line.desktopError;
    }
    line.asksForDesktop = parser.isSet(options.aboutDesktop);
    line.asksForBackups = parser.isSet(options.listBackups);
    line.restoredBackup = parser.value(options.restore);
    if (line.error.isEmpty() && parser.isSet(options.restore) && line.restoredBackup.isEmpty())
        line.error = QStringLiteral("--restore needs a name; --list-backups lists them");
    line.startsForCall = parser.isSet(options.service);
    line.startsHidden = line.startsForCall || parser.isSet(options.hidden);
    line.asksForTodo = parser.isSet(options.newTodo);
    line.asksForHelp = parser.isSet(options.help);
    line.asksForVersion = parser.isSet(options.version);
    return line;
}

std::optional<bool> reducedMotionFromText(const QByteArray& text)
{
    if (text == "1")
        return true;
    if (text == "0")
        return false;
    return std::nullopt;
}

QString commandLineHelp()
{
    QCommandLineParser parser;
    describe(parser, Options());
    return parser.helpText() + u'\n' + automation::commandsHelp();
}

} // namespace kelpa
