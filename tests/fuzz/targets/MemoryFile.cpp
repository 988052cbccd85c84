#include "fuzz/targets/MemoryFile.h"

#include "fuzz/FuzzTarget.h"

#include <sys/mman.h>
#include <unistd.h>

namespace kelpa::fuzz {

MemoryFile::MemoryFile(const QByteArray& bytes) : m_descriptor(::memfd_create("fuzz", MFD_CLOEXEC))
{
    require(m_descriptor >= 0, "a file in memory can be made");
    require(::write(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size())) ==
                bytes.size(),
            "a file in memory can be written");
}

MemoryFile::~MemoryFile()
{
    ::close(m_descriptor);
}

QString MemoryFile::path() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
}

} // namespace kelpa::fuzz
