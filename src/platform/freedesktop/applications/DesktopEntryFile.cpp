#include "platform/freedesktop/applications/DesktopEntryFile.h"

#include "platform/DataHome.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <memory>

namespace kelpa {

namespace {

constexpr qint64 maximalEntrySize = 1 << 20;

QString text(GDesktopAppInfo* info, const char* key)
{
    const GlibPointer<char> value(g_desktop_app_info_get_string(info, key));
    return QString::fromUtf8(value.get()).trimmed();
}

/// The program's file name, when the command is that program with nothing but options and field
/// codes: "python3 tool.py" would claim every Python program, "env" and "flatpak run" others.
QString programOfEntry(GDesktopAppInfo* info)
{
    if (g_desktop_app_info_get_boolean(info, "Terminal") != FALSE) {
        // The window belongs to the process of a terminal.
        return {};
    }
    const QStringList command =
        QProcess::splitCommand(QString::fromUtf8(g_app_info_get_commandline(G_APP_INFO(info))));
    const auto isPlain = [](const QString& argument) {
        return argument.startsWith(u'-') || argument.startsWith(u'%');
    };
    if (command.isEmpty() || !std::all_of(command.begin() + 1, command.end(), isPlain))
        return {};
    return QFileInfo(command.front()).fileName();
}

} // namespace

std::optional<DesktopEntry> readDesktopEntry(const QString& path, const QString& id)
{
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > maximalEntrySize)
        return std::nullopt;
    const GObjectPointer<GDesktopAppInfo> info(
        g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
    if (!info)
        return std::nullopt;
    DesktopEntry entry;
    entry.path = path;
    entry.id = id;
    entry.name = QString::fromUtf8(g_app_info_get_name(G_APP_INFO(info.get()))).trimmed();
    entry.startupWmClass =
        QString::fromUtf8(g_desktop_app_info_get_startup_wm_class(info.get())).trimmed();
    entry.icon = text(info.get(), "Icon");
    entry.program = programOfEntry(info.get());
    entry.isHiddenFromMenus = g_desktop_app_info_get_nodisplay(info.get()) != FALSE;
    entry.isDeleted = g_desktop_app_info_get_is_hidden(info.get()) != FALSE;
    return entry;
}

EntryCommands readEntryCommands(const QString& path)
{
    const GlibPointer<GKeyFile> file(g_key_file_new());
    if (g_key_file_load_from_file(file.get(), QFile::encodeName(path).constData(), G_KEY_FILE_NONE,
                                  nullptr) == FALSE)
        return {};
    const auto exec = [&file](const char* group) {
        const GlibPointer<char> value(g_key_file_get_string(file.get(), group, "Exec", nullptr));
        return QString::fromUtf8(value.get());
    };
    return {exec("Desktop Entry"), exec("Desktop Action new-window")};
}

std::optional<QString> entryIDOfFile(const QString& fileName)
{
    const QString suffix = QStringLiteral(".desktop");
    return fileName.endsWith(suffix) ? std::optional(fileName.chopped(suffix.size()))
                                     : std::nullopt;
}

std::vector<QString> applicationDataDirectories()
{
    QString shared = qEnvironmentVariable("XDG_DATA_DIRS");
    if (shared.isEmpty())
        shared = QStringLiteral("/usr/local/share:/usr/share");
    std::vector<QString> directories{dataHome()};
    for (const QString& directory : shared.split(u':', Qt::SkipEmptyParts)) {
        const QString clean = QDir::cleanPath(directory);
        const bool isKnown =
            std::find(directories.begin(), directories.end(), clean) != directories.end();
        // The base directory specification requires to ignore relative paths.
        if (QDir::isAbsolutePath(clean) && !isKnown)
            directories.push_back(clean);
    }
    return directories;
}

} // namespace kelpa
