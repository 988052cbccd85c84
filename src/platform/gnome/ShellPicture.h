// The picture of a window that the Shell's extension hands over in a file without a name.
#pragma once

#include <QImage>
#include <QSize>

#include <optional>

namespace kelpa::gnome {

/// Reads a picture in the form PNG from a file descriptor, from the beginning of the file. Absent
/// when it is none, or larger than `largest`, in pixels, or when its file is longer than such a
/// picture can be: it is not decoded then. The file is read and not mapped, so that whoever
/// shortens it meanwhile does no harm.
std::optional<QImage> readPicture(int descriptor, const QSize& largest);

} // namespace kelpa::gnome
