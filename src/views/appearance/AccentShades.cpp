#include "views/appearance/AccentShades.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <vector>

namespace kelpa {

namespace {

/// Red, green and blue, each from 0 to 1 in proportion to the light.
using Light = std::array<double, 3>;

/// A colour in the space OKLab, in which equal steps look equal, by its polar coordinates.
struct Perceived
{
    /// 0 is black, 1 white.
    double lightness = 0;
    /// 0 is grey.
    double chroma = 0;
    /// Radians.
    double hue = 0;
};

double lightOf(double encoded)
{
    return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

double encodedOf(double light)
{
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

Light lightOf(const QColor& color)
{
    return {lightOf(color.redF()), lightOf(color.greenF()), lightOf(color.blueF())};
}

Perceived perceivedFrom(const Light& light)
{
    const auto [red, green, blue] = light;
    const double l = std::cbrt(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
    const double m = std::cbrt(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
    const double s = std::cbrt(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
    const double a = 1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s;
    const double b = 0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s;
    return {.lightness = 0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            .chroma = std::hypot(a, b),
            .hue = std::atan2(b, a)};
}

Light lightFrom(const Perceived& color)
{
    const double a = color.chroma * std::cos(color.hue);
    const double b = color.chroma * std::sin(color.hue);
    const auto cube = [](double root) { return root * root * root; };
    const double l = cube(color.lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = cube(color.lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = cube(color.lightness - 0.0894841775 * a - 1.2914855480 * b);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

/// Whether a screen shows it.
bool isShown(const Light& light)
{
    constexpr double rounding = 0.0005;
    return std::ranges::all_of(
        light, [](double each) { return each >= -rounding && each <= 1 + rounding; });
}

/// How different they look: 0 for the same colour, 1 for black and white.
double distance(const Perceived& one, const Perceived& other)
{
    const double a = one.chroma * std::cos(one.hue) - other.chroma * std::cos(other.hue);
    const double b = one.chroma * std::sin(one.hue) - other.chroma * std::sin(other.hue);
    return std::hypot(one.lightness - other.lightness, a, b);
}

/// With less chroma where no screen shows as much.
QColor shownColor(Perceived color)
{
    color.lightness = std::clamp(color.lightness, 0.0, 1.0);
    if (!isShown(lightFrom(color))) {
        double least = 0;
        double most = color.chroma;
        for (int halvings = 0; halvings < 12; ++halvings) {
            color.chroma = (least + most) / 2;
            (isShown(lightFrom(color)) ? least : most) = color.chroma;
        }
        color.chroma = least;
    }
    const auto step = [](double light) {
        return static_cast<int>(std::lround(encodedOf(std::clamp(light, 0.0, 1.0)) * 255));
    };
    const auto [red, green, blue] = lightFrom(color);
    return {step(red), step(green), step(blue)};
}

/// Of opaque colours, from 0 to 1.
double luminance(const QColor& color)
{
    const auto [red, green, blue] = lightOf(color);
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

double contrastOf(double one, double other)
{
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor tinted(const QColor& ground, const QColor& overlay)
{
    const double part = overlay.alphaF();
    const auto mixed = [part](int below, int above) {
        return static_cast<int>(std::lround(below + part * (above - below)));
    };
    return {mixed(ground.red(), overlay.red()), mixed(ground.green(), overlay.green()),
            mixed(ground.blue(), overlay.blue())};
}

/// `color`, or the nearest with another lightness for which `isFitting` holds; `color` where it
/// holds for none.
QColor fitted(const QColor& color, const std::function<bool(const QColor&)>& isFitting)
{
    if (isFitting(color))
        return color;
    constexpr int steps = 256;
    const Perceived given = perceivedFrom(lightOf(color));
    for (int distance = 1; distance <= steps; ++distance) {
        for (const int shift : {-distance, distance}) {
            Perceived shifted = given;
            shifted.lightness += static_cast<double>(shift) / steps;
            if (const QColor shown = shownColor(shifted); isFitting(shown))
                return shown;
        }
    }
    return color;
}

/// Makes the shades of one accent for one theme.
class Shading
{
public:
    Shading(const QColor& accent, const AccentSurroundings& surroundings)
        : m_accent(accent), m_around(surroundings)
    {
        for (const QColor& ground : m_around.grounds)
            m_bare.push_back(luminance(ground));
    }

    AccentShades shades() const
    {
        AccentShades made;
        made.accepting = accepting();
        const std::vector<double> all = groundsUnder(made.accepting);
        made.accent = fitted(m_accent, [this](const QColor& color) { return isGround(color); });
        setPressed(made);
        made.accentText = fitted(m_accent, standingOut(all, leastOfText()));
        made.focus = fitted(m_accent, standingOut(all, leastOfOutline()));
        return made;
    }

private:
    /// The colours of a screen are mixed in finer steps than these, hence the hundredths.
    double leastOfText() const { return m_around.isHighContrast ? 7.05 : 4.55; }
    double leastOfOutline() const { return m_around.isHighContrast ? 4.55 : 3.03; }

    static bool standsOut(const QColor& color, const std::vector<double>& grounds, double least)
    {
        const double own = luminance(color);
        return std::ranges::all_of(grounds,
                                   [&](double ground) { return contrastOf(own, ground) >= least; });
    }

    static std::function<bool(const QColor&)> standingOut(const std::vector<double>& grounds,
                                                          double least)
    {
        return [&grounds, least](const QColor& color) { return standsOut(color, grounds, least); };
    }

    std::vector<double> groundsUnder(const QColor& accepting) const
    {
        std::vector<double> all = m_bare;
        for (const QColor& ground : m_around.grounds) {
            for (const QColor& overlay : m_around.overlays)
                all.push_back(luminance(tinted(ground, overlay)));
            all.push_back(luminance(tinted(ground, accepting)));
        }
        return all;
    }

    /// Whether a text is readable on it, while it is seen among the grounds itself. White text
    /// on a button over a dark card leaves the button itself less than an outline's contrast.
    bool isGround(const QColor& color) const
    {
        const double least = m_around.isHighContrast ? leastOfOutline() : 2.4;
        return contrast(m_around.textOnAccent, color) >= leastOfText() &&
               standsOut(color, m_bare, least);
    }

    /// Away from the text on them, unless there is no lightness left.
    void setPressed(AccentShades& made) const
    {
        constexpr double hoverStep = 0.04;
        constexpr double pressStep = 0.08;
        // Nobody sees such a step below.
        constexpr double darkest = 0.2;
        Perceived rest = perceivedFrom(lightOf(made.accent));
        double direction = luminance(m_around.textOnAccent) > 0.5 ? -1 : 1;
        const double last = rest.lightness + direction * pressStep;
        if (last < darkest || last > 1) {
            direction = -direction;
            rest.lightness = std::max(rest.lightness, darkest);
        }
        const auto shifted = [&](double step) {
            Perceived color = rest;
            color.lightness += direction * step;
            return shownColor(color);
        };
        made.accentHover = shifted(hoverStep);
        made.accentPress = shifted(pressStep);
    }

    /// Under a nearly grey accent a ground would look as it does under the pointer. So that gets
    /// more chroma of its hue, and where it has none, the colour is Kelpa's own.
    QColor accepting() const
    {
        constexpr double leastOfHue = 0.02;
        constexpr double most = 0.2;
        constexpr double step = 0.01;
        Perceived wanted = perceivedFrom(lightOf(m_accent));
        QColor made = fittedAccepting(m_accent);
        while (!isUnlikeOverlays(made)) {
            if (wanted.chroma < leastOfHue || wanted.chroma > most)
                return m_around.ownAccepting;
            wanted.chroma += step;
            made = fittedAccepting(shownColor(wanted));
        }
        return made;
    }

    bool isUnlikeOverlays(const QColor& accepting) const
    {
        constexpr double leastDistance = 0.015;
        return std::ranges::all_of(m_around.grounds, [&](const QColor& ground) {
            const Perceived own = perceivedFrom(lightOf(tinted(ground, accepting)));
            return std::ranges::all_of(m_around.overlays, [&](const QColor& overlay) {
                const Perceived other = perceivedFrom(lightOf(tinted(ground, overlay)));
                return distance(own, other) >= leastDistance;
            });
        });
    }

    /// Every ground is seen to change under it, and gets no nearer to the texts than under Kelpa's
    /// own.
    QColor fittedAccepting(const QColor& accent) const
    {
        const auto withOpacity = [this](QColor color) {
            color.setAlpha(m_around.ownAccepting.alpha());
            return color;
        };
        const auto isFitting = [&](const QColor& color) {
            return std::ranges::all_of(m_around.grounds, [&](const QColor& ground) {
                constexpr double leastChange = 1.12;
                const double bare = luminance(ground);
                const double own = luminance(tinted(ground, m_around.ownAccepting));
                const double made = luminance(tinted(ground, withOpacity(color)));
                return (m_around.isDark ? made <= own : made >= own) &&
                       contrastOf(made, bare) >= leastChange;
            });
        };
        return withOpacity(fitted(accent, isFitting));
    }

    const QColor m_accent;
    const AccentSurroundings& m_around;
    /// The luminance of each ground.
    std::vector<double> m_bare;
};

} // namespace

AccentShades accentShades(const QColor& accent, const AccentSurroundings& surroundings)
{
    return accent.isValid() ? Shading(QColor(accent.rgb()), surroundings).shades() : AccentShades();
}

double contrast(const QColor& one, const QColor& other)
{
    return contrastOf(luminance(one), luminance(other));
}

} // namespace kelpa
