// Limits on SVG drawings, so that drawing one takes a reasonable time and reads no other file.
#pragma once

#include <QByteArray>

namespace kelpa {

/// False for a document that is not well-formed SVG, is larger than 2 MiB, nests deeper than 200
/// elements, draws more than 100,000 shapes once every repetition is counted, repeats itself within
/// itself, declares entities, or refers to another file. Pure; any thread.
bool isWithinSvgLimits(const QByteArray& bytes);

} // namespace kelpa
