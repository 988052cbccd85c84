#include "text/FormerWindowCopy.h"

#include "text/ComposedTexts.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

using enum AppLanguage;

TEST(FormerWindowCopy, A_card_names_the_goal_that_its_window_may_have_been_in)
{
    expectTexts(
        {{{chinese, u"曾在：A"},
          {english, u"Was in: A"},
          {japanese, u"以前の目標：A"},
          {korean, u"이전 목표: A"},
          {french, u"Était dans : A"},
          {german, u"War in: A"}}},
        [](AppLanguage language) { return KelpaCopy::wasIn({QStringLiteral("A")}, language); });
    const QStringList several{QStringLiteral("A"), QStringLiteral("B")};
    EXPECT_EQ(KelpaCopy::wasIn(several, english), QStringLiteral("Was in: A, B"));
    EXPECT_EQ(KelpaCopy::wasIn(several, chinese), QStringLiteral("曾在：A、B"));
}

TEST(FormerWindowCopy, The_windows_that_a_goal_had_are_counted_with_a_singular)
{
    expectTexts({{{chinese, u"上次的 1 个窗口"},
                  {english, u"1 window from last time"},
                  {japanese, u"前回のウィンドウ1個"},
                  {korean, u"지난번 창 1개"},
                  {french, u"1 fenêtre de la dernière fois"},
                  {german, u"1 Fenster vom letzten Mal"}}},
                [](AppLanguage language) { return KelpaCopy::windowsFromLastTime(1, language); });
    expectTexts({{{chinese, u"上次的 4 个窗口"},
                  {english, u"4 windows from last time"},
                  {japanese, u"前回のウィンドウ4個"},
                  {korean, u"지난번 창 4개"},
                  {french, u"4 fenêtres de la dernière fois"},
                  {german, u"4 Fenster vom letzten Mal"}}},
                [](AppLanguage language) { return KelpaCopy::windowsFromLastTime(4, language); });
}

TEST(FormerWindowCopy, Closed_windows_of_a_goal_are_counted_with_a_singular)
{
    expectTexts({{{chinese, u"1 个已关闭的窗口"},
                  {english, u"1 closed window"},
                  {japanese, u"閉じたウィンドウ1個"},
                  {korean, u"닫힌 창 1개"},
                  {french, u"1 fenêtre fermée"},
                  {german, u"1 geschlossenes Fenster"}}},
                [](AppLanguage language) { return KelpaCopy::closedWindows(1, language); });
    expectTexts({{{chinese, u"4 个已关闭的窗口"},
                  {english, u"4 closed windows"},
                  {japanese, u"閉じたウィンドウ4個"},
                  {korean, u"닫힌 창 4개"},
                  {french, u"4 fenêtres fermées"},
                  {german, u"4 geschlossene Fenster"}}},
                [](AppLanguage language) { return KelpaCopy::closedWindows(4, language); });
}

TEST(FormerWindowCopy, What_is_gone_is_named)
{
    const QString name = QStringLiteral("A");
    expectTexts({{{chinese, u"「A」已卸载"},
                  {english, u"“A” is no longer installed"},
                  {japanese, u"「A」はもうインストールされていません"},
                  {korean, u"‘A’ 앱이 더 이상 설치되어 있지 않습니다"},
                  {french, u"« A » n’est plus installé"},
                  {german, u"„A“ ist nicht mehr installiert"}}},
                [&](AppLanguage language) { return KelpaCopy::applicationIsGone(name, language); });
    expectTexts({{{chinese, u"「A」已不存在，只打开了应用"},
                  {english, u"“A” is gone; its application was opened without it"},
                  {japanese, u"「A」が見つからないため、アプリだけを開きました"},
                  {korean, u"‘A’ 문서가 없어 앱만 열었습니다"},
                  {french, u"« A » n’existe plus ; seule son application a été ouverte"},
                  {german, u"„A“ ist nicht mehr da; nur die App wurde geöffnet"}}},
                [&](AppLanguage language) { return KelpaCopy::documentIsGone(name, language); });
    expectTexts({{{chinese, u"「A」没有打开新窗口"},
                  {english, u"“A” has not opened a new window"},
                  {japanese, u"「A」の新しいウィンドウは開きませんでした"},
                  {korean, u"‘A’에서 새 창이 열리지 않았습니다"},
                  {french, u"« A » n’a pas ouvert de nouvelle fenêtre"},
                  {german, u"„A“ hat kein neues Fenster geöffnet"}}},
                [&](AppLanguage language) { return KelpaCopy::hasNoNewWindow(name, language); });
    expectTexts({{{chinese, u"上次出现：A"},
                  {english, u"Last seen: A"},
                  {japanese, u"最終表示：A"},
                  {korean, u"마지막 표시: A"},
                  {french, u"Vue le : A"},
                  {german, u"Zuletzt gesehen: A"}}},
                [&](AppLanguage language) { return KelpaCopy::lastSeen(name, language); });
}

TEST(FormerWindowCopy, Windows_that_are_forgotten_are_counted_with_a_singular)
{
    expectTexts({{{chinese, u"已忘记 1 个窗口"},
                  {english, u"1 window is forgotten"},
                  {japanese, u"1個のウィンドウを消去しました"},
                  {korean, u"기억한 창 1개를 지웠습니다"},
                  {french, u"1 fenêtre est oubliée"},
                  {german, u"1 Fenster ist vergessen"}}},
                [](AppLanguage language) { return KelpaCopy::windowsAreForgotten(1, language); });
    expectTexts({{{chinese, u"已忘记 2 个窗口"},
                  {english, u"2 windows are forgotten"},
                  {japanese, u"2個のウィンドウを消去しました"},
                  {korean, u"기억한 창 2개를 지웠습니다"},
                  {french, u"2 fenêtres sont oubliées"},
                  {german, u"2 Fenster sind vergessen"}}},
                [](AppLanguage language) { return KelpaCopy::windowsAreForgotten(2, language); });
}

TEST(FormerWindowCopy, One_window_that_is_back_has_a_singular)
{
    EXPECT_EQ(KelpaCopy::windowsAreBack(1, english),
              QStringLiteral("1 window is back in its goal"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(3, english),
              QStringLiteral("3 windows are back in their goals"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(1, chinese), QStringLiteral("1 个窗口已回到原来的目标"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(3, chinese), QStringLiteral("3 个窗口已回到原来的目标"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(1, japanese),
              QStringLiteral("1個のウィンドウが元の目標に戻りました"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(3, japanese),
              QStringLiteral("3個のウィンドウが元の目標に戻りました"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(1, korean),
              QStringLiteral("창 1개가 원래 목표로 돌아왔습니다"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(3, korean),
              QStringLiteral("창 3개가 원래 목표로 돌아왔습니다"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(1, french),
              QStringLiteral("1 fenêtre a retrouvé son objectif"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(3, french),
              QStringLiteral("3 fenêtres ont retrouvé leurs objectifs"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(1, german),
              QStringLiteral("1 Fenster ist wieder in seinem Ziel"));
    EXPECT_EQ(KelpaCopy::windowsAreBack(3, german),
              QStringLiteral("3 Fenster sind wieder in ihren Zielen"));
}

} // namespace
} // namespace kelpa
