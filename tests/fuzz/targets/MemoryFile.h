// A file in memory, for decoders that read from a path or a descriptor.
#pragma once

#include <QByteArray>
#include <QString>

namespace kelpa::fuzz {

/// Gone with this object.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray& bytes);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    int descriptor() const { return m_descriptor; }
    QString path() const;

private:
    int m_descriptor;
};

} // namespace kelpa::fuzz
