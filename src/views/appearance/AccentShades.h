// The interface's colours that are made from the desktop's accent colour. Whatever that is, texts
// and outlines stand out as much as with Kelpa's own colours: a shade has the accent's lightness
// where that does, else the nearest that does. Its hue stays, and as much of its chroma as a screen
// shows at that lightness.
#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

struct AccentShades
{
    Q_GADGET
    QML_VALUE_TYPE(accentShades)

    /// All are invalid where the desktop has no accent. Opaque but for `accepting`.
    Q_PROPERTY(QColor accent MEMBER accent)
    Q_PROPERTY(QColor accentHover MEMBER accentHover)
    Q_PROPERTY(QColor accentPress MEMBER accentPress)
    Q_PROPERTY(QColor accentText MEMBER accentText)
    Q_PROPERTY(QColor focus MEMBER focus)
    Q_PROPERTY(QColor accepting MEMBER accepting)

public:
    /// Of buttons and other grounds of texts: at rest, under the pointer, and pressed.
    QColor accent;
    QColor accentHover;
    QColor accentPress;
    /// Of texts and symbols.
    QColor accentText;
    /// Of outlines.
    QColor focus;
    /// Laid over a ground onto which something is dragged, or that is chosen. It looks unlike the
    /// theme's other overlays, and so may have more chroma than a nearly grey accent, or be Kelpa's
    /// own.
    QColor accepting;

    bool operator==(const AccentShades&) const = default;
};

/// The colours of a theme that stay as they are, and among which the shades have to stand out.
struct AccentSurroundings
{
    /// Opaque. Those of a dark theme are darker than its texts, those of a light one lighter.
    QList<QColor> grounds;
    /// Laid over a ground, one at a time.
    QList<QColor> overlays;
    QColor textOnAccent;
    /// Kelpa's own colour for a ground onto which something is dragged, on which all texts are
    /// readable. Its opacity is that of the shade.
    QColor ownAccepting;
    bool isDark = false;
    bool isHighContrast = false;
};

/// The shades of an opaque `accent`; invalid ones for an invalid one. Below a
/// millisecond for most, and ten for dark ones that are nearly grey.
AccentShades accentShades(const QColor& accent, const AccentSurroundings& surroundings);

/// From 1 to 21, as the guidelines for accessible contents measure it; of opaque colours.
double contrast(const QColor& one, const QColor& other);

} // namespace kelpa
