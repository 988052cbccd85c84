#include "text/FormerWindowCopy.h"

#include "text/CopyFrame.h"

namespace kelpa::KelpaCopy {

namespace {

constexpr Names windowIsBackTexts(u"1 个窗口已回到原来的目标", u"1 window is back in its goal",
                                  u"1個のウィンドウが元の目標に戻りました",
                                  u"창 1개가 원래 목표로 돌아왔습니다",
                                  u"1 fenêtre a retrouvé son objectif",
                                  u"1 Fenster ist wieder in seinem Ziel");

constexpr Frames windowsAreBackFrames({u"", u" 个窗口已回到原来的目标"},
                                      {u"", u" windows are back in their goals"},
                                      {u"", u"個のウィンドウが元の目標に戻りました"},
                                      {u"창 ", u"개가 원래 목표로 돌아왔습니다"},
                                      {u"", u" fenêtres ont retrouvé leurs objectifs"},
                                      {u"", u" Fenster sind wieder in ihren Zielen"});

constexpr Names windowIsForgottenTexts(u"已忘记 1 个窗口", u"1 window is forgotten",
                                       u"1個のウィンドウを消去しました",
                                       u"기억한 창 1개를 지웠습니다", u"1 fenêtre est oubliée",
                                       u"1 Fenster ist vergessen");

constexpr Frames windowsAreForgottenFrames({u"已忘记 ", u" 个窗口"},
                                           {u"", u" windows are forgotten"},
                                           {u"", u"個のウィンドウを消去しました"},
                                           {u"기억한 창 ", u"개를 지웠습니다"},
                                           {u"", u" fenêtres sont oubliées"},
                                           {u"", u" Fenster sind vergessen"});

constexpr Frames wasInFrames({u"曾在：", u""}, {u"Was in: ", u""}, {u"以前の目標：", u""},
                             {u"이전 목표: ", u""}, {u"Était dans : ", u""}, {u"War in: ", u""});

constexpr Frames applicationIsGoneFrames({u"「", u"」已卸载"}, {u"“", u"” is no longer installed"},
                                         {u"「", u"」はもうインストールされていません"},
                                         {u"‘", u"’ 앱이 더 이상 설치되어 있지 않습니다"},
                                         {u"« ", u" » n’est plus installé"},
                                         {u"„", u"“ ist nicht mehr installiert"});

constexpr Frames documentIsGoneFrames({u"「", u"」已不存在，只打开了应用"},
                                      {u"“", u"” is gone; its application was opened without it"},
                                      {u"「", u"」が見つからないため、アプリだけを開きました"},
                                      {u"‘", u"’ 문서가 없어 앱만 열었습니다"},
                                      {u"« ",
                                       u" » n’existe plus ; seule son application a été ouverte"},
                                      {u"„", u"“ ist nicht mehr da; nur die App wurde geöffnet"});

constexpr Frames noNewWindowFrames({u"「", u"」没有打开新窗口"},
                                   {u"“", u"” has not opened a new window"},
                                   {u"「", u"」の新しいウィンドウは開きませんでした"},
                                   {u"‘", u"’에서 새 창이 열리지 않았습니다"},
                                   {u"« ", u" » n’a pas ouvert de nouvelle fenêtre"},
                                   {u"„", u"“ hat kein neues Fenster geöffnet"});

constexpr Names windowFromLastTimeTexts(u"上次的 1 个窗口", u"1 window from last time",
                                        u"前回のウィンドウ1個", u"지난번 창 1개",
                                        u"1 fenêtre de la dernière fois",
                                        u"1 Fenster vom letzten Mal");

constexpr Frames windowsFromLastTimeFrames({u"上次的 ", u" 个窗口"},
                                           {u"", u" windows from last time"},
                                           {u"前回のウィンドウ", u"個"}, {u"지난번 창 ", u"개"},
                                           {u"", u" fenêtres de la dernière fois"},
                                           {u"", u" Fenster vom letzten Mal"});

constexpr Names closedWindowTexts(u"1 个已关闭的窗口", u"1 closed window", u"閉じたウィンドウ1個",
                                  u"닫힌 창 1개", u"1 fenêtre fermée", u"1 geschlossenes Fenster");

constexpr Frames closedWindowsFrames({u"", u" 个已关闭的窗口"}, {u"", u" closed windows"},
                                     {u"閉じたウィンドウ", u"個"}, {u"닫힌 창 ", u"개"},
                                     {u"", u" fenêtres fermées"}, {u"", u" geschlossene Fenster"});

constexpr Frames lastSeenFrames({u"上次出现：", u""}, {u"Last seen: ", u""}, {u"最終表示：", u""},
                                {u"마지막 표시: ", u""}, {u"Vue le : ", u""},
                                {u"Zuletzt gesehen: ", u""});

constexpr Names titleSeparators(u"、", u", ", u"、", u", ", u", ", u", ");

/// The text for one window, or that for several around their number. None is counted nowhere.
QString counted(const Names& one, const Frames& several, qsizetype count, AppLanguage language)
{
    if (count == 1)
        return QStringView(one[language]).toString();
    return several[language].around(QString::number(count));
}

} // namespace

QString windowsAreBack(qsizetype count, AppLanguage language)
{
    return counted(windowIsBackTexts, windowsAreBackFrames, count, language);
}

QString windowsAreForgotten(qsizetype count, AppLanguage language)
{
    return counted(windowIsForgottenTexts, windowsAreForgottenFrames, count, language);
}

QString applicationIsGone(const QString& name, AppLanguage language)
{
    return applicationIsGoneFrames[language].around(name);
}

QString documentIsGone(const QString& name, AppLanguage language)
{
    return documentIsGoneFrames[language].around(name);
}

QString hasNoNewWindow(const QString& application, AppLanguage language)
{
    return noNewWindowFrames[language].around(application);
}

QString windowsFromLastTime(qsizetype count, AppLanguage language)
{
    return counted(windowFromLastTimeTexts, windowsFromLastTimeFrames, count, language);
}

QString closedWindows(qsizetype count, AppLanguage language)
{
    return counted(closedWindowTexts, closedWindowsFrames, count, language);
}

QString lastSeen(const QString& date, AppLanguage language)
{
    return lastSeenFrames[language].around(date);
}

QString wasIn(const QStringList& goalTitles, AppLanguage language)
{
    return wasInFrames[language].around(
        goalTitles.join(QStringView(titleSeparators[language]).toString()));
}

} // namespace kelpa::KelpaCopy
