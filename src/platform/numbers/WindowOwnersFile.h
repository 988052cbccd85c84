// Keeps the owners of numbered windows in a file.
#pragma once

#include "platform/numbers/WindowOwners.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace kelpa {

/// The file's content: a line that names the format and its version, one with the greatest number,
/// one for each owner in the order of their numbers, and one that ends it.
QByteArray encoded(const RecordedOwners& owners);

/// Absent for anything but what `encoded` gives.
std::optional<RecordedOwners> decodedOwners(const QByteArray& content);

/// A write replaces the file at once, but does not wait for the disk: after a crash of the machine
/// none of the windows exists any more.
class WindowOwnersFile final : public OwnerStorage
{
public:
    explicit WindowOwnersFile(QString path) : m_path(std::move(path)) {}

    /// Nothing recorded where the file is missing, malformed or of another version. Reads the disk.
    RecordedOwners read() const;
    void save(const RecordedOwners& owners) override;

private:
    const QString m_path;
};

} // namespace kelpa
