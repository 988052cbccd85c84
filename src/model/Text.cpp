#include "model/Text.h"

namespace kelpa {

namespace {

/// `text` with U+FFFD in place of every half of a surrogate pair that stands alone.
QString wellFormed(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else
            text[i] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

} // namespace

QString trimmedText(const QString& text)
{
    const QString trimmed = text.trimmed();
    return trimmed.isValidUtf16() ? trimmed : wellFormed(trimmed);
}

} // namespace kelpa
