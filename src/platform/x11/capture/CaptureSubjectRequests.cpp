#include "platform/x11/capture/CaptureSubjectRequests.h"

namespace kelpa::x11 {

namespace {

using TreeReply = XcbReply<xcb_query_tree, xcb_query_tree_reply>;

// Window managers nest clients one or two levels deep.
constexpr int deepestNesting = 16;

} // namespace

CaptureSubjectRequests::CaptureSubjectRequests(CaptureConnection& link, xcb_window_t client,
                                               xcb_window_t named)
    : m_isFramed(client != named), m_attributes(link.connection(), client),
      m_geometry(link.connection(), client), m_namedAttributes(link.connection(), named),
      m_namedGeometry(link.connection(), named),
      m_position(link.connection(), client, named, std::int16_t{0}, std::int16_t{0}),
      m_number(askProperty(link.connection(), client, link.atoms()[Atom::kelpaWindowNumber], 1)),
      m_extents(askProperty(link.connection(), client, link.atoms()[Atom::gtkFrameExtents], 4)),
      m_shape(link.connection(), client),
      m_compositor(link.connection(), link.compositorSelection())
{}

std::optional<CaptureSubject> CaptureSubjectRequests::read()
{
    const auto* attributes = m_attributes.get();
    const auto* geometry = m_geometry.get();
    const auto* namedAttributes = m_namedAttributes.get();
    const auto* namedGeometry = m_namedGeometry.get();
    const auto* position = m_position.get();
    const auto number = word(propertyOf(m_number.get()), XCB_ATOM_CARDINAL);
    if (!attributes || !geometry || !namedAttributes || !namedGeometry || !position || !number)
        return std::nullopt;
    if (attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
        return std::nullopt;
    CaptureSubject subject;
    subject.number = *number;
    const int border = namedGeometry->border_width;
    subject.pixmapSize = {namedGeometry->width + 2 * border, namedGeometry->height + 2 * border};
    subject.origin = {position->dst_x + border, position->dst_y + border};
    const FrameExtents shadow =
        frameExtents(propertyOf(m_extents.get()), geometry->width, geometry->height);
    const QRect client(subject.origin, QSize(geometry->width, geometry->height));
    subject.content =
        client.adjusted(static_cast<int>(shadow.left), static_cast<int>(shadow.top),
                        -static_cast<int>(shadow.right), -static_cast<int>(shadow.bottom));
    subject.visual = namedAttributes->visual;
    subject.depth = namedGeometry->depth;
    const auto* shape = m_shape.get();
    subject.isShaped = shape && shape->bounding_shaped != 0;
    const auto* compositor = m_compositor.get();
    subject.isComposited = compositor && compositor->owner != XCB_WINDOW_NONE;
    if (m_isFramed && !QRect(QPoint(0, 0), subject.pixmapSize).contains(subject.content)) {
        // A frame that cuts its client off; what is cut off has no pixels.
        subject.content &= QRect(QPoint(0, 0), subject.pixmapSize);
    }
    return subject.content.isEmpty() ? std::nullopt : std::optional(subject);
}

std::optional<xcb_window_t> frameOf(CaptureConnection& link, xcb_window_t client)
{
    xcb_window_t window = client;
    for (int level = 0; level < deepestNesting; ++level) {
        TreeReply reply(link.connection(), window);
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
