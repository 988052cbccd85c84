// Loads the fonts of the first frame before the views need them.
#pragma once

#include <QFont>
#include <QList>
#include <QStringList>

#include <functional>

namespace kelpa {

class ViewSettings;

/// What the first frame shows beside what every board does.
struct FirstBoard
{
    bool hasFirstSteps = false;
    /// The texts of the buttons that offer a language, if any.
    QStringList offeredLanguages{};
};

/// The fonts that `loadFonts` loads.
QList<QFont> fontsOfFirstFrame(const ViewSettings& settings, const FirstBoard& board);

/// Has the toolkit find the fonts that the board shows first, and the letters of its texts in them,
/// which is a third of the work until the first frame: to be done while the QML engine's thread
/// reads the views' types, when this thread would only wait. Calls `between` before
/// each text, every few milliseconds, and begins again where that has changed the scale of texts. A
/// font that is missing here is loaded when the views need it.
/// Main thread, with an application object.
void loadFonts(const ViewSettings& settings, const FirstBoard& board,
               const std::function<void()>& between);

} // namespace kelpa
