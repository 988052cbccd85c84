// Decodes and sanitises text that other clients wrote. Pure functions, any thread.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace kelpa::x11 {

/// The text without what could disturb the text around it: line breaks and tabs become spaces,
/// other control characters and directional overrides are removed, and every directional embedding
/// or isolate that remains is closed within the text.
QString harmlessText(const QString& text);

/// `bytes` without an incomplete UTF-8 character at their end.
QByteArrayView withoutPartialCharacter(QByteArrayView bytes);

/// Decodes ICCCM compound text: ASCII, Latin-1 and UTF-8 segments exactly, each run of any other
/// character set as one replacement character.
QString fromCompoundText(QByteArrayView bytes);

} // namespace kelpa::x11
