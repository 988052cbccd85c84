#include "windows/PreviewRotation.h"

#include <algorithm>

namespace kelpa {

PreviewTurn previewTurn(qsizetype cursor, qsizetype count)
{
    const qsizetype index = cursor % count;
    return {index, (index + 1) % count};
}

std::vector<WindowID> windowsOfUpcomingTurns(const PreviewTurn& turn,
                                             const QList<WindowItem>& windows)
{
    constexpr qsizetype maxTurns = 3;
    std::vector<WindowID> next;
    const qsizetype count = std::min(maxTurns, windows.size() - 1);
    for (qsizetype step = 1; step <= count; ++step)
        next.push_back(windows.at((turn.index + step) % windows.size()).id);
    return next;
}

QSizeF previewDisplaySize(const QSize& pixelSize)
{
    const double longest = std::max(pixelSize.width(), pixelSize.height());
    const double scale = std::min(previewLongestSide / longest, 1.0);
    return {std::max(pixelSize.width() * scale, 1.0), std::max(pixelSize.height() * scale, 1.0)};
}

Previews mergedPreviews(const Previews& previews, const Previews& captured,
                        const QList<WindowItem>& windows)
{
    Previews merged;
    for (const WindowItem& window : windows) {
        const auto preview = previews.constFind(window.id);
        if (preview != previews.constEnd())
            merged.insert(window.id, *preview);
    }
    merged.insert(captured);
    return merged;
}

} // namespace kelpa
