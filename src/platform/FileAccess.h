// Files that a person has chosen, to read or to write.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <variant>

namespace kelpa {

enum class FileTrouble : std::uint8_t {
    /// It does not exist, may not be read, is a folder, or the disk fails.
    unreadable,
    /// It has more bytes than asked for at most.
    tooLarge,
};

/// Any thread, several at once; every function waits for the disk.
class FileAccess
{
public:
    virtual ~FileAccess() = default;

    /// The whole file. Never reads more than `most` bytes.
    virtual std::variant<QByteArray, FileTrouble> read(const QString& path,
                                                       qsizetype most) const = 0;
    /// Writes the whole file or leaves what was there as it was. False when that fails.
    virtual bool write(const QString& path, const QByteArray& bytes) = 0;
};

} // namespace kelpa
