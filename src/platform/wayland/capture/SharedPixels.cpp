#include "platform/wayland/capture/SharedPixels.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

#include <cstdint>

namespace kelpa::wayland {

void BufferDeleter::operator()(wl_buffer* buffer) const
{
    wl_buffer_destroy(buffer);
}

SharedPixels::~SharedPixels()
{
    if (m_pool)
        wl_shm_pool_destroy(m_pool);
    unmap();
}

void SharedPixels::unmap()
{
    if (m_address)
        ::munmap(m_address, m_size);
    m_address = nullptr;
}

Buffer SharedPixels::buffer(const CaptureForm& form)
{
    if (!reserve(form.byteCount()))
        return {};
    return Buffer(wl_shm_pool_create_buffer(m_pool, 0, form.size.width(), form.size.height(),
                                            form.stride(), form.wireFormat));
}

bool SharedPixels::reserve(std::size_t size)
{
    if (m_address && m_size >= size)
        return true;
    unmap();
    if (!m_file.isOpen()) {
        m_file = FileDescriptor(::memfd_create("kelpa-pictures", MFD_CLOEXEC | MFD_ALLOW_SEALING));
        // What the compositor could take away would end this process when it reads it.
        if (!m_file.isOpen() || ::fcntl(m_file.number(), F_ADD_SEALS, F_SEAL_SHRINK) != 0)
            return false;
        m_size = 0;
    }
    if (m_size < size) {
        // Allocated here, a disk without room is an error and not a signal later.
        if (::posix_fallocate(m_file.number(), 0, static_cast<off_t>(size)) != 0)
            return false;
        m_size = size;
    }
    void* const address = ::mmap(nullptr, m_size, PROT_READ, MAP_SHARED, m_file.number(), 0);
    if (address == MAP_FAILED)
        return false;
    m_address = address;
    const auto wireSize = static_cast<std::int32_t>(m_size);
    if (m_pool)
        wl_shm_pool_resize(m_pool, wireSize);
    else
        m_pool = wl_shm_create_pool(m_memory, m_file.number(), wireSize);
    return m_pool != nullptr;
}

std::span<const std::byte> SharedPixels::pixels() const
{
    return {static_cast<const std::byte*>(m_address), m_address ? m_size : 0};
}

} // namespace kelpa::wayland
