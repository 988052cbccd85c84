// Every text of the interface comes from its table: read from the sources.
#include "views/SourceText.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <map>

namespace kelpa {
namespace {

using test::cppFiles;
using test::fits;
using test::matches;
using test::qmlFiles;
using test::sources;
using test::withoutComments;

struct Literal
{
    /// The name before the colon of its binding, or the name of the function around it.
    QString place;
    QString text;
    int line = 0;
};

QList<Literal> literals(const QString& source)
{
    // A declaration or a binding at the start of a line says what the texts after it are for.
    static const QRegularExpression parts(
        QStringLiteral(R"RE(^\s*(?:(?:readonly|required|default) )*(?:property [\w.<>]+ )?)RE"
                       R"RE((?:(?<place>[\w.]+):|function (?<function>\w+)\(|\w+ \{))RE"
                       R"RE(|(?<quote>["'`])(?<text>(?:(?!\k<quote>)[^\\]|\\.)*)\k<quote>)RE"),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QList<Literal> found;
    QString place;
    for (auto all = parts.globalMatch(source); all.hasNext();) {
        const QRegularExpressionMatch match = all.next();
        if (match.capturedStart(u"quote") < 0)
            place = match.captured(u"place") + match.captured(u"function");
        else
            found.append({place, match.captured(u"text"),
                          static_cast<int>(source.left(match.capturedStart()).count(u'\n')) + 1});
    }
    return found;
}

/// Whether a person sees or hears the value that is bound there.
bool isForPeople(const QString& place)
{
    return fits(place, u"(?i)(text|title|label|placeholder|explanation|heading|help|message|hint|"
                       u"tip|caption|description)$|^Accessible\\.name$");
}

/// Whether the program itself reads it: a name, a colour, a kind of data, a place of a resource.
bool isForTheProgram(const QString& text)
{
    return fits(text, u"^([a-z][\\w-]*|#[0-9a-f]+|[a-z]+/[a-z.-]+|(image|qrc):\\S+|\\w+\\.qml)$");
}

bool isFromTheTable(const Literal& literal)
{
    if (isForPeople(literal.place))
        return fits(literal.text, u"^((\\s|\\\\n)*|#[0-9a-f]{6,8})$");
    // The keys of a shortcut have the names that the toolkit gives them.
    return fits(literal.place, u"^sequences?$") || !fits(literal.text, u"\\p{L}") ||
           isForTheProgram(literal.text);
}

QStringList bypassing(const QString& source)
{
    QStringList found;
    for (const Literal& literal : literals(withoutComments(source)))
        if (!isFromTheTable(literal))
            found.append(literal.text);
    return found;
}

TEST(TextSources, A_text_that_bypasses_the_table_is_found)
{
    EXPECT_EQ(bypassing(QStringLiteral("AppText {\n    text: \"Settings\"\n}")),
              QStringList{QStringLiteral("Settings")});
    EXPECT_EQ(bypassing(QStringLiteral("AppText {\n    text: 'x'\n}")),
              QStringList{QStringLiteral("x")});
    EXPECT_EQ(bypassing(QStringLiteral("    Accessible.name: root.owner + \": \" + root.title")),
              QStringList{QStringLiteral(": ")});
    EXPECT_EQ(bypassing(QStringLiteral("    readonly property string shownTitle: a\n"
                                       "            ? b : \"Window\"")),
              QStringList{QStringLiteral("Window")});
    EXPECT_EQ(bypassing(QStringLiteral("    onClicked: root.show(\"Not saved\")")),
              QStringList{QStringLiteral("Not saved")});
    EXPECT_EQ(bypassing(QStringLiteral("    readonly property var all: [\"红\", \"blue\"]")),
              QStringList{QStringLiteral("红")});
    EXPECT_EQ(bypassing(QStringLiteral("    text: `${count} todos`")),
              QStringList{QStringLiteral("${count} todos")});
}

TEST(TextSources, What_is_not_for_people_is_left_alone)
{
    EXPECT_EQ(bypassing(QStringLiteral("Item {\n"
                                       "    // Says \"Hello there\".\n"
                                       "    text: root.title + \"\\n\" + root.help\n"
                                       "    symbol: root.isOpen ? \"chevron-down\" : \"\"\n"
                                       "    color: isDark ? \"#1b1c1f\" : \"transparent\"\n"
                                       "    keys: [\"text/plain\"]\n"
                                       "    source: \"image://symbol/\" + root.name\n"
                                       "    property string label\n"
                                       "    function ask(): void {\n"
                                       "        root.choose(\"circle\");\n"
                                       "    }\n"
                                       "}\n")),
              QStringList());
}

TEST(TextSources, No_view_has_a_text_of_its_own)
{
    const std::map<QString, QString> views = sources(QStringLiteral("src/views"), qmlFiles);
    EXPECT_GE(views.size(), 39U);
    for (const auto& [path, source] : views) {
        for (const Literal& literal : literals(source)) {
            EXPECT_TRUE(isFromTheTable(literal))
                << qPrintable(path) << ':' << literal.line << ": \"" << qPrintable(literal.text)
                << "\" is not of the table of texts";
        }
        EXPECT_FALSE(fits(source, u"\\bqsTr(Id)?\\(")) << qPrintable(path);
    }
}

/// A literal of C++ that is not for people who look at the interface.
struct NamedException
{
    const char16_t* path;
    const char16_t* text;
};

constexpr auto namedExceptions = std::to_array<NamedException>({
    // What a terminal shows, before there is an interface or a language.
    {u"^src/app/(desktops/AboutDesktop|AutomationCommands|BackupCommands|ClosedBoard|CommandLine|"
     u"TransferCommands)\\.cpp$",
     u""},
    // What programs read and what a terminal shows: methods, members and errors of commands.
    {u"^src/automation/", u""},
    {u"^src/app/AutomationService\\.cpp$",
     u"^(the list has more than %1 MiB of text|too many lists are under way)$"},
    {u"^src/app/SingleInstance\\.cpp$", u"^Kelpa is starting or ending$"},
    {u"^src/app/SearchInterfaces\\.cpp$", u""},
    {u"^src/app/SearchService\\.cpp$",
     u"^([A-Z][A-Za-z]+|\\. GThemedIcon %1 %2|too many searches are under way|this is no result of "
     u"Kelpa)$"},
    {u"^src/main\\.cpp$", u"^(Kelpa |, Qt %1.*)$"},
    {u"^src/platform/sqlite/SettingsError\\.cpp$", u""},
    // Names of formats, and the marks in their files.
    {u"^src/transfer/(Calendar(File|Todo|Transfer)|Markdown(Blocks|Inline|Transfer)|TodoTxtLine|"
     u"TransferFormat)\\.cpp$",
     u""},
    // Variables of the environment, atoms, and keys of attributes.
    {u"^src/(app|platform)/|^src/main\\.cpp$", u"^[A-Z][A-Z0-9_]*=?$"},
    // Statements of SQL.
    {u"^src/platform/sqlite/SqliteFile(Copy)?\\.cpp$",
     u"^(PRAGMA|SELECT|INSERT|CREATE|BEGIN|COMMIT|ROLLBACK|ON CONFLICT)\\b"},
    // Methods and types of the message bus, and the properties that an object reports there.
    {u"^src/platform/freedesktop/\\w+/"
     u"(AtspiBus|ApplicationService|BlockingBus|BusWatch|PrimaryInstance|"
     u"SessionBusStandIn|ToolkitBuses)\\.cpp$",
     u"^([A-Z][A-Za-z]+|<.*|[(a-z].*[)\\]],? ?|uint32 1, %i, true\\))$"},
    {u"^src/platform/freedesktop/bus/BusObject\\.cpp$",
     u"^(Version|Get|GetAll|Set|The properties are read-only|There is no (interface|property) "
     u"'%1')$"},
    {u"^src/platform/freedesktop/\\w+/ApplicationService\\.cpp$", u"^There is no action '%1'$"},
    {u"^src/platform/freedesktop/\\w+/DesktopNotifications\\.cpp$",
     u"^(Notify|CloseNotification|ActionInvoked|Kelpa)$"},
    {u"^src/platform/freedesktop/\\w+/"
     u"(PortalFileDialogs|PortalRe(quest|ading)|ShortcutsBus|\\w+Portal)\\.cpp$",
     u"^(Activated|BindShortcuts|Close|Closed|ConfigureShortcuts|CreateSession|"
     u"Disconnected|Get|NameOwnerChanged|OpenFile|Register|RequestBackground|"
     u"Response|SaveFile|ShortcutsChanged|StartServiceByName|x11:|/request/)$"},
    {u"^src/views/transfer/ImportController\\.cpp$", u"^ · $"},
    {u"^src/model/TodoLines\\.cpp$", u"^([-*+•]+| |xX)$"},
    {u"^src/platform/freedesktop/\\w+/SessionBusStandIn\\.cpp$",
     u"^There is no answer while the session bus is silent$"},
    {u"^src/platform/freedesktop/\\w+/(PortalSettings|SettingsPortal)\\.cpp$",
     u"^(Read(All)?|SettingChanged|AnimationDurationFactor|AccentColor)$"},
    // Groups and keys of desktop entries and icon themes, and how a picture's file begins.
    {u"^src/platform/freedesktop/\\w+/DesktopEntryFile\\.cpp$",
     u"^(Terminal|Icon|Exec|Desktop (Entry|Action new-window))$"},
    {u"^src/platform/freedesktop/\\w+/AutostartEntry\\.cpp$", u""},
    {u"^src/platform/freedesktop/\\w+/IconTheme\\.cpp$",
     u"^(Icon Theme/[A-Za-z]+|Scalable|Fixed)$"},
    {u"^src/platform/freedesktop/\\w+/IconFile\\.cpp$", u"^/\\* XPM$"},
    // What the kernel and a launcher's protocol say.
    {u"^src/platform/ExecutableName\\.h$", u"^ \\(deleted\\)$"},
    {u"^src/platform/x11/\\w+/XSettings\\.cpp$", u"^Gtk/EnableAnimations$"},
    {u"^src/platform/x11/\\w+/StartupNotification\\.cpp$", u"^remove: ID=$"},
    // Members of interfaces on the bus, and the identity of a run.
    {u"^src/platform/gnome/(ShellClient(Calls)?|GnomeWindowServer)\\.cpp$", u"^(gnome |\\w+)$"},
    {u"^src/platform/kwin/Kwin(LauncherKey|Link|Presence|Screenshots|ScriptCalls)\\.cpp$",
     u"^([A-Z][A-Za-z]+|Only Kelpa's script within KWin calls this|"
     u"arg1='activate application launcher'|activate application launcher|KWin version: )$"},
    // Commands of sway and their parts, and names that tell windows and Kelpas apart.
    {u"^src/platform/wayland/sway/(SwayBinding|SwayCommands)\\.cpp$",
     u"^(nop kelpa|kelpa: binding removed|Super_[LR]|bindsym --no-warn| --inhibited --release |\\] "
     u"|"
     u"(workspace|move) --no-auto-back-and-forth (container to workspace )?number )$"},
    {u"^src/platform/wayland/wlr/(ToplevelNames|WlrWindowServer)\\.cpp$", u"^(id|kelpa) $"},
    // How a file of Kelpa's begins, and a command.
    {u"^src/platform/numbers/NameTable\\.cpp$", u"^Kelpa window names 1$"},
    {u"^src/store/WindowStoreTodos\\.cpp$", u"^kelpa --show$"},
    // What programs write into titles, in many languages: compared, never shown.
    {u"^src/windows/memory/(CommonTitles|TitleIdentity|TitleParts|TitleWords)\\.cpp$", u""},
    // Names: of the product, of places, of types, of fonts.
    {u"^src/main\\.cpp$|^src/views/(scene/SymbolItem|ViewEngine)\\.cpp$",
     u"^(Kelpa(\\.(Scene|Appearance))?|SymbolPictures|ViewSettings)$"},
    {u"^src/views/controls/(FocusRing|HoverTip)\\.cpp$", u"^(FocusFrame|AppToolTip)\\.qml$"},
    {u"^src/store/desktop/Permissions\\.cpp$", u"^Privacy_(Accessibility|ScreenCapture)$"},
    {u"^src/views/scene/BoardDragSource\\.cpp$", u"^QShapedPixmapWindow$"},
    {u"^src/views/appearance/ViewSettings\\.cpp$", u"^Noto (Sans( CJK (JP|KR|SC))?|Color Emoji)$"},
});

bool isExcepted(const QString& path, const QString& text)
{
    return std::ranges::any_of(namedExceptions, [&](const NamedException& each) {
        return fits(path, each.path) && fits(text, each.text);
    });
}

/// The literals that read like a text: they begin with a capital, have a blank, or have letters
/// beyond those of the program's own language.
QStringList textsInCpp(QString source)
{
    // Included files, and messages to developers.
    static const QRegularExpression notForPeople(
        QStringLiteral(
            R"RE(^\s*#\s*include[^\n]*|\b(?:static_assert|qC(?:Debug|Info|Warning))\([^;]*;|)RE"
            R"RE((?<!\w)'(?:[^'\\\n]|\\.)'|)RE"
            R"RE((?:\b(?:qFatal|QML_UNCREATABLE|Q_CLASSINFO)\(|\bfprintf\(\s*stderr,|)RE"
            R"RE(\bqmlWarning\([^;"]*)(?:\s*,?\s*"(?:[^"\\\n]|\\.)*")+)RE"),
        QRegularExpression::MultilineOption);
    source.remove(notForPeople);
    QStringList found;
    for (const QString& text : matches(source, u"\"((?:[^\"\\\\\\n]|\\\\.)*)\""))
        if (fits(text, u"^\\p{Lu}|[ \u00a0]|[^\\x00-\\x7f]"))
            found.append(text);
    return found;
}

TEST(TextSources, A_text_in_a_class_is_found)
{
    EXPECT_EQ(textsInCpp(QStringLiteral("show(QStringLiteral(\"Saved\"));")),
              QStringList{QStringLiteral("Saved")});
    EXPECT_EQ(
        textsInCpp(QStringLiteral("tr(\"not saved\"); x = u\"OK\"_s; y = QLatin1String(\"a, b\")")),
        (QStringList{QStringLiteral("not saved"), QStringLiteral("OK"), QStringLiteral("a, b")}));
    EXPECT_EQ(textsInCpp(QStringLiteral("constexpr auto name = u\"目标\";")),
              QStringList{QStringLiteral("目标")});
    EXPECT_FALSE(isExcepted(QStringLiteral("src/views/Toast.cpp"), QStringLiteral("Saved")));
    EXPECT_FALSE(isExcepted(QStringLiteral("src/views/Toast.cpp"), QStringLiteral("OK")));
    EXPECT_FALSE(isExcepted(QStringLiteral("src/main.cpp"), QStringLiteral("Kelpa is full")));
}

TEST(TextSources, What_developers_read_in_a_class_is_left_alone)
{
    EXPECT_EQ(
        textsInCpp(QStringLiteral("#include \"views/Toast.h\"\n"
                                  "qFatal(\"broken invariant: %d is\"\n    \" odd\", n);\n"
                                  "std::fprintf(stderr, \"kelpa: No board\\n\");\n"
                                  "qCDebug(logStore, \"%s\",\n    ok ? \"is open\" : \"Lost\");\n"
                                  "static_assert(a < b, \"Not in order\");\n"
                                  "key(\"window-count\", 'A', ' ');\n")),
        QStringList());
}

TEST(TextSources, No_class_has_a_text_of_its_own)
{
    const std::map<QString, QString> classes = sources(QStringLiteral("src"), cppFiles);
    EXPECT_GE(classes.size(), 200U);
    for (const auto& [path, source] : classes) {
        if (path.startsWith(u"src/text/"))
            continue;
        for (const QString& text : textsInCpp(source)) {
            EXPECT_TRUE(isExcepted(path, text))
                << qPrintable(path) << ": \"" << qPrintable(text) << "\" is not of the table";
        }
        EXPECT_FALSE(fits(source, u"[^\\w.>]tr\\(\"")) << qPrintable(path);
    }
}

TEST(TextSources, Every_exception_is_needed)
{
    const std::map<QString, QString> classes = sources(QStringLiteral("src"), cppFiles);
    for (const NamedException& each : namedExceptions) {
        EXPECT_TRUE(std::ranges::any_of(classes, [&each](const auto& file) {
            return fits(file.first, each.path) &&
                   std::ranges::any_of(textsInCpp(file.second), [&each](const QString& text) {
                       return fits(text, each.text);
                   });
        })) << qPrintable(QString::fromUtf16(each.path));
    }
}

} // namespace
} // namespace kelpa
