#include "platform/freedesktop/applications/AutostartEntry.h"

#include "platform/freedesktop/bus/GlibPointers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace kelpa {

namespace {

/// An entry is a few lines.
constexpr qint64 longestEntry = 65'536;

/// A desktop entry's command, quoted as the entry's language asks.
QByteArray commandLine(const QStringList& command)
{
    QByteArray line;
    for (const QString& argument : command) {
        line += line.isEmpty() ? "\"" : " \"";
        for (const char byte : argument.toUtf8()) {
            if (byte == '"' || byte == '`' || byte == '$' || byte == '\\')
                line += '\\';
            else if (byte == '%')
                line += '%';
            line += byte;
        }
        line += '"';
    }
    return line;
}

/// As a key file has a string.
QByteArray escaped(QByteArray text)
{
    return text.replace('\\', "\\\\").replace('\n', "\\n");
}

} // namespace

QByteArray autostartEntry(const QStringList& command)
{
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Kelpa\n"
           "Icon=org.kelpa.Kelpa\n"
           "Exec=" +
           escaped(commandLine(command)) +
           "\n"
           "Terminal=false\n"
           "StartupNotify=false\n";
}

bool starts(const QByteArray& entry, const QStringList& command)
{
    const GlibPointer<GKeyFile> file(g_key_file_new());
    if (!g_key_file_load_from_data(file.get(), entry.constData(), static_cast<gsize>(entry.size()),
                                   G_KEY_FILE_NONE, nullptr))
        return false;
    constexpr const char* group = "Desktop Entry";
    const auto isSet = [&file](const char* key, bool value) {
        return g_key_file_has_key(file.get(), group, key, nullptr) != FALSE &&
               (g_key_file_get_boolean(file.get(), group, key, nullptr) != FALSE) == value;
    };
    const GlibPointer<char> line(g_key_file_get_string(file.get(), group, "Exec", nullptr));
    return line != nullptr && line.get() == commandLine(command) && !isSet("Hidden", true) &&
           !isSet("X-GNOME-Autostart-enabled", false);
}

AutostartEntry::AutostartEntry(const QString& folder, QStringList command)
    : m_path(QDir(folder).filePath(QStringLiteral("autostart/org.kelpa.Kelpa.desktop"))),
      m_command(std::move(command))
{}

bool AutostartEntry::isOn() const
{
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) && starts(file.read(longestEntry), m_command);
}

bool AutostartEntry::set(bool isOn)
{
    if (!isOn)
        return QFile::remove(m_path) || !QFileInfo::exists(m_path);
    if (!QDir().mkpath(QFileInfo(m_path).path()))
        return false;
    QSaveFile file(m_path);
    return file.open(QIODevice::WriteOnly) && file.write(autostartEntry(m_command)) >= 0 &&
           file.commit();
}

} // namespace kelpa
