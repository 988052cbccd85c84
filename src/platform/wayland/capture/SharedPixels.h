// Memory that is shared with the compositor, into which it copies one picture at a time.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/wayland/capture/CaptureForm.h"

#include <cstddef>
#include <memory>
#include <span>

struct wl_buffer;
struct wl_shm;
struct wl_shm_pool;

namespace kelpa::wayland {

struct BufferDeleter
{
    void operator()(wl_buffer* buffer) const;
};
using Buffer = std::unique_ptr<wl_buffer, BufferDeleter>;

/// Used on the thread that dispatches the connection. It only grows, so that buffers of the same
/// windows over and over cost nothing.
class SharedPixels
{
public:
    /// `memory` outlives this object.
    explicit SharedPixels(wl_shm* memory) : m_memory(memory) {}
    SharedPixels(const SharedPixels&) = delete;
    SharedPixels& operator=(const SharedPixels&) = delete;
    ~SharedPixels();

    /// A buffer at the beginning of the memory; null when there is not enough of it. All buffers
    /// share their pixels.
    Buffer buffer(const CaptureForm& form);

    /// Those of a buffer of that form; its contents may change until it is not used any more.
    std::span<const std::byte> pixels() const;

private:
    bool reserve(std::size_t size);
    void unmap();

    wl_shm* const m_memory;
    FileDescriptor m_file;
    wl_shm_pool* m_pool = nullptr;
    void* m_address = nullptr;
    std::size_t m_size = 0;
};

} // namespace kelpa::wayland
