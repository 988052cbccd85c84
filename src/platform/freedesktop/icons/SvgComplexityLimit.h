// Whether an SVG drawing is one that can be drawn in reasonable time.
#pragma once

#include <QByteArray>

namespace kelpa {

/// False for what is not well-formed SVG, is larger than 2 MiB, nests deeper than 200 elements,
/// draws more than 100,000 shapes once every repetition is counted, repeats itself within itself,
/// declares entities, or refers to another file. Pure; any thread.
bool isHarmlessDrawing(const QByteArray& bytes);

} // namespace kelpa
