// Keeps on disk up to which number windows may have been numbered.
#pragma once

#include "platform/x11/WindowNumbers.h"

#include <QString>

#include <set>

namespace kelpa::x11 {

/// A file with one decimal number, replaced as a whole by each write.
class NumberFloorFile final : public NumberReservation
{
public:
    /// `given`: numbers known from elsewhere to have been given. They cover what a file that is
    /// lost or could not be written does not tell.
    NumberFloorFile(QString path, const std::set<WindowID>& given);

    /// The greatest of the given numbers and what stands in the file; 0 when there is none. A
    /// number that is too great to be believed counts as none. Reads the disk.
    WindowID floor() const;

    /// Writes the number, or the one in the file where that is greater.
    bool reserve(WindowID upTo) override;

private:
    QString m_path;
    WindowID m_leastFloor;
};

} // namespace kelpa::x11
