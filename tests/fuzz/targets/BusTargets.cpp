// What arrives over the session bus: the lists of KWin's script and of the Shell's extension, and
// the calls of programs.
#include "automation/Methods.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/targets/MemoryFile.h"
#include "model/GoalPins.h"
#include "model/WindowItem.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/gnome/ShellPicture.h"
#include "platform/gnome/ShellWindow.h"
#include "platform/kwin/KwinPicture.h"
#include "platform/kwin/KwinReport.h"

#include <QSet>
#include <QSize>
#include <QVariantMap>

namespace kelpa::fuzz {

namespace {

/// Null where the bytes are none of that type. The text form reaches the members, the serialised
/// form what is malformed within.
GlibPointer<GVariant> valueOf(const QByteArray& bytes, const char* typeText)
{
    const auto* const type = G_VARIANT_TYPE(typeText);
    GVariant* const value =
        bytes.startsWith('[') || bytes.startsWith('@')
            ? g_variant_parse(type, bytes.constData(), bytes.constData() + bytes.size(), nullptr,
                              nullptr)
            : g_variant_new_from_data(type, bytes.constData(), static_cast<gsize>(bytes.size()),
                                      FALSE, nullptr, nullptr);
    return GlibPointer<GVariant>(value == nullptr ? nullptr : g_variant_take_ref(value));
}

} // namespace

void decodeKwinReport(const QByteArray& bytes)
{
    require(kwin::desktopsIn(bytes).size() <= mostVirtualDesktops, "a session has few desktops");
    const auto windows = kwin::windowsIn(bytes);
    if (!windows)
        return;
    QSet<QByteArray> uuids;
    for (const kwin::KwinWindow& window : *windows) {
        require(!window.uuid.isEmpty(), "a window of KWin's has a name");
        require(!window.desktopNumber || (*window.desktopNumber >= everyVirtualDesktop &&
                                          *window.desktopNumber <= mostVirtualDesktops),
                "and a desktop that may be");
        uuids.insert(window.uuid);
    }
    require(uuids.size() == static_cast<qsizetype>(windows->size()), "of its own");
}

void decodeShellWindows(const QByteArray& bytes)
{
    const GlibPointer<GVariant> list = valueOf(bytes, "aa{sv}");
    if (!list)
        return;
    QSet<quint64> ids;
    const auto windows = gnome::windowsIn(list.get());
    for (const gnome::ShellWindow& window : windows) {
        gnome::layerOf(window);
        require(!window.desktopNumber || (*window.desktopNumber >= everyVirtualDesktop &&
                                          *window.desktopNumber <= mostVirtualDesktops),
                "a window of the Shell's is on a desktop that a goal can be pinned to, or on all");
        ids.insert(window.id);
    }
    require(ids.size() == static_cast<qsizetype>(windows.size()),
            "each window of the Shell's has an id of its own");
}

void decodeShellWorkspaces(const QByteArray& bytes)
{
    for (const char* const type : {"as", "a(ts)"}) {
        const GlibPointer<GVariant> list = valueOf(bytes, type);
        if (!list)
            continue;
        const gnome::ShellWorkspaces workspaces = gnome::workspacesIn(list.get());
        require(workspaces.names.size() <= mostVirtualDesktops, "a session has few workspaces");
        for (const QString& name : workspaces.names)
            require(name == name.trimmed() && name.size() <= 4096, "a name can be shown");
        if (workspaces.ids.isEmpty())
            continue;
        const QSet<DesktopID> ids(workspaces.ids.cbegin(), workspaces.ids.cend());
        require(workspaces.ids.size() == workspaces.names.size() && !ids.contains(0) &&
                    ids.size() == workspaces.ids.size(),
                "each workspace has an id of its own, or none has one");
    }
}

void decodeShellPicture(const QByteArray& bytes)
{
    const QSize largest(64, 64);
    const MemoryFile file(bytes);
    if (const auto picture = gnome::readPicture(file.descriptor(), largest))
        require(picture->width() <= largest.width() && picture->height() <= largest.height(),
                "a picture is no larger than asked for");
}

/// A method's name on the first line, then an argument a line: s and a text, u and a number, b and
/// a truth value, or x and a text in a list.
void decodeAutomationCall(const QByteArray& bytes)
{
    using namespace automation;
    const QList<QByteArray> lines = bytes.split('\n');
    QVariantList arguments;
    for (const QByteArray& line : lines.mid(1)) {
        const QByteArray value = line.mid(1);
        switch (line.isEmpty() ? '\0' : line[0]) {
        case 'u':
            arguments.append(value.toUInt());
            break;
        case 'b':
            arguments.append(value == "1");
            break;
        case 'x':
            arguments.append(QVariant(QVariantList{QString::fromUtf8(value)}));
            break;
        default:
            arguments.append(QString::fromUtf8(value));
        }
    }
    const auto request = requestFrom(QString::fromUtf8(lines[0]), arguments);
    if (const auto* const read = std::get_if<Request>(&request)) {
        const auto again = requestFrom(methodName(*read), argumentsOf(*read));
        const auto* const same = std::get_if<Request>(&again);
        require(same != nullptr && argumentsOf(*same) == argumentsOf(*read),
                "a request is the same once it went over the bus");
    }
    for (const ReplyKind kind : {ReplyKind::nothing, ReplyKind::identifier, ReplyKind::goals,
                                 ReplyKind::todos, ReplyKind::windows})
        replyFrom(kind, arguments);
}

} // namespace kelpa::fuzz
