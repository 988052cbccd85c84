#include "platform/x11/capture/ImageReader.h"

#include <algorithm>
#include <cstring>

namespace kelpa::x11 {

namespace {

constexpr std::uint32_t allPlanes = 0xFFFFFFFF;
constexpr std::uint32_t opaqueAlpha = 0xFF000000;
constexpr std::size_t bytesPerPixel = 4;

std::size_t bytesOf(const QSize& size)
{
    return static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) *
           bytesPerPixel;
}

/// The unused byte of an opaque pixel may be anything; Qt wants it full.
QImage copied(const void* pixels, const QSize& size, bool hasAlpha)
{
    QImage image(size, hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (image.isNull())
        return image;
    std::memcpy(image.bits(), pixels, bytesOf(size));
    if (!hasAlpha) {
        for (int y = 0; y < size.height(); ++y) {
            void* bytes = image.scanLine(y);
            auto* line = static_cast<std::uint32_t*>(bytes);
            std::for_each(line, line + size.width(),
                          [](std::uint32_t& pixel) { pixel |= opaqueAlpha; });
        }
    }
    return image;
}

} // namespace

ImageReader::ImageReader(CaptureConnection& display, bool useSharedMemory)
    : m_display(display), m_useSharedMemory(useSharedMemory && display.takesSharedMemory())
{}

void ImageReader::reserve(const QSize& size)
{
    if (!m_useSharedMemory || (m_segment && m_segment->size() >= bytesOf(size)))
        return;
    m_segment = ShmSegment::create(m_display.connection(), bytesOf(size));
    m_hasSharedMemoryFailed = !m_segment;
    m_useSharedMemory = !m_hasSharedMemoryFailed;
}

ImageReader::Pending ImageReader::request(xcb_drawable_t drawable, const QSize& size)
{
    const auto width = static_cast<std::uint16_t>(size.width());
    const auto height = static_cast<std::uint16_t>(size.height());
    if (m_segment && m_segment->size() >= bytesOf(size))
        return SharedImageReply(
            m_display.connection(), drawable, std::int16_t{0}, std::int16_t{0}, width, height,
            allPlanes, static_cast<std::uint8_t>(XCB_IMAGE_FORMAT_Z_PIXMAP), m_segment->id(), 0U);
    return ImageReply(m_display.connection(), static_cast<std::uint8_t>(XCB_IMAGE_FORMAT_Z_PIXMAP),
                      drawable, std::int16_t{0}, std::int16_t{0}, width, height, allPlanes);
}

QImage ImageReader::read(Pending& pending, const QSize& size, bool hasAlpha)
{
    if (auto* shared = std::get_if<SharedImageReply>(&pending))
        return shared->get() && m_segment ? copied(m_segment->data(), size, hasAlpha) : QImage();
    const auto* reply = std::get<ImageReply>(pending).get();
    if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply)) < bytesOf(size))
        return {};
    return copied(xcb_get_image_data(reply), size, hasAlpha);
}

} // namespace kelpa::x11
