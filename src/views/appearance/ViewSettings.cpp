#include "views/appearance/ViewSettings.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

/// The desktop's font for text, by its own name: in a list, Qt skips the alias for it. On an East
/// Asian desktop that is a font of ideographs, which would have all the text.
QString latinFamily()
{
    using enum QFontDatabase::WritingSystem;
    const QString family = QFontInfo(QFont(QStringLiteral("sans-serif"))).family();
    const bool hasIdeographs = std::ranges::any_of(
        QFontDatabase::writingSystems(family), [](QFontDatabase::WritingSystem system) {
            return system == SimplifiedChinese || system == TraditionalChinese ||
                   system == Japanese || system == Korean;
        });
    return hasIdeographs ? QStringLiteral("Noto Sans") : family;
}

/// Decides how the ideographs that Chinese, Japanese and Korean share are drawn, which would
/// otherwise follow the locale of the process.
QString ideographFamily(AppLanguage language)
{
    switch (language) {
    case AppLanguage::japanese:
        return QStringLiteral("Noto Sans CJK JP");
    case AppLanguage::korean:
        return QStringLiteral("Noto Sans CJK KR");
    case AppLanguage::chinese:
    case AppLanguage::english:
    case AppLanguage::french:
    case AppLanguage::german:
        return QStringLiteral("Noto Sans CJK SC");
    }
    Q_UNREACHABLE();
}

/// The last family has the characters with which people decorate titles.
QStringList families(AppLanguage language)
{
    return {latinFamily(), ideographFamily(language), QStringLiteral("Noto Color Emoji")};
}

/// Qt stores the fallbacks of a font under the first of its families alone, with its size, weight
/// and hint: without a hint of its own, a list would draw with the fallbacks of an earlier one.
QFont::StyleHint hint(const QStringList& families)
{
    if (families.contains(ideographFamily(AppLanguage::japanese)))
        return QFont::System;
    if (families.contains(ideographFamily(AppLanguage::korean)))
        return QFont::AnyStyle;
    return QFont::SansSerif;
}

QList<QColor> colors(const QVariantList& values)
{
    QList<QColor> found;
    found.reserve(values.size());
    for (const QVariant& each : values)
        found.append(each.value<QColor>());
    return found;
}

} // namespace

ViewSettings::ViewSettings(QObject* parent)
    : QObject(parent), m_fontFamilies(families(allAppLanguages.front()))
{}

void ViewSettings::setAppearance(Appearance appearance)
{
    if (m_appearance == appearance)
        return;
    m_appearance = appearance;
    Q_EMIT appearanceChanged();
}

void ViewSettings::setReducingMotion(bool isReducing)
{
    if (m_isReducingMotion == isReducing)
        return;
    m_isReducingMotion = isReducing;
    Q_EMIT isReducingMotionChanged();
}

void ViewSettings::setHighContrast(bool isHigh)
{
    if (m_isHighContrast == isHigh)
        return;
    m_isHighContrast = isHigh;
    Q_EMIT isHighContrastChanged();
}

void ViewSettings::setDesktopAccent(const QColor& accent)
{
    if (m_desktopAccent == accent)
        return;
    m_desktopAccent = accent;
    Q_EMIT desktopAccentChanged();
}

void ViewSettings::setTextScale(double scale)
{
    const bool isUsable = std::isfinite(scale) && scale > 0;
    const double limited = isUsable ? std::clamp(scale, leastTextScale, greatestTextScale) : 1;
    if (m_textScale == limited)
        return;
    m_textScale = limited;
    Q_EMIT textScaleChanged();
}

void ViewSettings::setSeen(bool isSeen)
{
    if (m_isSeen == isSeen)
        return;
    m_isSeen = isSeen;
    Q_EMIT isSeenChanged();
}

void ViewSettings::setStarting(bool isStarting)
{
    if (isStarting == m_isStarting)
        return;
    m_isStarting = isStarting;
    Q_EMIT isStartingChanged();
}

void ViewSettings::setLanguage(AppLanguage language, const KeyNames& keyNames)
{
    const QStringList wanted = families(language);
    if (m_fontFamilies != wanted) {
        m_fontFamilies = wanted;
        Q_EMIT fontFamiliesChanged();
    }
    const CopyTable copy(language, keyNames);
    if (m_copy != copy) {
        m_copy = copy;
        Q_EMIT copyChanged();
    }
}

QFont ViewSettings::font(const QStringList& families, int size, int weight, double scale) const
{
    QFont font;
    font.setFamilies(families);
    font.setStyleHint(hint(families));
    font.setPixelSize(qRound(size * scale));
    font.setWeight(static_cast<QFont::Weight>(weight));
    return font;
}

QFont ViewSettings::struckOut(const QFont& font) const
{
    QFont struck = font;
    struck.setStrikeOut(true);
    return struck;
}

QColor ViewSettings::accentColor(const QString& accent, bool isDark) const
{
    const std::optional<GoalAccent> known = goalAccentFromRawValue(accent);
    return known ? color(*known, isDark ? Appearance::dark : Appearance::light)
                 : QColor(Qt::transparent);
}

AccentShades ViewSettings::accentShades(const QColor& accent, const QVariantList& grounds,
                                        const QVariantList& overlays, const QColor& textOnAccent,
                                        const QColor& ownAccepting) const
{
    return kelpa::accentShades(accent, {.grounds = colors(grounds),
                                        .overlays = colors(overlays),
                                        .textOnAccent = textOnAccent,
                                        .ownAccepting = ownAccepting,
                                        .isDark = isDark(),
                                        .isHighContrast = m_isHighContrast});
}

} // namespace kelpa
