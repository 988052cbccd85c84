#include "platform/wayland/sway/SwayTree.h"

#include "model/GoalPins.h"
#include "model/WindowItem.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringView>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace kelpa::wayland {

namespace {

/// Deeper than anybody nests containers, and shallow enough for the stack.
constexpr int deepest = 200;

/// sway's own configuration has keys for so many workspaces.
constexpr int workspacesWithKeys = 10;

/// By number, the names of workspaces.
using NumberedWorkspaces = std::map<int, QString>;

QString text(const QJsonObject& object, const QString& key)
{
    return object.value(key).toString();
}

std::int64_t number(const QJsonObject& object, const QString& key)
{
    return object.value(key).toInteger();
}

Rect rectIn(const QJsonObject& object, const QString& key)
{
    const QJsonObject rect = object.value(key).toObject();
    const auto side = [&rect](const QString& name) { return rect.value(name).toDouble(); };
    return {side(QStringLiteral("x")), side(QStringLiteral("y")), side(QStringLiteral("width")),
            side(QStringLiteral("height"))};
}

/// The window within a container, whose own rectangle has the decorations too.
Rect contentOf(const QJsonObject& node)
{
    const Rect container = rectIn(node, QStringLiteral("rect"));
    const Rect content = rectIn(node, QStringLiteral("window_rect"));
    if (!(content.width > 0) || !(content.height > 0))
        return container;
    return {container.x + content.x, container.y + content.y, content.width, content.height};
}

SwayWindow windowOf(const QJsonObject& node)
{
    SwayWindow window;
    window.container = number(node, QStringLiteral("id"));
    window.title = text(node, QStringLiteral("name"));
    window.appID = text(node, QStringLiteral("app_id"));
    const QJsonObject properties = node.value(QStringLiteral("window_properties")).toObject();
    window.wmClassInstance = text(properties, QStringLiteral("instance"));
    window.wmClassName = text(properties, QStringLiteral("class"));
    const std::int64_t process = number(node, QStringLiteral("pid"));
    if (process > 0 && process <= std::numeric_limits<ProcessID>::max())
        window.process = static_cast<ProcessID>(process);
    window.bounds = contentOf(node);
    window.isVisible = node.value(QStringLiteral("visible")).toBool();
    window.hasFocus = node.value(QStringLiteral("focused")).toBool();
    window.identifier = text(node, QStringLiteral("foreign_toplevel_identifier")).toUtf8();
    return window;
}

struct Child
{
    QJsonObject node;
    bool isFloating = false;
};

/// The children of a container, in the order in which they last had the focus.
std::vector<Child> childrenOf(const QJsonObject& node)
{
    std::map<std::int64_t, std::size_t> ranks;
    for (const auto& id : node.value(QStringLiteral("focus")).toArray())
        ranks.emplace(id.toInteger(), ranks.size());
    std::vector<std::pair<std::size_t, Child>> ranked;
    for (const bool isFloating : {true, false}) {
        const QString kind =
            isFloating ? QStringLiteral("floating_nodes") : QStringLiteral("nodes");
        for (const auto& child : node.value(kind).toArray()) {
            const auto rank = ranks.find(number(child.toObject(), QStringLiteral("id")));
            ranked.emplace_back(rank == ranks.end() ? ranks.size() : rank->second,
                                Child{child.toObject(), isFloating});
        }
    }
    std::ranges::stable_sort(ranked, {}, &std::pair<std::size_t, Child>::first);
    std::vector<Child> children;
    children.reserve(ranked.size());
    for (auto& [rank, child] : ranked)
        children.push_back(std::move(child));
    return children;
}

/// The number by which sway finds a workspace of that name; absent where it has none, or a greater
/// one than goals are pinned to.
std::optional<int> numberOfWorkspace(const QString& name)
{
    const auto isDigit = [](QChar each) { return each >= u'0' && each <= u'9'; };
    const auto end = std::ranges::find_if_not(name, isDigit);
    const int number = QStringView(name.begin(), end).toInt();
    // For sway, one with a zero in front is another one.
    if (number < 1 || number > mostVirtualDesktops || name.startsWith(u'0'))
        return std::nullopt;
    return number;
}

/// What holds for the windows below a node of the tree.
struct Surroundings
{
    /// The workspace that the output shows; empty for none, as in the output of the scratchpad.
    QString shownWorkspace{};
    /// As `SwayWindow::hiddenWorkspace`.
    std::optional<QString> hiddenWorkspace{};
    /// As `SwayWindow::desktopNumber`.
    std::optional<int> desktopNumber{};
};

Surroundings within(const Child& child, Surroundings around)
{
    const QJsonObject& node = child.node;
    const QString type = text(node, QStringLiteral("type"));
    if (type == QStringLiteral("output"))
        around.shownWorkspace = text(node, QStringLiteral("current_workspace"));
    else if (type == QStringLiteral("workspace") && !around.shownWorkspace.isEmpty()) {
        const QString name = text(node, QStringLiteral("name"));
        if (name != around.shownWorkspace && !name.isEmpty())
            around.hiddenWorkspace = name;
        around.desktopNumber = numberOfWorkspace(name).value_or(unnumberedVirtualDesktop);
    }
    // A tiled container may be marked so too, and stays on its workspace all the same.
    if (child.isFloating && node.value(QStringLiteral("sticky")).toBool()) {
        around.hiddenWorkspace.reset();
        around.desktopNumber = everyVirtualDesktop;
    }
    return around;
}

void collect(const Child& child, const Surroundings& around, std::vector<SwayWindow>& windows,
             int left)
{
    const QJsonObject& node = child.node;
    const Surroundings inside = within(child, around);
    // Only windows have a shell; containers of windows do not.
    if (node.contains(QStringLiteral("shell")) && number(node, QStringLiteral("id")) != 0) {
        SwayWindow& window = windows.emplace_back(windowOf(node));
        window.hiddenWorkspace = inside.hiddenWorkspace;
        window.desktopNumber = inside.desktopNumber;
        return;
    }
    if (left == 0)
        return;
    for (const Child& each : childrenOf(node))
        collect(each, inside, windows, left - 1);
}

/// Several may have one number; sway goes to the first in the order of its outputs, which is that
/// of `nodes`.
NumberedWorkspaces workspacesIn(const QJsonObject& root)
{
    NumberedWorkspaces workspaces;
    for (const auto& output : root.value(QStringLiteral("nodes")).toArray()) {
        // The output of the scratchpad shows none.
        if (text(output.toObject(), QStringLiteral("current_workspace")).isEmpty())
            continue;
        for (const auto& each : output.toObject().value(QStringLiteral("nodes")).toArray()) {
            const QString name = text(each.toObject(), QStringLiteral("name"));
            if (const std::optional<int> number = numberOfWorkspace(name))
                workspaces.emplace(*number, name.trimmed());
        }
    }
    return workspaces;
}

QStringList namesIn(const NumberedWorkspaces& workspaces)
{
    QStringList names(mostVirtualDesktops);
    for (const auto& [number, name] : workspaces) {
        if (name != QString::number(number))
            names[number - 1] = name;
    }
    return names;
}

QList<int> unofferedIn(const NumberedWorkspaces& workspaces)
{
    QList<int> numbers;
    numbers.reserve(mostVirtualDesktops - workspacesWithKeys);
    for (int number = workspacesWithKeys + 1; number <= mostVirtualDesktops; ++number) {
        if (!workspaces.contains(number))
            numbers.append(number);
    }
    return numbers;
}

/// sway passes titles on as programs send them, which may be any bytes; one of them must not cost
/// the list of all windows.
QJsonDocument documentIn(const QByteArray& json)
{
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error == QJsonParseError::IllegalUTF8String)
        return QJsonDocument::fromJson(QString::fromUtf8(json).toUtf8());
    return document;
}

} // namespace

std::optional<SwayTree> treeIn(const QByteArray& json)
{
    const QJsonDocument document = documentIn(json);
    if (!document.isObject() || !document.object().contains(QStringLiteral("nodes")))
        return std::nullopt;
    std::vector<SwayWindow> windows;
    collect({.node = document.object()}, {}, windows, deepest);
    const NumberedWorkspaces workspaces = workspacesIn(document.object());
    return SwayTree{.windows = std::move(windows),
                    .workspaces = namesIn(workspaces),
                    .unofferedWorkspaces = unofferedIn(workspaces)};
}

std::optional<std::vector<SwayWindow>> windowsInTree(const QByteArray& json)
{
    std::optional<SwayTree> tree = treeIn(json);
    return tree ? std::optional(std::move(tree->windows)) : std::nullopt;
}

} // namespace kelpa::wayland
