#include "windows/FirstPictures.h"

#include <algorithm>
#include <iterator>

namespace kelpa {

void FirstPictures::noteInView(WindowID window)
{
    if (!m_inView.contains(window))
        m_inView.append(window);
}

void FirstPictures::noteTried(WindowID window)
{
    m_tried.insert(window);
    m_blankOnce.remove(window);
}

bool FirstPictures::acceptsBlank(WindowID window)
{
    if (m_blankOnce.contains(window))
        return true;
    m_blankOnce.insert(window);
    return false;
}

void FirstPictures::forgetTries()
{
    m_tried.clear();
    m_blankOnce.clear();
}

qsizetype FirstPictures::restrictTo(const QList<WindowItem>& windows)
{
    QSet<WindowID> listed;
    for (const WindowItem& window : windows)
        listed.insert(window.id);
    const auto isGone = [&listed](WindowID id) { return !listed.contains(id); };
    m_tried.removeIf(isGone);
    m_blankOnce.removeIf(isGone);
    return m_inView.removeIf(isGone);
}

std::vector<WindowID> FirstPictures::untried(const QList<WindowItem>& windows,
                                             const Previews& previews) const
{
    QSet<WindowID> wanted;
    for (const WindowItem& window : windows) {
        if (window.isOnScreen && !previews.contains(window.id) && !m_tried.contains(window.id) &&
            !m_blankOnce.contains(window.id))
            wanted.insert(window.id);
    }
    std::vector<WindowID> found;
    std::ranges::copy_if(m_inView, std::back_inserter(found),
                         [&wanted](WindowID id) { return wanted.contains(id); });
    return found;
}

QList<WindowID> FirstPictures::blankOnce(const QList<WindowItem>& windows,
                                         const Previews& previews) const
{
    QList<WindowID> found;
    for (const WindowItem& window : windows) {
        if (window.isOnScreen && m_blankOnce.contains(window.id) && !previews.contains(window.id))
            found.append(window.id);
    }
    return found;
}

} // namespace kelpa
