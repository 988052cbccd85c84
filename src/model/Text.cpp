#include "model/Text.h"

namespace kelpa {

namespace {

void replaceUnpairedSurrogates(QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!c.isSurrogate())
            continue;
        const bool isPaired =
            c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPaired)
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
}

} // namespace

QString trimmedText(const QString& text)
{
    QString trimmed = text.trimmed();
    if (!trimmed.isValidUtf16())
        replaceUnpairedSurrogates(trimmed);
    return trimmed;
}

} // namespace kelpa
