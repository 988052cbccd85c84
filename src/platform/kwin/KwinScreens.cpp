#include "platform/kwin/KwinScreens.h"

#include "platform/kwin/KwinReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <algorithm>
#include <cmath>

namespace kelpa::kwin {

namespace {

/// No session has more.
constexpr qsizetype mostScreens = 64;
/// Of a place, in points; no screen is farther away.
constexpr double farthest = 1e6;

Rect common(const Rect& one, const Rect& other)
{
    const double left = std::max(one.x, other.x);
    const double top = std::max(one.y, other.y);
    return {left, top, std::min(one.x + one.width, other.x + other.width) - left,
            std::min(one.y + one.height, other.y + other.height) - top};
}

bool isEmpty(const Rect& rect)
{
    return !(rect.width > 0 && rect.height > 0);
}

QPoint middleOf(const Rect& rect)
{
    return {static_cast<int>(std::floor(rect.x + rect.width / 2)),
            static_cast<int>(std::floor(rect.y + rect.height / 2))};
}

} // namespace

std::vector<Rect> screensIn(const QByteArray& report)
{
    if (report.size() > longestReport)
        return {};
    const QJsonArray rows = QJsonDocument::fromJson(report).array();
    const qsizetype count = std::min(rows.size(), mostScreens);
    std::vector<Rect> screens;
    screens.reserve(static_cast<std::size_t>(count));
    for (qsizetype index = 0; index < count; ++index) {
        const QJsonObject row = rows.at(index).toObject();
        const auto length = [&row](const char* key) {
            return std::clamp(row.value(QLatin1String(key)).toDouble(), -farthest, farthest);
        };
        const Rect screen{length("x"), length("y"), length("width"), length("height")};
        if (!isEmpty(screen))
            screens.push_back(screen);
    }
    return screens;
}

QPoint pixelOnScreen(const std::vector<Rect>& screens, const std::vector<Rect>& windows)
{
    for (const Rect& window : windows) {
        for (const Rect& screen : screens) {
            if (const Rect part = common(window, screen); !isEmpty(part))
                return middleOf(part);
        }
    }
    if (!screens.empty())
        return middleOf(screens.front());
    return windows.empty() ? QPoint() : middleOf(windows.front());
}

} // namespace kelpa::kwin
