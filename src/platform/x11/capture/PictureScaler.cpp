#include "platform/x11/capture/PictureScaler.h"

#include <xcb/shape.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace kelpa::x11 {

namespace {

constexpr std::string_view bilinear = "bilinear";
constexpr double fixedOne = 65536;

xcb_render_fixed_t fixed(double value)
{
    return static_cast<xcb_render_fixed_t>(std::lround(value * fixedOne));
}

struct Canvas
{
    ServerPixmap pixmap;
    ServerPicture picture;
};

/// A picture on an existing drawable. Its edge pixels repeat beyond the edges, so that scaling does
/// not fade them out.
ServerPicture pictureOn(CaptureConnection& display, xcb_drawable_t drawable,
                        const PixelFormat& format)
{
    ServerPicture picture(display.connection());
    const std::uint32_t repeat = XCB_RENDER_REPEAT_PAD;
    xcb_render_create_picture(display.connection().raw(), picture.id(), drawable, format.id,
                              XCB_RENDER_CP_REPEAT, &repeat);
    return picture;
}

Canvas makeCanvas(CaptureConnection& display, const QSize& size, const PixelFormat& format)
{
    ServerPixmap pixmap(display.connection());
    xcb_create_pixmap(display.connection().raw(), format.depth, pixmap.id(),
                      display.connection().root(), static_cast<std::uint16_t>(size.width()),
                      static_cast<std::uint16_t>(size.height()));
    ServerPicture picture = pictureOn(display, pixmap.id(), format);
    return {std::move(pixmap), std::move(picture)};
}

void copy(CaptureConnection& display, const ServerPicture& from, const QPoint& origin,
          const Canvas& to, const QSize& size)
{
    xcb_render_composite(
        display.connection().raw(), XCB_RENDER_PICT_OP_SRC, from.id(), XCB_NONE, to.picture.id(),
        static_cast<std::int16_t>(origin.x()), static_cast<std::int16_t>(origin.y()), 0, 0, 0, 0,
        static_cast<std::uint16_t>(size.width()), static_cast<std::uint16_t>(size.height()));
}

void scale(CaptureConnection& display, const ServerPicture& from, const QRect& content,
           const Canvas& to, const QSize& size)
{
    // From pixels of the result to pixels of the source.
    const xcb_render_transform_t transform{fixed(content.width() / double(size.width())),
                                           0,
                                           fixed(content.x()),
                                           0,
                                           fixed(content.height() / double(size.height())),
                                           fixed(content.y()),
                                           0,
                                           0,
                                           fixed(1)};
    xcb_connection_t* connection = display.connection().raw();
    xcb_render_set_picture_transform(connection, from.id(), transform);
    xcb_render_set_picture_filter(connection, from.id(),
                                  static_cast<std::uint16_t>(bilinear.size()), bilinear.data(), 0,
                                  nullptr);
    copy(display, from, {0, 0}, to, size);
}

/// The content unscaled, transparent outside the window's bounding shape.
Canvas cutOut(CaptureConnection& display, const ServerPicture& from, const SourcePicture& source)
{
    xcb_connection_t* connection = display.connection().raw();
    const QSize size = source.content.size();
    Canvas canvas = makeCanvas(display, size, display.transparent());
    const xcb_rectangle_t all{0, 0, static_cast<std::uint16_t>(size.width()),
                              static_cast<std::uint16_t>(size.height())};
    xcb_render_fill_rectangles(connection, XCB_RENDER_PICT_OP_SRC, canvas.picture.id(),
                               {0, 0, 0, 0}, 1, &all);
    const ServerRegion shape(display.connection());
    xcb_xfixes_create_region_from_window(connection, shape.id(), source.shape,
                                         XCB_SHAPE_SK_BOUNDING);
    const QPoint offset = source.shapeOrigin - source.content.topLeft();
    xcb_xfixes_set_picture_clip_region(connection, canvas.picture.id(), shape.id(),
                                       static_cast<std::int16_t>(offset.x()),
                                       static_cast<std::int16_t>(offset.y()));
    copy(display, from, source.content.topLeft(), canvas, size);
    return canvas;
}

} // namespace

std::vector<QSize> scalingSteps(const QSize& from, const QSize& to)
{
    std::vector<QSize> steps;
    QSize size = from;
    while (size.width() > 2 * to.width() || size.height() > 2 * to.height()) {
        size = QSize((size.width() + 1) / 2, (size.height() + 1) / 2).expandedTo(to);
        steps.push_back(size);
    }
    if (size != to || steps.empty())
        steps.push_back(to);
    return steps;
}

ServerPixmap scaledPicture(CaptureConnection& display, const SourcePicture& source,
                           const QSize& size, bool hasAlpha)
{
    const PixelFormat& format = hasAlpha ? display.transparent() : display.opaque();
    ServerPicture from = pictureOn(display, source.pixmap, source.format);
    QRect content = source.content;
    // Keeps the pixmap of `from` alive until the next step has read it.
    std::optional<ServerPixmap> result;
    if (source.shape != XCB_NONE) {
        Canvas cut = cutOut(display, from, source);
        // A new picture: the clip would apply to the old one as a source too.
        from = pictureOn(display, cut.pixmap.id(), display.transparent());
        content.moveTo(0, 0);
        result = std::move(cut.pixmap);
    }
    for (const QSize& step : scalingSteps(content.size(), size)) {
        Canvas canvas = makeCanvas(display, step, format);
        if (step == content.size())
            copy(display, from, content.topLeft(), canvas, step);
        else
            scale(display, from, content, canvas, step);
        from = std::move(canvas.picture);
        result = std::move(canvas.pixmap);
        content = QRect(QPoint(0, 0), step);
    }
    return std::move(*result);
}

} // namespace kelpa::x11
