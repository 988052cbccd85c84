#include "windows/memory/NewWindows.h"

#include "windows/memory/WindowMemory.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace kelpa {

namespace {

/// A page that loads is called by its address first.
bool isAddress(const QString& title)
{
    static const QRegularExpression address(
        QStringLiteral(R"(^(\w+://\S+|(www\.)?[\w-]+(\.[\w-]+)*\.[a-z]{2,12}/\S*)$)"));
    return address.match(title).hasMatch();
}

} // namespace

bool NewWindows::note(const QList<WindowItem>& windows, Time now)
{
    WindowID newest = m_newestWindow;
    bool hasAnother = false;
    QSet<WindowID> candidates;
    for (const WindowItem& window : windows) {
        newest = std::max(newest, window.id);
        if (window.goalID)
            continue;
        if (window.id > m_newestWindow && !m_windows.contains(window.id)) {
            m_windows.insert(window.id, {now, {}, {}, true});
            hasAnother = true;
        }
        candidates.insert(window.id);
    }
    m_newestWindow = newest;
    m_windows.removeIf([&](const auto& each) {
        return !candidates.contains(each.key()) || now - each->appeared >= settlingTime;
    });
    return hasAnother;
}

void NewWindows::noteTitles(const WindowMemory& memory, Time now)
{
    for (auto it = m_windows.begin(); it != m_windows.end(); ++it) {
        const std::optional<WindowKeys> keys = memory.keysOf(it.key());
        if (!keys)
            continue;
        bool isOther = false;
        const auto note = [&isOther](QString& known, const QString& present) {
            isOther = isOther || (!known.isEmpty() && known != present);
            known = present;
        };
        if (!keys->title.saysNothing && !isAddress(keys->title.text))
            note(it->title, keys->title.text);
        if (!keys->document.isEmpty())
            note(it->document, keys->document);
        if (isOther && now - it->appeared >= startingTime)
            it->hasFirstContent = false;
    }
}

void NewWindows::settle(WindowID windowID)
{
    m_windows.remove(windowID);
}

QSet<WindowID> NewWindows::ids() const
{
    return {m_windows.keyBegin(), m_windows.keyEnd()};
}

bool NewWindows::contains(WindowID windowID) const
{
    return m_windows.contains(windowID);
}

QList<NewWindow> NewWindows::toMatch(const WindowMemory& memory) const
{
    QList<NewWindow> windows;
    windows.reserve(m_windows.size());
    for (auto it = m_windows.begin(); it != m_windows.end(); ++it) {
        if (std::optional<WindowKeys> keys = memory.keysOf(it.key()))
            windows.append({it.key(), *std::move(keys), it->hasFirstContent});
    }
    std::ranges::sort(windows, {}, &NewWindow::windowID);
    return windows;
}

} // namespace kelpa
