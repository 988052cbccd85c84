// The files of the disk.
#pragma once

#include "platform/FileAccess.h"

namespace kelpa {

class DiskFiles final : public FileAccess
{
public:
    std::variant<QByteArray, FileTrouble> read(const QString& path, qsizetype most) const override;
    bool write(const QString& path, const QByteArray& bytes) override;
};

} // namespace kelpa
