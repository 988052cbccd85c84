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

/// The children of a container by their numbers, in the order in which they last had the focus.
std::vector<QJsonObject> childrenOf(const QJsonObject& node)
{
    std::map<std::int64_t, std::size_t> ranks;
    for (const auto& id : node.value(QStringLiteral("focus")).toArray())
        ranks.emplace(id.toInteger(), ranks.size());
    std::vector<std::pair<std::size_t, QJsonObject>> ranked;
    for (const QString& kind : {QStringLiteral("floating_nodes"), QStringLiteral("nodes")}) {
        for (const auto& child : node.value(kind).toArray()) {
            const auto rank = ranks.find(number(child.toObject(), QStringLiteral("id")));
            ranked.emplace_back(rank == ranks.end() ? ranks.size() : rank->second,
                                child.toObject());
        }
    }
    std::ranges::stable_sort(ranked, {}, &std::pair<std::size_t, QJsonObject>::first);
    std::vector<QJsonObject> children;
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

Surroundings within(const QJsonObject& node, Surroundings around, NumberedWorkspaces& numbered)
{
    const QString type = text(node, QStringLiteral("type"));
    if (type == QStringLiteral("output"))
        around.shownWorkspace = text(node, QStringLiteral("current_workspace"));
    else if (type == QStringLiteral("workspace") && !around.shownWorkspace.isEmpty()) {
        const QString name = text(node, QStringLiteral("name"));
        if (name != around.shownWorkspace && !name.isEmpty())
            around.hiddenWorkspace = name;
        const std::optional<int> number = numberOfWorkspace(name);
        around.desktopNumber = number.value_or(unnumberedVirtualDesktop);
        // Several may have one number; sway goes to the first.
        if (number)
            numbered.emplace(*number, name.trimmed());
    }
    if (node.value(QStringLiteral("sticky")).toBool()) {
        around.hiddenWorkspace.reset();
        around.desktopNumber = everyVirtualDesktop;
    }
    return around;
}

struct Collection
{
    std::vector<SwayWindow> windows;
    NumberedWorkspaces workspaces;
};

void collect(const QJsonObject& node, const Surroundings& around, Collection& collection, int left)
{
    const Surroundings inside = within(node, around, collection.workspaces);
    // Only windows have a shell; containers of windows do not.
    if (node.contains(QStringLiteral("shell")) && number(node, QStringLiteral("id")) != 0) {
        SwayWindow& window = collection.windows.emplace_back(windowOf(node));
        window.hiddenWorkspace = inside.hiddenWorkspace;
        window.desktopNumber = inside.desktopNumber;
        return;
    }
    if (left == 0)
        return;
    for (const QJsonObject& child : childrenOf(node))
        collect(child, inside, collection, left - 1);
}

QStringList namesIn(const NumberedWorkspaces& workspaces)
{
    const int greatest = workspaces.empty() ? 0 : workspaces.rbegin()->first;
    QStringList names(std::max(greatest, workspacesWithKeys));
    for (const auto& [number, name] : workspaces) {
        if (name != QString::number(number))
            names[number - 1] = name;
    }
    return names;
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
    Collection collection;
    collect(document.object(), {}, collection, deepest);
    return SwayTree{.windows = std::move(collection.windows),
                    .workspaces = namesIn(collection.workspaces)};
}

std::optional<std::vector<SwayWindow>> windowsInTree(const QByteArray& json)
{
    std::optional<SwayTree> tree = treeIn(json);
    return tree ? std::optional(std::move(tree->windows)) : std::nullopt;
}

} // namespace kelpa::wayland
