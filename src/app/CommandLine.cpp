#include "app/CommandLine.h"

#include "platform/sqlite/SettingsFiles.h"

#include <QCommandLineParser>

namespace kelpa {

namespace {

struct Options
{
    QCommandLineOption show{
        QStringLiteral("show"),
        QStringLiteral("Bring Kelpa forward if it runs, and start it if not, as "
                       "without any option.")};
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
    parser.addOptions({options.show, options.settings, options.desktop, options.aboutDesktop,
                       options.listBackups, options.restore, options.help, options.version});
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
    else if (!parser.positionalArguments().isEmpty())
        line.error = QStringLiteral("unexpected argument '%1'; --help lists what there is")
                         .arg(parser.positionalArguments().constFirst());
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
    return parser.helpText();
}

} // namespace kelpa
