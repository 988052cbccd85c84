// Keeps on disk up to which number windows may have been numbered.
#pragma once

#include "platform/x11/WindowNumbers.h"

#include <QString>

namespace kelpa {

/// A file with one decimal number, replaced as a whole by each write.
class NumberFloorFile final : public x11::NumberReservation
{
public:
    explicit NumberFloorFile(QString path);

    /// What stands in the file; 0 when there is none or it holds anything else.
    WindowID floor() const;

    /// Any thread, one call at a time. Also true when the disk refuses the number: the assignments
    /// of this session, the reason for never using a number twice, do not reach it either.
    bool reserve(WindowID upTo) override;

private:
    QString m_path;
};

} // namespace kelpa
