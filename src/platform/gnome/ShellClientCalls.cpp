// The calls of the Shell's extension: what it lists, draws and does.
#include "platform/gnome/ShellClient.h"

#include "platform/freedesktop/bus/BlockingBus.h"
#include "platform/gnome/ShellPicture.h"
#include "platform/gnome/ShellReply.h"
#include "platform/numbers/NameTable.h"

#include <cstring>
#include <utility>

namespace kelpa::gnome {

namespace {

/// No token of a compositor is longer.
constexpr std::size_t longestToken = 256;

} // namespace

bool ShellClient::takesIDs() const
{
    return standing().version >= workspaceIDsVersion;
}

ShellList ShellClient::list()
{
    const bool isWithWorkspaces = takesIDs();
    const BusReply reply = isWithWorkspaces
                               ? callExtension("ListWithWorkspaces", nullptr, "(aa{sv}a(ts))")
                               : callExtension("List", nullptr, "(aa{sv})");
    ShellList list{.isServed = isServed(reply)};
    if (reply.outcome != BusCallOutcome::answered)
        return list;
    const GlibPointer<GVariant> windows(g_variant_get_child_value(reply.value.get(), 0));
    list.windows = windowsIn(windows.get());
    if (isWithWorkspaces) {
        const GlibPointer<GVariant> workspaces(g_variant_get_child_value(reply.value.get(), 1));
        list.workspaces = workspacesIn(workspaces.get());
    } else {
        list.workspaces = workspaceNames();
    }
    return list;
}

std::optional<ShellWorkspaces> ShellClient::workspaceNames()
{
    if (standing().version < workspacesVersion)
        return ShellWorkspaces();
    const BusReply reply = callExtension("Workspaces", nullptr, "(as)");
    if (reply.outcome != BusCallOutcome::answered)
        return std::nullopt;
    const GlibPointer<GVariant> workspaces(g_variant_get_child_value(reply.value.get(), 0));
    return workspacesIn(workspaces.get());
}

std::optional<QImage> ShellClient::picture(std::uint64_t window, const QSize& largest,
                                           bool isNeeded)
{
    std::uint64_t known = 0;
    {
        const std::scoped_lock lock(m_mutex);
        const auto it = m_pictured.find(window);
        if (!isNeeded && it != m_pictured.end() && it->second.largest == largest)
            known = it->second.revision;
    }
    const BusReply reply =
        callExtension("Picture",
                      g_variant_new("(tuut)", guint64{window}, guint32(largest.width()),
                                    guint32(largest.height()), guint64{known}),
                      "(btuuh)");
    if (reply.outcome != BusCallOutcome::answered)
        return std::nullopt;
    gboolean isUnchanged = FALSE;
    guint64 revision = 0;
    guint32 width = 0;
    guint32 height = 0;
    gint32 index = -1;
    g_variant_get(reply.value.get(), "(btuuh)", &isUnchanged, &revision, &width, &height, &index);
    if (isUnchanged != FALSE || index < 0 ||
        std::cmp_greater_equal(index, reply.descriptors.size()))
        return std::nullopt;
    std::optional<QImage> image =
        readPicture(reply.descriptors.at(static_cast<std::size_t>(index)).number(), largest);
    if (image) {
        const std::scoped_lock lock(m_mutex);
        if (m_pictured.size() >= NameTable::mostWindows)
            m_pictured.clear();
        m_pictured[window] = {.revision = revision, .largest = largest};
    }
    return image;
}

void ShellClient::act(const char* method, GVariant* arguments)
{
    callExtension(method, arguments, "()");
}

void ShellClient::activate(std::uint64_t window)
{
    constexpr guint32 now = 0;
    act("Activate", g_variant_new("(tu)", guint64{window}, now));
}

void ShellClient::close(std::uint64_t window)
{
    act("Close", g_variant_new("(t)", guint64{window}));
}

void ShellClient::minimize(std::uint64_t window)
{
    act("Minimize", g_variant_new("(t)", guint64{window}));
}

void ShellClient::restore(std::uint64_t window)
{
    act("Restore", g_variant_new("(t)", guint64{window}));
}

void ShellClient::sendTo(std::uint64_t window, const NumberedDesktop& workspace)
{
    if (workspace.id && takesIDs())
        act("SendToWorkspace", g_variant_new("(tt)", guint64{window}, guint64{*workspace.id}));
    else
        act("SendTo",
            g_variant_new("(tu)", guint64{window}, static_cast<guint32>(workspace.number)));
}

void ShellClient::showWorkspace(const NumberedDesktop& workspace)
{
    if (workspace.id && takesIDs())
        act("GoToWorkspace", g_variant_new("(t)", guint64{*workspace.id}));
    else
        act("ShowWorkspace", g_variant_new("(u)", static_cast<guint32>(workspace.number)));
}

bool ShellClient::bringForward()
{
    return callExtension("BringForward", nullptr, "()").outcome == BusCallOutcome::answered;
}

QByteArray ShellClient::token(const QString& desktopEntryID)
{
    const BusReply reply =
        callExtension("Token", g_variant_new("(s)", desktopEntryID.toUtf8().constData()), "(s)");
    if (reply.outcome != BusCallOutcome::answered)
        return {};
    const char* token = nullptr;
    g_variant_get(reply.value.get(), "(&s)", &token);
    const std::size_t length = std::strlen(token);
    return length > longestToken ? QByteArray() : QByteArray(token, qsizetype(length));
}

} // namespace kelpa::gnome
