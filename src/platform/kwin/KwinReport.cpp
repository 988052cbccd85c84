#include "platform/kwin/KwinReport.h"

#include "model/GoalPins.h"
#include "model/WindowItem.h"
#include "platform/DialogOwners.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QUuid>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <utility>

namespace kelpa::kwin {

namespace {

/// As many as have numbers (NameTable::mostWindows).
constexpr qsizetype mostWindows = 4096;

struct RankedWindow
{
    KwinWindow window;
    std::int64_t activation = 0;
    std::int64_t stacking = 0;
    /// The UUID of the window that it belongs to; empty for none.
    QByteArray owner{};
    bool isDialog = false;
};

/// KWin's form of a UUID; empty for any other text.
QByteArray uuidIn(const QJsonValue& value)
{
    const QUuid uuid = QUuid::fromString(value.toString());
    return uuid.isNull() ? QByteArray() : uuid.toByteArray(QUuid::WithBraces);
}

std::optional<ProcessID> processIn(const QJsonValue& value)
{
    const std::int64_t process = value.toInteger();
    return process > 0 && process <= std::numeric_limits<ProcessID>::max()
               ? std::optional(static_cast<ProcessID>(process))
               : std::nullopt;
}

/// No screen is larger; 0 for what is no number.
double lengthIn(const QJsonValue& value)
{
    constexpr double longest = 1e6;
    const double length = value.toDouble();
    return std::isfinite(length) ? std::clamp(length, -longest, longest) : 0;
}

RankedWindow windowIn(const QJsonObject& row)
{
    const auto text = [&row](const char* key) { return row.value(QLatin1String(key)).toString(); };
    const auto is = [&row](const char* key) { return row.value(QLatin1String(key)).toBool(); };
    const auto length = [&row](const char* key) { return lengthIn(row.value(QLatin1String(key))); };
    const auto number = [&row](const char* key) {
        return static_cast<std::int64_t>(row.value(QLatin1String(key)).toInteger());
    };
    RankedWindow ranked;
    ranked.activation = number("activation");
    ranked.stacking = number("stacking");
    ranked.owner = uuidIn(row.value(QStringLiteral("owner")));
    ranked.isDialog = is("isDialog");
    KwinWindow& window = ranked.window;
    window.uuid = uuidIn(row.value(QStringLiteral("id")));
    window.title = text("title");
    window.desktopFile = text("file");
    window.className = text("className");
    window.instanceName = text("instance");
    window.role = text("role");
    window.process = processIn(row.value(QStringLiteral("process")));
    window.bounds = {length("x"), length("y"), std::max(0.0, length("width")),
                     std::max(0.0, length("height"))};
    window.isOrdinary = is("isOrdinary");
    window.isMinimized = is("isMinimized");
    window.isActive = is("isActive");
    window.isHere = is("isHere");
    const QString desktop = text("desktop").trimmed();
    window.virtualDesktop = desktop.isEmpty() ? std::nullopt : std::optional(desktop);
    const int place = row.value(QStringLiteral("desktopNumber")).toInt(-1);
    if (place >= everyVirtualDesktop && place <= mostVirtualDesktops)
        window.desktopNumber = place;
    window.revision = number("revision");
    return ranked;
}

void noteDialogs(std::vector<RankedWindow>& windows)
{
    std::vector<WindowTie<QByteArray>> ties;
    ties.reserve(windows.size());
    for (const RankedWindow& each : windows) {
        ties.push_back({.window = each.window.uuid,
                        .owner = each.owner,
                        .isDialog = each.isDialog,
                        .isOrdinary = each.window.isOrdinary});
    }
    const std::map<QByteArray, QByteArray> owners = ownersOfDialogs(ties);
    const std::set<QByteArray> awaiting = windowsAwaitingAnswer(owners);
    for (RankedWindow& each : windows) {
        each.window.isAwaitingAnswer = awaiting.contains(each.window.uuid);
        if (const auto owner = owners.find(each.window.uuid); owner != owners.end())
            each.window.dialogOf = owner->second;
    }
}

} // namespace

std::optional<std::vector<KwinWindow>> windowsIn(const QByteArray& report)
{
    if (report.size() > longestReport)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(report);
    if (!document.isArray() || document.array().size() > mostWindows)
        return std::nullopt;
    const QJsonArray rows = document.array();
    std::vector<RankedWindow> ranked;
    std::set<QByteArray> known;
    for (const auto& row : rows) {
        RankedWindow each = windowIn(row.toObject());
        if (!each.window.uuid.isEmpty() && known.insert(each.window.uuid).second)
            ranked.push_back(std::move(each));
    }
    noteDialogs(ranked);
    std::ranges::stable_sort(ranked, [](const RankedWindow& one, const RankedWindow& other) {
        return std::pair(one.activation, one.stacking) >
               std::pair(other.activation, other.stacking);
    });
    std::vector<KwinWindow> windows;
    windows.reserve(ranked.size());
    for (RankedWindow& each : ranked)
        windows.push_back(std::move(each.window));
    return windows;
}

QStringList desktopsIn(const QByteArray& report)
{
    if (report.size() > longestReport)
        return {};
    const QJsonArray rows = QJsonDocument::fromJson(report).array();
    const qsizetype count = std::min(rows.size(), qsizetype{mostVirtualDesktops});
    QStringList names;
    names.reserve(count);
    for (qsizetype index = 0; index < count; ++index)
        names.append(rows.at(index).toString().trimmed());
    return names;
}

} // namespace kelpa::kwin
