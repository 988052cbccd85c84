#include "text/KeyNames.h"

namespace kelpa {

QString withPlatformKeyNames(const QString& text, const KeyNames& names)
{
    return QString(text).replace(u'⌘', names.command);
}

} // namespace kelpa
