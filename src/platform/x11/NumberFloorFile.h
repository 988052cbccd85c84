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

    /// Writes the number, or the one in the file where that is greater.
    bool reserve(WindowID upTo) override;

private:
    QString m_path;
    WindowID m_leastFloor;
};

} // namespace kelpa::x11
