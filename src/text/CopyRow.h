// One plain text of the interface in every language.
#pragma once

#include "text/CopyKey.h"
#include "text/PerLanguage.h"

#include <string_view>

namespace kelpa {

class CopyRow
{
public:
    /// In the order of `AppLanguage`. A missing translation does not compile; neither does an empty
    /// one.
    template <class... Texts>
    consteval CopyRow(CopyKey key, Texts... texts) : m_key(key), m_texts{texts...}
    {
        for (const std::u16string_view text : m_texts) {
            if (text.empty())
                throw "a translation is empty";
        }
    }

    /// The same text in every language: names and codes that are not translated.
    static consteval CopyRow untranslated(CopyKey key, std::u16string_view text)
    {
        return {key, PerLanguage<std::u16string_view>::same(text)};
    }

    constexpr CopyKey key() const { return m_key; }
    constexpr std::u16string_view text(AppLanguage language) const { return m_texts[language]; }

private:
    CopyKey m_key;
    PerLanguage<std::u16string_view> m_texts;
};

} // namespace kelpa
