#include "model/Text.h"

namespace kelpa {

QString trimmedText(const QString& text)
{
    const QString trimmed = text.trimmed();
    return trimmed.isValidUtf16() ? trimmed : QString::fromUtf8(trimmed.toUtf8());
}

} // namespace kelpa
