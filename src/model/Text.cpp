#include "model/Text.h"

#include <algorithm>

namespace kelpa {

namespace {

/// `text` with U+FFFD in place of every unpaired surrogate.
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

QString singleLine(const QString& text)
{
    const auto isBreak = [](QChar each) {
        const QChar::Category category = each.category();
        return category == QChar::Other_Control || category == QChar::Separator_Line ||
               category == QChar::Separator_Paragraph;
    };
    if (std::none_of(text.cbegin(), text.cend(), isBreak))
        return text;
    QString line = text;
    std::replace_if(line.begin(), line.end(), isBreak, QChar(QChar::Space));
    return line;
}

} // namespace kelpa
