#include "views/ViewSettings.h"

#include <QFontInfo>

namespace kelpa {

namespace {

/// The first family has the Latin text, by its own name: in a list, Qt passes over the alias that
/// stands for it, and the apostrophe would be as wide as an ideograph. The second decides how the
/// ideographs that Chinese, Japanese and Korean share are drawn, which would otherwise follow the
/// locale of the process. The last has what people decorate titles with.
QStringList families(AppLanguage language)
{
    QString ideographs = QStringLiteral("Noto Sans CJK SC");
    if (language == AppLanguage::japanese)
        ideographs = QStringLiteral("Noto Sans CJK JP");
    else if (language == AppLanguage::korean)
        ideographs = QStringLiteral("Noto Sans CJK KR");
    return {QFontInfo(QFont(QStringLiteral("sans-serif"))).family(), ideographs,
            QStringLiteral("Noto Color Emoji")};
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

void ViewSettings::setLanguage(AppLanguage language)
{
    const QStringList wanted = families(language);
    if (m_fontFamilies == wanted)
        return;
    m_fontFamilies = wanted;
    Q_EMIT fontFamiliesChanged();
}

QFont ViewSettings::font(const QStringList& families, int size, int weight) const
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(size);
    font.setWeight(static_cast<QFont::Weight>(weight));
    return font;
}

QColor ViewSettings::accentColor(const QString& accent, bool isDark) const
{
    const std::optional<GoalAccent> known = goalAccentFromRawValue(accent);
    return known ? color(*known, isDark ? Appearance::dark : Appearance::light)
                 : QColor(Qt::transparent);
}

} // namespace kelpa
