#include "platform/freedesktop/icons/IconTheme.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <tuple>
#include <utility>

namespace kelpa {

namespace {

/// Bounds for themes that inherit from each other in a cycle and for oversized indexes.
constexpr int maximalInheritance = 16;
constexpr std::size_t maximalThemes = 32;
constexpr qsizetype maximalFolders = 2000;
constexpr qint64 maximalIndexSize = 1 << 20;

const std::array suffixes{QStringLiteral(".png"), QStringLiteral(".svg"), QStringLiteral(".xpm")};

std::optional<QString> existing(const QString& pathWithoutSuffix)
{
    for (const QString& suffix : suffixes) {
        const QString path = pathWithoutSuffix + suffix;
        if (QFileInfo(path).isFile())
            return path;
    }
    return std::nullopt;
}

/// Rejects names that lead out of the theme's folders.
bool isPlainName(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(QChar(0)) &&
           !name.startsWith(u'.');
}

bool leadsOutside(const QString& folder)
{
    return QDir::isAbsolutePath(folder) || folder.split(u'/').contains(QStringLiteral(".."));
}

/// The distance of a folder from the wanted size: its kind, the difference in pixels, and its size;
/// smaller is better. A larger picture loses less when it is scaled down than a smaller one when it
/// is shown as it is.
using Distance = std::tuple<int, int, int>;

} // namespace

IconTheme::IconTheme(const QString& name, std::vector<QString> iconDirectories,
                     std::vector<QString> pixmapDirectories)
    : m_iconDirectories(std::move(iconDirectories)),
      m_pixmapDirectories(std::move(pixmapDirectories))
{
    addTheme(name, 0);
    addTheme(QStringLiteral("hicolor"), 0);
}

bool IconTheme::isKnown(const QString& name) const
{
    return std::any_of(m_themes.begin(), m_themes.end(),
                       [&](const Theme& theme) { return theme.name == name; });
}

void IconTheme::addTheme(const QString& name, int depth)
{
    if (!isPlainName(name) || depth > maximalInheritance || m_themes.size() >= maximalThemes ||
        isKnown(name))
        return;
    // The first index found counts; pictures may lie in the theme's folder of every directory.
    const auto hasIndex = [&](const QString& directory) {
        const QFileInfo index(directory + u'/' + name + QStringLiteral("/index.theme"));
        return index.isFile() && index.size() <= maximalIndexSize;
    };
    const auto home = std::find_if(m_iconDirectories.begin(), m_iconDirectories.end(), hasIndex);
    if (home == m_iconDirectories.end())
        return;
    const QSettings index(*home + u'/' + name + QStringLiteral("/index.theme"),
                          QSettings::IniFormat);
    Theme theme{name, {}};
    QStringList folders = index.value(QStringLiteral("Icon Theme/Directories")).toStringList();
    folders += index.value(QStringLiteral("Icon Theme/ScaledDirectories")).toStringList();
    for (const QString& listed : folders.mid(0, maximalFolders)) {
        const QString folder = listed.trimmed();
        const auto number = [&](const char* key, int otherwise) {
            bool isNumber = false;
            const int value = index.value(folder + QString::fromLatin1(key))
                                  .toString()
                                  .trimmed()
                                  .toInt(&isNumber);
            return isNumber && value > 0 && value <= 8192 ? value : otherwise;
        };
        const int size = number("/Size", 0);
        if (folder.isEmpty() || leadsOutside(folder) || size == 0)
            continue;
        const int scale = std::min(number("/Scale", 1), 16);
        Folder found{folder, size * scale, size * scale, size * scale};
        const QString type = index.value(folder + QStringLiteral("/Type")).toString().trimmed();
        if (type.compare(QStringLiteral("Scalable"), Qt::CaseInsensitive) == 0) {
            found.minimum = number("/MinSize", size) * scale;
            found.maximum = number("/MaxSize", size) * scale;
        } else if (type.compare(QStringLiteral("Fixed"), Qt::CaseInsensitive) != 0) {
            const int threshold = number("/Threshold", 2);
            found.minimum = (size - threshold) * scale;
            found.maximum = (size + threshold) * scale;
        }
        theme.folders.push_back(std::move(found));
    }
    m_themes.push_back(std::move(theme));
    for (const QString& parent :
         index.value(QStringLiteral("Icon Theme/Inherits")).toStringList()) {
        // hicolor comes last, even if a theme inherits from it earlier.
        if (parent.trimmed() != QStringLiteral("hicolor"))
            addTheme(parent.trimmed(), depth + 1);
    }
}

std::optional<QString> IconTheme::find(const QString& icon, int pixels) const
{
    if (QDir::isAbsolutePath(icon))
        return QFileInfo(icon).isFile() ? std::optional(icon) : std::nullopt;
    QString name = icon;
    for (const QString& suffix : suffixes) {
        if (name.endsWith(suffix)) {
            name.chop(suffix.size());
            break;
        }
    }
    if (!isPlainName(name))
        return std::nullopt;
    for (const Theme& theme : m_themes) {
        if (std::optional<QString> path = findInTheme(theme, name, pixels))
            return path;
    }
    for (const std::vector<QString>* directories : {&m_iconDirectories, &m_pixmapDirectories}) {
        for (const QString& directory : *directories) {
            if (std::optional<QString> path = existing(directory + u'/' + name))
                return path;
        }
    }
    return std::nullopt;
}

std::optional<QString> IconTheme::findInTheme(const Theme& theme, const QString& icon,
                                              int pixels) const
{
    const auto distance = [pixels](const Folder& folder) -> Distance {
        if (folder.minimum <= pixels && pixels <= folder.maximum)
            return {0, std::abs(folder.size - pixels), folder.size};
        return folder.minimum > pixels ? Distance{1, folder.minimum - pixels, folder.size}
                                       : Distance{2, pixels - folder.maximum, folder.size};
    };
    std::vector<const Folder*> folders;
    folders.reserve(theme.folders.size());
    for (const Folder& folder : theme.folders)
        folders.push_back(&folder);
    std::stable_sort(folders.begin(), folders.end(), [&](const Folder* left, const Folder* right) {
        return distance(*left) < distance(*right);
    });
    for (const Folder* folder : folders) {
        for (const QString& directory : m_iconDirectories) {
            if (std::optional<QString> path =
                    existing(directory + u'/' + theme.name + u'/' + folder->path + u'/' + icon))
                return path;
        }
    }
    return std::nullopt;
}

std::vector<QString> iconDirectories(const std::vector<QString>& dataDirectories)
{
    std::vector<QString> directories{QDir::homePath() + QStringLiteral("/.icons")};
    for (const QString& directory : dataDirectories)
        directories.push_back(directory + QStringLiteral("/icons"));
    return directories;
}

std::vector<QString> pixmapDirectories(const std::vector<QString>& dataDirectories)
{
    std::vector<QString> directories;
    directories.reserve(dataDirectories.size());
    for (const QString& directory : dataDirectories)
        directories.push_back(directory + QStringLiteral("/pixmaps"));
    return directories;
}

} // namespace kelpa
