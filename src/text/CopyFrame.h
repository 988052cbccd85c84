// What the texts that are composed with a title or a count are made of.
#pragma once

#include "text/PerLanguage.h"

#include <QString>

#include <string_view>

namespace kelpa::KelpaCopy {

/// The text before and after an inserted value.
struct Frame
{
    std::u16string_view prefix;
    std::u16string_view suffix;

    QString around(const QString& value) const
    {
        return QStringView(prefix).toString().append(value).append(QStringView(suffix));
    }
};

using Frames = PerLanguage<Frame>;
using Names = PerLanguage<std::u16string_view>;

} // namespace kelpa::KelpaCopy
