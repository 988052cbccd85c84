// One value for each language of the interface, such as a text's translations.
#pragma once

#include "text/AppLanguage.h"

#include <array>
#include <cstddef>

namespace kelpa {

template <class Value>
class PerLanguage
{
public:
    /// In the order of `AppLanguage`; none can be left out.
    constexpr PerLanguage(Value chinese, Value english, Value japanese, Value korean, Value french,
                          Value german)
        : m_values{chinese, english, japanese, korean, french, german}
    {
        static_assert(allAppLanguages.size() == 6, "a parameter for each language");
    }

    static constexpr PerLanguage same(Value value)
    {
        return {value, value, value, value, value, value};
    }

    constexpr const Value& operator[](AppLanguage language) const
    {
        return m_values[static_cast<std::size_t>(language)];
    }

    constexpr auto begin() const { return m_values.begin(); }
    constexpr auto end() const { return m_values.end(); }

private:
    std::array<Value, allAppLanguages.size()> m_values;
};

} // namespace kelpa
