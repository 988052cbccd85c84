// One row of the tables that quote the wording of the interface.
#pragma once

#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <array>
#include <string_view>

namespace kelpa::test {

struct QuotedText
{
    CopyKey key;
    /// In the order of `AppLanguage`.
    std::array<std::u16string_view, allAppLanguages.size()> texts;
};

} // namespace kelpa::test
