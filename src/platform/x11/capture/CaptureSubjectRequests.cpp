#include "platform/x11/capture/CaptureSubjectRequests.h"

namespace kelpa::x11 {

namespace {

using TreeReply = XcbReply<xcb_query_tree, xcb_query_tree_reply>;

// Window managers nest clients one or two levels deep.
constexpr int maxNesting = 16;

} // namespace

CaptureSubjectRequests::CaptureSubjectRequests(CaptureConnection& display, xcb_window_t client,
                                               xcb_window_t pixmapWindow)
    : m_isFramed(client != pixmapWindow), m_attributes(display.connection(), client),
      m_geometry(display.connection(), client),
      m_pixmapAttributes(display.connection(), pixmapWindow),
      m_pixmapGeometry(display.connection(), pixmapWindow),
      m_position(display.connection(), client, pixmapWindow, std::int16_t{0}, std::int16_t{0}),
      m_number(
          askProperty(display.connection(), client, display.atoms()[Atom::kelpaWindowNumber], 1)),
      m_extents(
          askProperty(display.connection(), client, display.atoms()[Atom::gtkFrameExtents], 4)),
      m_shape(display.connection(), client),
      m_compositor(display.connection(), display.compositorSelection())
{}

std::optional<CaptureSubject> CaptureSubjectRequests::read()
{
    const auto* attributes = m_attributes.get();
    const auto* geometry = m_geometry.get();
    const auto* pixmapAttributes = m_pixmapAttributes.get();
    const auto* pixmapGeometry = m_pixmapGeometry.get();
    const auto* position = m_position.get();
    const auto number = word(propertyOf(m_number.get()), XCB_ATOM_CARDINAL);
    if (!attributes || !geometry || !pixmapAttributes || !pixmapGeometry || !position || !number)
        return std::nullopt;
    if (attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
        return std::nullopt;
    CaptureSubject subject;
    subject.number = *number;
    const int border = pixmapGeometry->border_width;
    subject.pixmapSize = {pixmapGeometry->width + 2 * border, pixmapGeometry->height + 2 * border};
    subject.origin = {position->dst_x + border, position->dst_y + border};
    const FrameExtents shadow =
        frameExtents(propertyOf(m_extents.get()), geometry->width, geometry->height);
    const QRect client(subject.origin, QSize(geometry->width, geometry->height));
    subject.content =
        client.adjusted(static_cast<int>(shadow.left), static_cast<int>(shadow.top),
                        -static_cast<int>(shadow.right), -static_cast<int>(shadow.bottom));
    subject.visual = pixmapAttributes->visual;
    subject.depth = pixmapGeometry->depth;
    const auto* shape = m_shape.get();
    subject.isShaped = shape && shape->bounding_shaped != 0;
    const auto* compositor = m_compositor.get();
    subject.isComposited = compositor && compositor->owner != XCB_WINDOW_NONE;
    if (m_isFramed && !QRect(QPoint(0, 0), subject.pixmapSize).contains(subject.content)) {
        // The part of the client that its frame clips has no pixels.
        subject.content &= QRect(QPoint(0, 0), subject.pixmapSize);
    }
    return subject.content.isEmpty() ? std::nullopt : std::optional(subject);
}

std::optional<xcb_window_t> frameOf(CaptureConnection& display, xcb_window_t client)
{
    xcb_window_t window = client;
    for (int level = 0; level < maxNesting; ++level) {
        TreeReply reply(display.connection(), window);
        const auto* tree = reply.get();
        if (!tree || tree->parent == XCB_WINDOW_NONE)
            return std::nullopt;
        if (tree->parent == tree->root)
            return window;
        window = tree->parent;
    }
    return std::nullopt;
}

} // namespace kelpa::x11
