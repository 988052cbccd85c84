#include "platform/freedesktop/appearance/KdeValues.h"

#include <QList>
#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>

namespace kelpa {

namespace {

/// Longer than any value that a desktop writes, and short enough to look at.
constexpr qsizetype mostCharacters = 1000;

/// The parts between the commas of a text; none for a value of another type.
QList<QStringView> partsOf(const QVariant& value, const QString& text)
{
    if (value.typeId() != QMetaType::QString || text.size() > mostCharacters)
        return {};
    return QStringView(text).split(u',');
}

} // namespace

std::optional<double> textScaleFromKdeFont(const QVariant& value)
{
    constexpr double usualSize = 10;
    constexpr double least = 1;
    constexpr double greatest = 100;
    const QString text = value.toString();
    const QList<QStringView> parts = partsOf(value, text);
    if (parts.size() < 2)
        return std::nullopt;
    bool isNumber = false;
    const double size = parts.at(1).trimmed().toDouble(&isNumber);
    // Also false for what is no number.
    const bool isReadable = isNumber && size >= least && size <= greatest;
    return isReadable ? std::optional(size / usualSize) : std::nullopt;
}

std::optional<QColor> accentFromKde(const QVariant& value)
{
    constexpr int most = 255;
    const QString text = value.toString();
    const QList<QStringView> parts = partsOf(value, text);
    if (parts.size() != 3 && parts.size() != 4)
        return std::nullopt;
    std::array<int, 4> numbers{};
    for (qsizetype index = 0; index < parts.size(); ++index) {
        bool isNumber = false;
        int& number = numbers.at(static_cast<std::size_t>(index));
        number = parts.at(index).trimmed().toInt(&isNumber);
        if (!isNumber || number < 0 || number > most)
            return std::nullopt;
    }
    return QColor(numbers[0], numbers[1], numbers[2]);
}

} // namespace kelpa
