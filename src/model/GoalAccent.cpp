#include "model/GoalAccent.h"

#include "model/RawValues.h"

namespace kelpa {

namespace {

constexpr RawValues<GoalAccent, 5> accentRawValues{{{
    {GoalAccent::blue, u"blue"},
    {GoalAccent::green, u"green"},
    {GoalAccent::orange, u"orange"},
    {GoalAccent::purple, u"purple"},
    {GoalAccent::pink, u"pink"},
}}};

struct AccentColors
{
    QRgb light;
    QRgb dark;
};

AccentColors accentColors(GoalAccent accent)
{
    switch (accent) {
    case GoalAccent::blue:
        return {0xff007aff, 0xff0a84ff};
    case GoalAccent::green:
        return {0xff28cd41, 0xff32d74b};
    case GoalAccent::orange:
        return {0xffff9500, 0xffff9f0a};
    case GoalAccent::purple:
        return {0xffaf52de, 0xffbf5af2};
    case GoalAccent::pink:
        return {0xffff2d55, 0xffff375f};
    }
    Q_UNREACHABLE();
}

} // namespace

QString rawValue(GoalAccent accent)
{
    return accentRawValues.text(accent);
}

std::optional<GoalAccent> goalAccentFromRawValue(QStringView text)
{
    return accentRawValues.value(text);
}

QColor color(GoalAccent accent, Appearance appearance)
{
    const AccentColors colors = accentColors(accent);
    return QColor::fromRgba(appearance == Appearance::light ? colors.light : colors.dark);
}

} // namespace kelpa
