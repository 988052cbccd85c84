#include "text/DesktopCopy.h"

#include "text/PerLanguage.h"

#include <string_view>

namespace kelpa::KelpaCopy {

namespace {

using Texts = PerLanguage<std::u16string_view>;

// With a place for the number, or for the name.
constexpr Texts numberedTexts(u"虚拟桌面 %1", u"Desktop %1", u"仮想デスクトップ%1",
                              u"가상 데스크톱 %1", u"Bureau %1", u"Arbeitsfläche %1");
constexpr Texts absentTexts(u"虚拟桌面 %1（现在没有）", u"Desktop %1 (not there now)",
                            u"仮想デスクトップ%1（今はありません）", u"가상 데스크톱 %1(지금 없음)",
                            u"Bureau %1 (absent pour l’instant)",
                            u"Arbeitsfläche %1 (zurzeit nicht da)");
constexpr Texts pinnedTexts(u"固定到：%1", u"Pinned to: %1", u"固定先：%1", u"고정 위치: %1",
                            u"Épinglé à : %1", u"Angeheftet an: %1");

QString filled(const Texts& texts, AppLanguage language, const QString& value)
{
    return QStringView(texts[language]).toString().replace(QStringLiteral("%1"), value);
}

} // namespace

QString numberedDesktop(int number, AppLanguage language)
{
    return filled(numberedTexts, language, QString::number(number));
}

QString absentDesktop(int number, AppLanguage language)
{
    return filled(absentTexts, language, QString::number(number));
}

QString pinnedTo(const QString& desktop, AppLanguage language)
{
    return filled(pinnedTexts, language, desktop);
}

} // namespace kelpa::KelpaCopy
