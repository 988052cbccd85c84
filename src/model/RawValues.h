// A small table between an enumeration and its stored texts, in declaration order.
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

    /// `value` must stand in the table.
    QString text(Enum value) const
    {
        const auto row = std::ranges::find(rows, value, [](const auto& r) { return r.first; });
        Q_ASSERT(row != rows.end());
        return QStringView(row->second).toString();
    }

    /// Compared exactly, case included; none for any other text.
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
