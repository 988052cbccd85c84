// Finds and reads the icon of an installed application.
#pragma once

#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/icons/IconTheme.h"

#include <QImage>
#include <QString>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace kelpa {

/// Reads files only and needs no display. Any thread but the main one.
class IconLookup
{
public:
    /// `entries` outlives it. `themeName` is the icon theme in use, as the main thread knows it
    /// (QIcon::themeName()); empty for none but hicolor.
    IconLookup(DesktopEntries& entries, QString themeName);

    /// The file of the entry's icon that suits `pixels` best; none when there is no such entry, it
    /// names no icon, or the icon is not there.
    std::optional<QString> path(const QString& desktopEntryID, int pixels);

    /// That file's picture, at most `pixels` wide and high; null when there is none or it is
    /// broken.
    QImage image(const QString& desktopEntryID, int pixels);

private:
    std::shared_ptr<const IconTheme> theme();

    DesktopEntries& m_entries;
    const QString m_themeName;

    std::mutex m_mutex;
    /// Read again together with the entries, because new applications bring new folders.
    std::shared_ptr<const IconTheme> m_theme;
    std::uint64_t m_generation = 0;
};

} // namespace kelpa
