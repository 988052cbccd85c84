// Memory shared between this program and the server.
#pragma once

#include "platform/x11/connection/XcbConnection.h"

#include <xcb/shm.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kelpa::x11 {

/// Anonymous, so that nothing is left behind however the program ends. Must not outlive its
/// connection.
class ShmSegment
{
public:
    /// Waits for the server. Absent when no memory can be allocated or the server refuses it.
    static std::unique_ptr<ShmSegment> create(XcbConnection& connection, std::size_t size);

    ShmSegment(const ShmSegment&) = delete;
    ShmSegment& operator=(const ShmSegment&) = delete;
    ~ShmSegment();

    xcb_shm_seg_t id() const { return m_id; }
    std::size_t size() const { return m_size; }
    const void* data() const { return m_data; }

private:
    ShmSegment(XcbConnection& connection, void* data, std::size_t size);

    bool attach(int descriptor);

    XcbConnection& m_connection;
    void* m_data;
    std::size_t m_size;
    xcb_shm_seg_t m_id = XCB_NONE;
};

} // namespace kelpa::x11
