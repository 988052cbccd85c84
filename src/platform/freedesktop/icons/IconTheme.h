// Finds the file of a named icon by the freedesktop icon theme specification.
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace kelpa {

/// A value; reads the indexes of the themes when it is constructed and searches for files at each
/// call. Any thread but the main one.
class IconTheme
{
public:
    /// `iconDirectories` hold themes, the first counts first; `pixmapDirectories` hold icons of no
    /// theme. `name` is the theme in use; empty for none. The themes that it inherits from and
    /// hicolor follow it.
    IconTheme(const QString& name, std::vector<QString> iconDirectories,
              std::vector<QString> pixmapDirectories);

    /// The file to show at `pixels`: of the first theme that has the icon the one made for that
    /// size, or else the nearest larger one, or else the largest. `icon` is a name, with or without
    /// the suffix of a picture; an absolute path is given back when there is such a file. None when
    /// there is nothing.
    std::optional<QString> find(const QString& icon, int pixels) const;

private:
    /// One folder of a theme, with the sizes in pixels that its pictures are good for.
    struct Folder
    {
        QString path;
        int size = 0;
        int minimum = 0;
        int maximum = 0;
    };

    struct Theme
    {
        QString name;
        std::vector<Folder> folders;
    };

    void addTheme(const QString& name, int depth);
    bool isKnown(const QString& name) const;
    std::optional<QString> findInTheme(const Theme& theme, const QString& icon, int pixels) const;

    std::vector<QString> m_iconDirectories;
    std::vector<QString> m_pixmapDirectories;
    std::vector<Theme> m_themes;
};

/// The folders of icons and of pixmaps for data directories in order of precedence; the person's
/// own ~/.icons comes first. Any thread.
std::vector<QString> iconDirectories(const std::vector<QString>& dataDirectories);
std::vector<QString> pixmapDirectories(const std::vector<QString>& dataDirectories);

} // namespace kelpa
