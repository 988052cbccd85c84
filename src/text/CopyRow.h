// One plain text of the interface in its six languages.
#pragma once

#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <array>
#include <string_view>

namespace kelpa {

class CopyRow
{
public:
    /// In the order of `AppLanguage`. Takes all six, so that a missing translation does not
    /// compile; neither does an empty one.
    consteval CopyRow(CopyKey key, std::u16string_view chinese, std::u16string_view english,
                      std::u16string_view japanese, std::u16string_view korean,
                      std::u16string_view french, std::u16string_view german)
        : m_key(key), m_texts{chinese, english, japanese, korean, french, german}
    {
        for (const std::u16string_view text : m_texts) {
            if (text.empty())
                throw "a translation is empty";
        }
    }

    /// The same text in every language: names and codes that are not translated.
    static consteval CopyRow untranslated(CopyKey key, std::u16string_view text)
    {
        return {key, text, text, text, text, text, text};
    }

    constexpr CopyKey key() const { return m_key; }
    constexpr std::u16string_view text(AppLanguage language) const
    {
        return m_texts[static_cast<std::size_t>(language)];
    }

private:
    CopyKey m_key;
    std::array<std::u16string_view, allAppLanguages.size()> m_texts;
};

} // namespace kelpa
