// Maps an enumeration to its raw values (the texts that are stored) and back.
#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace kelpa {

template <class Enum, std::size_t count>
struct RawValues
{
    std::array<std::pair<Enum, std::u16string_view>, count> rows;

    /// `value` must be in the table.
    QString text(Enum value) const
    {
        const auto row = std::ranges::find(rows, value, [](const auto& r) { return r.first; });
        Q_ASSERT(row != rows.end());
        return QStringView(row->second).toString();
    }

    /// Compares exactly, including case; absent for any other text.
    std::optional<Enum> value(QStringView text) const
    {
        for (const auto& [value, rawText] : rows) {
            if (text == QStringView(rawText))
                return value;
        }
        return std::nullopt;
    }
};

} // namespace kelpa
