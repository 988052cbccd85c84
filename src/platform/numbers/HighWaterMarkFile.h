// Keeps on disk up to which number windows may have been numbered.
#pragma once

#include "platform/numbers/WindowNumbers.h"

#include <QString>

#include <set>

namespace kelpa {

/// A file with one decimal number, replaced as a whole by each write.
class HighWaterMarkFile final : public NumberReservation
{
public:
    /// `given`: numbers known from elsewhere to have been given. They cover what a file that is
    /// lost or could not be written does not tell.
    HighWaterMarkFile(QString path, const std::set<WindowID>& given);

    /// The greatest of the given numbers and what stands in the file; 0 when there is none. A
    /// number that is too great to be believed counts as none. Reads the disk.
    WindowID floor() const;

    /// Writes the number, or the one in the file where that is greater.
    bool reserve(WindowID upTo) override;

private:
    QString m_path;
    WindowID m_leastFloor;
};

} // namespace kelpa
