// Compares a composed text with what it says in each language.
#pragma once

#include "text/AppLanguage.h"
#include "text/TextPrinting.h"

#include <gtest/gtest.h>

#include <QString>

#include <array>
#include <functional>

namespace kelpa {

struct Composed
{
    AppLanguage language;
    const char16_t* text;
};

inline void expectTexts(const std::array<Composed, 6>& rows,
                        const std::function<QString(AppLanguage)>& compose)
{
    for (const Composed& row : rows)
        EXPECT_EQ(compose(row.language), QString::fromUtf16(row.text));
}

} // namespace kelpa
