// Which windows in view still need their first picture. These are captured one right after the
// other, before the others take turns.
#pragma once

#include "model/Preview.h"
#include "model/WindowItem.h"

#include <QList>
#include <QSet>

#include <vector>

namespace kelpa {

/// A value, without time. `windows` are always the listed windows, `previews` their pictures.
class FirstPictures
{
public:
    /// A card of the window has come into view.
    void noteInView(WindowID window);
    /// A capture of the window gave no picture, or one that is shown.
    void noteTried(WindowID window);
    /// A capture gave a blank picture of a window that has none. Returns whether it is to be shown:
    /// the first one is not, since the window may still be about to draw itself.
    bool acceptsBlank(WindowID window);
    /// Forgets which windows were tried, but not which are in view.
    void forgetTries();
    /// Forgets windows that are not listed any more. Returns how many of them had come into view.
    qsizetype restrictTo(const QList<WindowItem>& windows);

    /// Windows in view to capture now, in the order in which they came into view: those on screen
    /// that have no picture and were not tried.
    std::vector<WindowID> untried(const QList<WindowItem>& windows, const Previews& previews) const;
    /// The windows to capture once more, since their first picture was blank.
    QList<WindowID> blankOnce(const QList<WindowItem>& windows, const Previews& previews) const;
    /// Whether it is known that the window cannot be captured, unless it has a picture.
    bool wasTried(WindowID window) const { return m_tried.contains(window); }

private:
    QList<WindowID> m_inView;
    QSet<WindowID> m_tried;
    QSet<WindowID> m_blankOnce;
};

} // namespace kelpa
