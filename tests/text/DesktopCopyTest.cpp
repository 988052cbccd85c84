#include "text/DesktopCopy.h"

#include "text/TextPrinting.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa {
namespace {

using enum AppLanguage;

struct Row
{
    AppLanguage language;
    const char16_t* numbered;
    const char16_t* absent;
    const char16_t* pinned;
};

constexpr std::array rows{
    Row{chinese, u"虚拟桌面 3", u"虚拟桌面 3（现在没有）", u"固定到：Mail"},
    Row{english, u"Desktop 3", u"Desktop 3 (not there now)", u"Pinned to: Mail"},
    Row{japanese, u"仮想デスクトップ3", u"仮想デスクトップ3（今はありません）", u"固定先：Mail"},
    Row{korean, u"가상 데스크톱 3", u"가상 데스크톱 3(지금 없음)", u"고정 위치: Mail"},
    Row{french, u"Bureau 3", u"Bureau 3 (absent pour l’instant)", u"Épinglé à : Mail"},
    Row{german, u"Arbeitsfläche 3", u"Arbeitsfläche 3 (zurzeit nicht da)", u"Angeheftet an: Mail"},
};

TEST(DesktopCopy, A_desktop_without_a_name_is_named_by_its_number)
{
    for (const Row& row : rows) {
        EXPECT_EQ(KelpaCopy::numberedDesktop(3, row.language), QString::fromUtf16(row.numbered));
        EXPECT_EQ(KelpaCopy::absentDesktop(3, row.language), QString::fromUtf16(row.absent));
    }
}

TEST(DesktopCopy, A_pinned_goal_names_its_desktop_whatever_that_is_called)
{
    for (const Row& row : rows)
        EXPECT_EQ(KelpaCopy::pinnedTo(QStringLiteral("Mail"), row.language),
                  QString::fromUtf16(row.pinned));
    EXPECT_EQ(KelpaCopy::pinnedTo(QStringLiteral("%1 %2"), english),
              QStringLiteral("Pinned to: %1 %2"));
}

} // namespace
} // namespace kelpa
