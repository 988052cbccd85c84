// Keeps on disk up to which number windows may have been numbered.
#pragma once

#include "platform/x11/WindowNumbers.h"

#include <QString>

namespace kelpa::x11 {

/// A file with one decimal number, replaced as a whole by each write.
class NumberFloorFile final : public NumberReservation
{
public:
    /// `leastFloor`: a number known from elsewhere to have been given, 0 for none. It covers what a
    /// file that is lost or could not be written does not tell.
    NumberFloorFile(QString path, WindowID leastFloor);

    /// The greater of `leastFloor` and what stands in the file. Reads the disk.
    WindowID floor() const;

    /// Also true when the disk refuses the number: without numbers there would be no windows on the
    /// board, and those that come to matter after this session are the assigned ones, of which
    /// `leastFloor` tells at the next start.
    bool reserve(WindowID upTo) override;

private:
    QString m_path;
    WindowID m_leastFloor;
};

} // namespace kelpa::x11
