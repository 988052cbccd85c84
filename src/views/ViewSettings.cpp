#include "views/ViewSettings.h"

#include <QStringList>

namespace kelpa {

namespace {

/// The first family has the Latin text; the second decides how the ideographs that Chinese,
/// Japanese and Korean share are drawn, which would otherwise follow the locale of the process.
QStringList families(AppLanguage language)
{
    QString ideographs = QStringLiteral("Noto Sans CJK SC");
    if (language == AppLanguage::japanese)
        ideographs = QStringLiteral("Noto Sans CJK JP");
    else if (language == AppLanguage::korean)
        ideographs = QStringLiteral("Noto Sans CJK KR");
    return {QStringLiteral("sans-serif"), ideographs};
}

} // namespace

ViewSettings::ViewSettings(QObject* parent) : QObject(parent)
{
    m_font.setFamilies(families(allAppLanguages.front()));
}

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
    if (m_font.families() == wanted)
        return;
    m_font.setFamilies(wanted);
    Q_EMIT fontChanged();
}

QFont ViewSettings::sized(const QFont& base, int size, int weight) const
{
    QFont font = base;
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
