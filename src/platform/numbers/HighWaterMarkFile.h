// Keeps the high-water mark of window numbers on disk: the number up to which windows may have been
// numbered.
#pragma once

#include "platform/numbers/WindowNumbers.h"

#include <QString>

#include <set>

namespace kelpa {

/// A file with one decimal number, which each write replaces atomically.
class HighWaterMarkFile final : public NumberReservation
{
public:
    /// `given` are numbers known from elsewhere to have been given. They replace a file that was
    /// lost or could not be written.
    HighWaterMarkFile(QString path, const std::set<WindowID>& given);

    /// The greatest of the given numbers and the one in the file; 0 when there is none. A number
    /// above `greatestBelievedWindow` is ignored. Reads the disk.
    WindowID read() const;

    /// Writes the greater of the number and the one in the file.
    bool reserve(WindowID upTo) override;

private:
    QString m_path;
    WindowID m_leastMark;
};

} // namespace kelpa
