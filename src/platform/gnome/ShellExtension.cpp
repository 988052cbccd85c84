#include "platform/gnome/ShellExtension.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

#include <gio/gio.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace kelpa::gnome {

namespace {

/// Of the metadata: the program that the extension serves.
constexpr QLatin1String programKey("program");
constexpr int programLimit = 2000;
/// From this version on the Shell loads extensions as modules.
constexpr int firstWithModules = 45;

QString folderIn(const QString& dataFolder)
{
    return dataFolder + QStringLiteral("/gnome-shell/extensions/") + QLatin1String(extensionID);
}

bool hasExtension(const QString& folder)
{
    return QFileInfo::exists(folder + QStringLiteral("/metadata.json"));
}

QString formOf(int shellVersion)
{
    return shellVersion >= firstWithModules ? QStringLiteral("45") : QStringLiteral("43");
}

bool copyFolder(const QString& from, const QString& to)
{
    if (!QDir().mkpath(to))
        return false;
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString target = to + u'/' + QDir(from).relativeFilePath(path);
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(path, target))
            return false;
    }
    return true;
}

/// Empty where there is none, or none that can be read.
QJsonObject metadataIn(const QString& folder)
{
    QFile file(folder + QStringLiteral("/metadata.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

/// Names the program that the extension is to serve, in its metadata.
bool nameProgram(const QString& folder, const QString& program)
{
    QJsonObject metadata = metadataIn(folder);
    if (metadata.isEmpty())
        return false;
    metadata.insert(programKey, program);
    const QByteArray text = QJsonDocument(metadata).toJson();
    QSaveFile written(folder + QStringLiteral("/metadata.json"));
    return written.open(QIODevice::WriteOnly) && written.write(text) == text.size() &&
           written.commit();
}

/// Of a link only the link: its folder is the person's own.
bool removeEntry(const QString& path)
{
    const QFileInfo entry(path);
    if (entry.isDir() && !entry.isSymLink())
        return QDir(path).removeRecursively();
    return (!entry.exists() && !entry.isSymLink()) || QFile::remove(path);
}

/// Puts `fresh` into the place of `target`, which stays when that fails.
bool replaceFolder(const QString& target, const QString& fresh)
{
    const QString aside = target + QStringLiteral(".old");
    const bool isThere = QFileInfo::exists(target) || QFileInfo(target).isSymLink();
    // An earlier one may have been left by a program that was killed.
    if (isThere && (!removeEntry(aside) || !QFile::rename(target, aside)))
        return false;
    if (!QDir().rename(fresh, target)) {
        if (isThere && !QFile::rename(aside, target))
            qCWarning(logGnome, "the extension of before could not be put back");
        return false;
    }
    if (isThere && !removeEntry(aside))
        qCWarning(logGnome, "the extension of before is left beside the new one");
    return true;
}

/// What the program prints; absent when it fails. A program of its own keeps the settings' library
/// out of this process.
std::optional<QString> settingsProgram(const QStringList& arguments)
{
    QProcess program;
    program.start(QStringLiteral("gsettings"), arguments);
    if (!program.waitForFinished(programLimit)) {
        qCDebug(logGnome, "gsettings does not answer");
        program.kill();
        program.waitForFinished(programLimit);
        return std::nullopt;
    }
    if (program.exitStatus() != QProcess::NormalExit || program.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(program.readAllStandardOutput());
}

std::optional<QStringList> listIn(const QString& key)
{
    const std::optional<QString> printed =
        settingsProgram({QStringLiteral("get"), QStringLiteral("org.gnome.shell"), key});
    return printed ? std::optional(textsInSetting(*printed)) : std::nullopt;
}

bool setList(const QString& key, const QStringList& texts)
{
    return settingsProgram(
               {QStringLiteral("set"), QStringLiteral("org.gnome.shell"), key, settingOf(texts)})
        .has_value();
}

} // namespace

ExtensionPlaces extensionPlaces()
{
    ExtensionPlaces places{
        .dataFolders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)};
    const QString program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    const QDir folder = QFileInfo(program).dir();
    const QString built = QDir::cleanPath(folder.filePath(QStringLiteral("../gnome-extension")));
    if (!program.isEmpty() && QFileInfo(built).isDir()) {
        places.buildFolder = built;
        places.program = program;
    }
    return places;
}

bool ShellExtension::isInstalled() const
{
    return std::ranges::any_of(m_places.dataFolders,
                               [](const QString& each) { return hasExtension(folderIn(each)); });
}

bool ShellExtension::canInstall() const
{
    return !m_places.buildFolder.isEmpty() && !m_places.dataFolders.isEmpty() &&
           QFileInfo(m_places.buildFolder).isDir();
}

QString ShellExtension::ownFolder() const
{
    return folderIn(m_places.dataFolders.constFirst());
}

bool ShellExtension::hasOwnCopy() const
{
    if (m_places.dataFolders.isEmpty() || m_places.program.isEmpty() ||
        QFileInfo(ownFolder()).isSymLink())
        return false;
    return metadataIn(ownFolder()).value(programKey).toString() == m_places.program;
}

bool ShellExtension::install(int shellVersion) const
{
    if (!canInstall())
        return false;
    const QString built = m_places.buildFolder + u'/' + formOf(shellVersion);
    if (!hasExtension(built))
        return false;
    // Beside its place first: the Shell takes no half of an extension.
    const QString target = ownFolder();
    const QString fresh = target + QStringLiteral(".new");
    QDir(fresh).removeRecursively();
    if (!copyFolder(built, fresh) || !nameProgram(fresh, m_places.program) ||
        !replaceFolder(target, fresh)) {
        QDir(fresh).removeRecursively();
        qCWarning(logGnome, "the extension of GNOME Shell could not be installed");
        return false;
    }
    return true;
}

bool ShellExtension::isWanted() const
{
    const std::optional<QStringList> wanted = listIn(QStringLiteral("enabled-extensions"));
    return wanted && wanted->contains(QLatin1String(extensionID));
}

bool ShellExtension::setWanted() const
{
    const QString id = QLatin1String(extensionID);
    std::optional<QStringList> wanted = listIn(QStringLiteral("enabled-extensions"));
    if (!wanted)
        return false;
    if (!wanted->contains(id) && !setList(QStringLiteral("enabled-extensions"), *wanted << id))
        return false;
    // A person may have switched it off before.
    std::optional<QStringList> unwanted = listIn(QStringLiteral("disabled-extensions"));
    return !unwanted || unwanted->removeAll(id) == 0 ||
           setList(QStringLiteral("disabled-extensions"), *unwanted);
}

QStringList textsInSetting(const QString& printed)
{
    const GlibPointer<GVariant> value(g_variant_parse(G_VARIANT_TYPE_STRING_ARRAY,
                                                      printed.trimmed().toUtf8().constData(),
                                                      nullptr, nullptr, nullptr));
    QStringList texts;
    for (gsize index = 0; value && index < g_variant_n_children(value.get()); ++index) {
        const GlibPointer<GVariant> text(g_variant_get_child_value(value.get(), index));
        texts.append(QString::fromUtf8(g_variant_get_string(text.get(), nullptr)));
    }
    return texts;
}

QString settingOf(const QStringList& texts)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_STRING_ARRAY);
    for (const QString& text : texts)
        g_variant_builder_add(&builder, "s", text.toUtf8().constData());
    const GlibPointer<GVariant> value(g_variant_ref_sink(g_variant_builder_end(&builder)));
    const GlibPointer<char> printed(g_variant_print(value.get(), TRUE));
    return QString::fromUtf8(printed.get());
}

} // namespace kelpa::gnome
