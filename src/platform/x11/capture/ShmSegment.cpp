#include "platform/x11/capture/ShmSegment.h"

#include <sys/mman.h>
#include <unistd.h>

namespace kelpa::x11 {

std::unique_ptr<ShmSegment> ShmSegment::create(XcbConnection& connection, std::size_t size)
{
    const int descriptor = memfd_create("kelpa-capture", MFD_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    void* data = MAP_FAILED;
    if (ftruncate(descriptor, static_cast<off_t>(size)) == 0)
        data = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (data == MAP_FAILED) {
        close(descriptor);
        return nullptr;
    }
    std::unique_ptr<ShmSegment> segment(new ShmSegment(connection, data, size));
    return segment->attach(descriptor) ? std::move(segment) : nullptr;
}

ShmSegment::ShmSegment(XcbConnection& connection, void* data, std::size_t size)
    : m_connection(connection), m_data(data), m_size(size)
{}

ShmSegment::~ShmSegment()
{
    if (m_id != XCB_NONE)
        xcb_shm_detach(m_connection.raw(), m_id);
    munmap(m_data, m_size);
}

bool ShmSegment::attach(int descriptor)
{
    const xcb_shm_seg_t id = xcb_generate_id(m_connection.raw());
    // The descriptor is xcb's from here on; it closes it.
    const xcb_void_cookie_t cookie =
        xcb_shm_attach_fd_checked(m_connection.raw(), id, descriptor, 0);
    m_connection.recordRequest(cookie.sequence);
    m_connection.recordWait(cookie.sequence);
    const std::unique_ptr<xcb_generic_error_t, XcbFree> error(
        xcb_request_check(m_connection.raw(), cookie));
    if (error || m_connection.isBroken())
        return false;
    m_id = id;
    return true;
}

} // namespace kelpa::x11
