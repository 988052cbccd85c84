#include "model/Identifiers.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr qsizetype uuidTextLength = 36;

bool isHyphenPosition(qsizetype index)
{
    return index == 8 || index == 13 || index == 18 || index == 23;
}

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

} // namespace

std::optional<QUuid> uuidFromText(QStringView text)
{
    if (text.size() != uuidTextLength)
        return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isHyphenPosition(i) ? text[i] != u'-' : !isHexDigit(text[i]))
            return std::nullopt;
    }
    return QUuid::fromString(text);
}

QString uuidText(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace kelpa
