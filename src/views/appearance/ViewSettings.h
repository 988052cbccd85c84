// The desktop's settings and the person's language, as all views need them; the theme is made from
// them, and every text of the interface comes from here.
#pragma once

#include "model/GoalAccent.h"
#include "text/AppLanguage.h"
#include "text/CopyTable.h"
#include "views/appearance/AccentShades.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// One for each QML engine, which makes it; `ViewEngine` fills it in. Main thread, with an
/// application object, which finds the fonts.
class ViewSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool isDark READ isDark NOTIFY appearanceChanged)
    Q_PROPERTY(bool isReducingMotion READ isReducingMotion WRITE setReducingMotion NOTIFY
                   isReducingMotionChanged)
    Q_PROPERTY(
        bool isHighContrast READ isHighContrast WRITE setHighContrast NOTIFY isHighContrastChanged)
    /// Opaque; invalid where the desktop has none.
    Q_PROPERTY(
        QColor desktopAccent READ desktopAccent WRITE setDesktopAccent NOTIFY desktopAccentChanged)
    /// The size of texts as a factor of their usual one.
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY textScaleChanged)
    Q_PROPERTY(bool isSeen READ isSeen WRITE setSeen NOTIFY isSeenChanged)
    /// Whether the first frame is still to be drawn: what nobody can see in it comes after it.
    Q_PROPERTY(bool isStarting READ isStarting WRITE setStarting NOTIFY isStartingChanged)
    Q_PROPERTY(QStringList fontFamilies READ fontFamilies NOTIFY fontFamiliesChanged)
    /// The texts of the interface in its current language.
    Q_PROPERTY(kelpa::CopyTable copy READ copy NOTIFY copyChanged)

public:
    explicit ViewSettings(QObject* parent = nullptr);

    Appearance appearance() const { return m_appearance; }
    void setAppearance(Appearance appearance);
    bool isDark() const { return m_appearance == Appearance::dark; }

    /// Whether movement on the screen is to be avoided.
    bool isReducingMotion() const { return m_isReducingMotion; }
    void setReducingMotion(bool isReducing);

    /// Whether texts, symbols and edges are to stand out more than usual.
    bool isHighContrast() const { return m_isHighContrast; }
    void setHighContrast(bool isHigh);

    QColor desktopAccent() const { return m_desktopAccent; }
    void setDesktopAccent(const QColor& accent);

    /// Texts stay readable from `leastTextScale` on, and a board of the least size has room for
    /// them up to `greatestTextScale`.
    static constexpr double leastTextScale = 0.75;
    static constexpr double greatestTextScale = 2;

    double textScale() const { return m_textScale; }
    /// Takes the nearest scale within the limits; the usual one instead of what is no positive
    /// number.
    void setTextScale(double scale);

    /// Whether any of the window is visible: animations run only then.
    bool isSeen() const { return m_isSeen; }
    void setSeen(bool isSeen);

    /// False unless the program starts.
    bool isStarting() const { return m_isStarting; }
    void setStarting(bool isStarting);

    /// In the order of preference; they draw the glyph variants of the current language.
    QStringList fontFamilies() const { return m_fontFamilies; }
    CopyTable copy() const { return m_copy; }
    /// Sets the fonts and the texts. `keyNames` are the platform's names of keys.
    void setLanguage(AppLanguage language, const KeyNames& keyNames = {});

    /// A font with a size in points of the screen, as all of QML's lengths, and a weight of
    /// QFont's; `scale` is a factor of the size, which is then rounded.
    Q_INVOKABLE QFont font(const QStringList& families, int size, int weight,
                           double scale = 1) const;
    /// The same font with a line through it.
    Q_INVOKABLE QFont struckOut(const QFont& font) const;
    /// The colour of a goal by the accent's stored text; transparent for an unknown one.
    Q_INVOKABLE QColor accentColor(const QString& accent, bool isDark) const;
    /// The shades of an accent for the present appearance and contrast, in a theme with these
    /// colours (see `AccentSurroundings`).
    Q_INVOKABLE kelpa::AccentShades accentShades(const QColor& accent, const QVariantList& grounds,
                                                 const QVariantList& overlays,
                                                 const QColor& textOnAccent,
                                                 const QColor& ownAccepting) const;

Q_SIGNALS:
    void appearanceChanged();
    void isReducingMotionChanged();
    void isHighContrastChanged();
    void desktopAccentChanged();
    void textScaleChanged();
    void isSeenChanged();
    void isStartingChanged();
    void fontFamiliesChanged();
    void copyChanged();

private:
    Appearance m_appearance = Appearance::light;
    bool m_isReducingMotion = false;
    bool m_isHighContrast = false;
    QColor m_desktopAccent;
    double m_textScale = 1;
    bool m_isSeen = true;
    bool m_isStarting = false;
    QStringList m_fontFamilies;
    CopyTable m_copy;
};

} // namespace kelpa
