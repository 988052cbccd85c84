// How languages, keys and copy tables appear in a failed test's message.
#pragma once

#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <QMetaEnum>

#include <ostream>

namespace kelpa {

namespace copykey {

inline void PrintTo(CopyKey key, std::ostream* out)
{
    *out << QMetaEnum::fromType<CopyKey>().valueToKey(static_cast<int>(key));
}

} // namespace copykey

inline void PrintTo(AppLanguage language, std::ostream* out)
{
    *out << rawValue(language).toStdString();
}

} // namespace kelpa

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
