#include "platform/x11/capture/CaptureConnection.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/connection/XcbReply.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>

#include <sys/socket.h>

#include <bit>
#include <utility>

namespace kelpa::x11 {

namespace {

using CompositeVersionReply =
    XcbReply<xcb_composite_query_version, xcb_composite_query_version_reply>;
using RenderVersionReply = XcbReply<xcb_render_query_version, xcb_render_query_version_reply>;
using FixesVersionReply = XcbReply<xcb_xfixes_query_version, xcb_xfixes_query_version_reply>;
using DamageVersionReply = XcbReply<xcb_damage_query_version, xcb_damage_query_version_reply>;
using SharedVersionReply = XcbReply<xcb_shm_query_version, xcb_shm_query_version_reply>;
using FormatsReply = XcbReply<xcb_render_query_pict_formats, xcb_render_query_pict_formats_reply>;

using Version = std::pair<std::uint32_t, std::uint32_t>;

// The first with NameWindowPixmap.
constexpr Version compositeVersion{0, 2};
// The first with transformations and filters.
constexpr Version renderVersion{0, 6};
// The first with regions.
constexpr Version fixesVersion{2, 0};
// The first that accepts memory as a file descriptor.
constexpr Version sharedVersion{1, 2};

const xcb_query_extension_reply_t* extension(XcbConnection& connection, xcb_extension_t& name)
{
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection.raw(), &name);
    return data && data->present != 0 ? data : nullptr;
}

/// A file descriptor reaches only a server of this machine; sending one elsewhere ends the
/// connection.
bool isLocal(const XcbConnection& connection)
{
    int domain = AF_UNSPEC;
    socklen_t length = sizeof(domain);
    return getsockopt(connection.fileDescriptor(), SOL_SOCKET, SO_DOMAIN, &domain, &length) == 0 &&
           domain == AF_UNIX;
}

/// Whether the server stores pixels of the depth as 32-bit words in this machine's byte order.
bool hasWholeWords(const XcbConnection& connection, std::uint8_t depth)
{
    const xcb_setup_t* setup = xcb_get_setup(connection.raw());
    const bool isLittle = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (isLittle != (std::endian::native == std::endian::little))
        return false;
    for (auto it = xcb_setup_pixmap_formats_iterator(setup); it.rem > 0; xcb_format_next(&it)) {
        if (it.data->depth == depth)
            return it.data->bits_per_pixel == 32;
    }
    return false;
}

bool isQImageLayout(const xcb_render_pictforminfo_t& format)
{
    const xcb_render_directformat_t& direct = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && direct.red_shift == 16 &&
           direct.green_shift == 8 && direct.blue_shift == 0 && direct.red_mask == 0xFF &&
           direct.green_mask == 0xFF && direct.blue_mask == 0xFF;
}

int screenNumber(const XcbConnection& connection)
{
    int number = 0;
    auto it = xcb_setup_roots_iterator(xcb_get_setup(connection.raw()));
    for (; it.rem > 0 && it.data->root != connection.root(); xcb_screen_next(&it))
        ++number;
    return number;
}

} // namespace

std::unique_ptr<CaptureConnection> CaptureConnection::open(DisplayConnector& connector)
{
    std::unique_ptr<DisplayConnection> display = connector.open();
    if (!display || !display->hasComposite())
        return nullptr;
    std::unique_ptr<CaptureConnection> capture(new CaptureConnection(std::move(display)));
    if (!capture->negotiate() || !capture->readFormats())
        return nullptr;
    capture->watchCompositor();
    return capture->connection().isBroken() ? nullptr : std::move(capture);
}

CaptureConnection::CaptureConnection(std::unique_ptr<DisplayConnection> display)
    : m_display(std::move(display))
{}

bool CaptureConnection::negotiate()
{
    XcbConnection& server = connection();
    for (xcb_extension_t* name :
         {&xcb_render_id, &xcb_xfixes_id, &xcb_damage_id, &xcb_shm_id, &xcb_composite_id})
        xcb_prefetch_extension_data(server.raw(), name);
    const auto* fixes = extension(server, xcb_xfixes_id);
    if (!fixes || !extension(server, xcb_render_id)) {
        qCDebug(logX11Capture, "no previews: XFixes or RENDER is missing");
        return false;
    }
    m_selectionEvent = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    CompositeVersionReply composite(server, compositeVersion.first, compositeVersion.second);
    RenderVersionReply render(server, 0U, 11U);
    FixesVersionReply regions(server, fixesVersion.first, fixesVersion.second);
    if (const auto* damage = extension(server, xcb_damage_id)) {
        DamageVersionReply version(server, 1U, 1U);
        if (version.get())
            m_damageEvent = static_cast<std::uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    }
    if (extension(server, xcb_shm_id)) {
        SharedVersionReply shared(server);
        const auto* version = shared.get();
        m_takesSharedMemory =
            version && isLocal(server) &&
            Version(version->major_version, version->minor_version) >= sharedVersion;
    }
    const auto isEnough = [](const auto* version, const Version& least) {
        return version && Version(version->major_version, version->minor_version) >= least;
    };
    return isEnough(composite.get(), compositeVersion) && isEnough(render.get(), renderVersion) &&
           isEnough(regions.get(), fixesVersion);
}

bool CaptureConnection::readFormats()
{
    FormatsReply reply(connection());
    const auto* formats = reply.get();
    if (!formats)
        return false;
    std::map<xcb_render_pictformat_t, PixelFormat> known;
    for (auto it = xcb_render_query_pict_formats_formats_iterator(formats); it.rem > 0;
         xcb_render_pictforminfo_next(&it)) {
        const PixelFormat format{it.data->id, it.data->depth, it.data->direct.alpha_mask != 0};
        known[format.id] = format;
        if (isQImageLayout(*it.data) && hasWholeWords(connection(), format.depth)) {
            if (format.depth == 24 && !format.hasAlpha) {
                m_opaque = format;
            } else if (format.depth == 32 && it.data->direct.alpha_mask == 0xFF &&
                       it.data->direct.alpha_shift == 24) {
                m_transparent = format;
            }
        }
    }
    for (auto screens = xcb_render_query_pict_formats_screens_iterator(formats); screens.rem > 0;
         xcb_render_pictscreen_next(&screens)) {
        for (auto depths = xcb_render_pictscreen_depths_iterator(screens.data); depths.rem > 0;
             xcb_render_pictdepth_next(&depths)) {
            const xcb_render_pictvisual_t* visuals = xcb_render_pictdepth_visuals(depths.data);
            for (int index = 0; index < xcb_render_pictdepth_visuals_length(depths.data); ++index)
                m_formats[visuals[index].visual] = known[visuals[index].format];
        }
    }
    qCDebug(logX11Capture, "pixel formats read; shared memory: %d, damage: %d", m_takesSharedMemory,
            m_damageEvent.has_value());
    return m_opaque.id != XCB_NONE && m_transparent.id != XCB_NONE;
}

void CaptureConnection::watchCompositor()
{
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(screenNumber(connection()));
    AtomReply reply(connection(), std::uint8_t{0}, static_cast<std::uint16_t>(name.size()),
                    name.constData());
    const auto* atom = reply.get();
    m_compositorSelection = atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
    xcb_xfixes_select_selection_input(connection().raw(), connection().root(),
                                      m_compositorSelection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

std::optional<PixelFormat> CaptureConnection::formatOf(xcb_visualid_t visual) const
{
    const auto it = m_formats.find(visual);
    return it == m_formats.end() || it->second.id == XCB_NONE ? std::nullopt
                                                              : std::optional(it->second);
}

} // namespace kelpa::x11
