// Text that strangers wrote, made fit to be shown. Pure functions, any thread.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace kelpa::x11 {

/// The same text without what could disturb its surroundings: line breaks and tabs become spaces;
/// other control characters are taken out; directional overrides are taken out, and every
/// directional embedding or isolate that is kept is closed within the text.
QString harmlessText(const QString& text);

/// `bytes` without an incomplete UTF-8 character at their end.
QByteArrayView withoutPartialCharacter(QByteArrayView bytes);

/// The text of ICCCM's compound text: ASCII, Latin-1 and UTF-8 segments exactly; a run of any other
/// character set as one replacement character.
QString fromCompoundText(QByteArrayView bytes);

} // namespace kelpa::x11
