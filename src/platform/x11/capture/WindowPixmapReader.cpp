#include "platform/x11/capture/WindowPixmapReader.h"

#include "platform/x11/capture/PictureScaler.h"

#include <xcb/composite.h>

namespace kelpa::x11 {

WindowPixmapReading WindowPixmapReader::read(xcb_window_t window, const QSize& largest)
{
    WindowPixmapReading reading;
    reading.time = RedirectedWindows::Time::clock::now();
    const RedirectedWindow& redirected = *m_redirected.find(window);
    const CaptureSubject& subject = redirected.subject;
    const std::optional<PixelFormat> format = m_display.formatOf(subject.visual);
    if (!format)
        return reading;
    reading.pixelSize = subject.content.size();
    const QSize size = reading.pixelSize.boundedTo(largest);
    const bool hasAlpha = format->hasAlpha || subject.isShaped;
    m_images.reserve(size);

    XcbConnection& connection = m_display.connection();
    m_redirected.subtractDamage(window);
    const ServerPixmap pixmap(connection);
    xcb_composite_name_window_pixmap(connection.raw(), redirected.pixmapWindow, pixmap.id());
    GeometryReply pixmapGeometry(connection, pixmap.id());
    const ServerPixmap picture =
        scaledPicture(m_display,
                      {pixmap.id(), *format, subject.content,
                       subject.isShaped ? window : xcb_window_t{XCB_WINDOW_NONE}, subject.origin},
                      size, hasAlpha);
    ImageReader::Pending pending = m_images.request(picture.id(), size);
    CaptureSubjectRequests requests(m_display, window, redirected.pixmapWindow);

    reading.image = m_images.read(pending, size, hasAlpha);
    const auto* geometry = pixmapGeometry.get();
    reading.hasExpectedSize =
        geometry && QSize(geometry->width, geometry->height) == subject.pixmapSize;
    reading.subject = requests.read();
    return reading;
}

} // namespace kelpa::x11
