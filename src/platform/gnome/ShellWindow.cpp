#include "platform/gnome/ShellWindow.h"

#include "model/GoalPins.h"
#include "model/WindowItem.h"
#include "platform/DialogOwners.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/numbers/NameTable.h"

#include <gio/gio.h>

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace kelpa::gnome {

namespace {

/// In code units of UTF-16.
constexpr qsizetype longestText = 4096;
/// In points: frames of stranger places and sizes are no frames.
constexpr int farthest = 1 << 20;

QString decodedText(const char* text)
{
    // Longer ones are not even converted.
    constexpr qsizetype longestUtf8 = 4 * longestText;
    const std::string_view all(text);
    QString decoded =
        QString::fromUtf8(text, std::min(static_cast<qsizetype>(all.size()), longestUtf8));
    if (decoded.size() > longestText)
        decoded.truncate(decoded.at(longestText - 1).isHighSurrogate() ? longestText - 1
                                                                       : longestText);
    return decoded;
}

QString textIn(GVariant* window, const char* key)
{
    const char* text = nullptr;
    return g_variant_lookup(window, key, "&s", &text) == FALSE ? QString() : decodedText(text);
}

bool isSet(GVariant* window, const char* key)
{
    gboolean value = FALSE;
    return g_variant_lookup(window, key, "b", &value) != FALSE && value != FALSE;
}

int numberIn(GVariant* window, const char* key)
{
    gint32 value = 0;
    if (g_variant_lookup(window, key, "i", &value) == FALSE)
        return 0;
    return std::clamp(value, -farthest, farthest);
}

ShellWindowKind kindIn(GVariant* window)
{
    const char* kind = nullptr;
    if (g_variant_lookup(window, "kind", "&s", &kind) == FALSE)
        return ShellWindowKind::other;
    for (const auto& [name, value] : {std::pair{"normal", ShellWindowKind::normal},
                                      std::pair{"dialog", ShellWindowKind::dialog},
                                      std::pair{"utility", ShellWindowKind::utility}}) {
        if (std::string_view(kind) == name)
            return value;
    }
    return ShellWindowKind::other;
}

/// Its workspace as the extension counts them, from 0, or -1 for all of them.
std::optional<int> desktopNumberIn(GVariant* window)
{
    gint32 index = 0;
    if (g_variant_lookup(window, "workspace", "i", &index) == FALSE || index < -1 ||
        index >= mostVirtualDesktops)
        return std::nullopt;
    return index == -1 ? everyVirtualDesktop : index + 1;
}

std::optional<ShellWindow> windowIn(GVariant* entry)
{
    guint64 id = 0;
    if (g_variant_lookup(entry, "id", "t", &id) == FALSE)
        return std::nullopt;
    const int process = numberIn(entry, "pid");
    const QString desktop = textIn(entry, "otherWorkspace").trimmed();
    return ShellWindow{
        .id = id,
        .title = textIn(entry, "title"),
        .process = process > 0 ? std::optional(ProcessID(process)) : std::nullopt,
        .application = textIn(entry, "app"),
        .windowClass = textIn(entry, "wmClass"),
        .role = textIn(entry, "role"),
        .frame = {double(numberIn(entry, "x")), double(numberIn(entry, "y")),
                  double(std::max(0, numberIn(entry, "width"))),
                  double(std::max(0, numberIn(entry, "height")))},
        .kind = kindIn(entry),
        .isOnScreen = isSet(entry, "onScreen"),
        .isMinimized = isSet(entry, "minimized"),
        .isOffTaskList = isSet(entry, "skipTaskbar"),
        .virtualDesktop = desktop.isEmpty() ? std::nullopt : std::optional(desktop),
        .desktopNumber = desktopNumberIn(entry),
    };
}

WindowTie<std::uint64_t> tieOf(const ShellWindow& window, GVariant* entry)
{
    guint64 owner = 0;
    g_variant_lookup(entry, "transientFor", "t", &owner);
    const bool isOnWayland = !isSet(entry, "xwayland");
    return {.window = window.id,
            .owner = owner == 0 ? std::nullopt : std::optional<std::uint64_t>(owner),
            .isDialog = window.kind == ShellWindowKind::dialog ||
                        (isOnWayland && owner != 0 && window.kind == ShellWindowKind::normal),
            .isOrdinary = layerOf(window) == 0};
}

} // namespace

int layerOf(const ShellWindow& window)
{
    constexpr int ordinary = 0;
    constexpr int offTaskList = 1;
    constexpr int auxiliary = 3;
    constexpr int passing = 101;
    switch (window.kind) {
    case ShellWindowKind::normal:
    case ShellWindowKind::dialog:
        return window.isOffTaskList ? offTaskList : ordinary;
    case ShellWindowKind::utility:
        return auxiliary;
    case ShellWindowKind::other:
        break;
    }
    return passing;
}

std::vector<ShellWindow> windowsIn(GVariant* list)
{
    std::vector<ShellWindow> windows;
    std::vector<WindowTie<std::uint64_t>> ties;
    std::set<std::uint64_t> known;
    const gsize count = std::min<gsize>(g_variant_n_children(list), NameTable::mostWindows);
    for (gsize index = 0; index < count; ++index) {
        const GlibPointer<GVariant> entry(g_variant_get_child_value(list, index));
        std::optional<ShellWindow> window = windowIn(entry.get());
        if (!window || !known.insert(window->id).second)
            continue;
        ties.push_back(tieOf(*window, entry.get()));
        windows.push_back(*std::move(window));
    }
    const std::map<std::uint64_t, std::uint64_t> owners = ownersOfDialogs(ties);
    const std::set<std::uint64_t> awaiting = windowsAwaitingAnswer(owners);
    for (ShellWindow& window : windows) {
        window.isAwaitingAnswer = awaiting.contains(window.id);
        if (const auto owner = owners.find(window.id); owner != owners.end())
            window.dialogOf = owner->second;
    }
    return windows;
}

ShellWorkspaces workspacesIn(GVariant* list)
{
    ShellWorkspaces workspaces;
    const bool hasIDs = g_variant_is_of_type(list, G_VARIANT_TYPE("a(ts)")) != FALSE;
    std::set<DesktopID> known{0};
    const gsize count = std::min<gsize>(g_variant_n_children(list), mostVirtualDesktops);
    for (gsize index = 0; index < count; ++index) {
        const GlibPointer<GVariant> entry(g_variant_get_child_value(list, index));
        const char* name = nullptr;
        guint64 id = 0;
        if (hasIDs)
            g_variant_get(entry.get(), "(t&s)", &id, &name);
        else
            name = g_variant_get_string(entry.get(), nullptr);
        workspaces.names.append(decodedText(name).trimmed());
        if (known.insert(id).second)
            workspaces.ids.append(id);
    }
    if (workspaces.ids.size() != workspaces.names.size())
        workspaces.ids = {};
    return workspaces;
}

} // namespace kelpa::gnome
