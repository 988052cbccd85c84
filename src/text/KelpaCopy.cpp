#include "text/KelpaCopy.h"

#include "model/Text.h"
#include "text/CopyRowsBackups.h"
#include "text/CopyRowsBoard.h"
#include "text/CopyRowsDesktop.h"
#include "text/CopyRowsGoals.h"
#include "text/CopyRowsPresence.h"
#include "text/CopyRowsTransfer.h"
#include "text/CopyRowsTrouble.h"
#include "text/CopyRowsWindows.h"
#include "text/PerLanguage.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <string_view>

namespace kelpa::KelpaCopy {

namespace {

constexpr std::array<const CopyRow*, copyKeyCount> rowsByKey = [] {
    std::array<const CopyRow*, copyKeyCount> rows{};
    auto next = rows.begin();
    // A row too many would be written past the end, which a constant expression refuses.
    const auto append = [&next](const auto& part) {
        next = std::ranges::transform(part, next, [](const CopyRow& row) { return &row; }).out;
    };
    append(boardCopyRows);
    append(goalCopyRows);
    append(todoCopyRows);
    append(windowCopyRows);
    append(troubleCopyRows);
    append(desktopCopyRows);
    append(presenceCopyRows);
    append(backupCopyRows);
    append(transferCopyRows);
    return rows;
}();

constexpr bool everyKeyHasItsRow()
{
    for (std::size_t i = 0; i < copyKeyCount; ++i) {
        if (rowsByKey[i]->key() != static_cast<CopyKey>(i))
            return false;
    }
    return true;
}
static_assert(boardCopyRows.size() + goalCopyRows.size() + todoCopyRows.size() +
                      windowCopyRows.size() + troubleCopyRows.size() + desktopCopyRows.size() +
                      presenceCopyRows.size() + backupCopyRows.size() + transferCopyRows.size() ==
                  copyKeyCount,
              "each key has one row");
static_assert(everyKeyHasItsRow(), "the rows must stand in the order of CopyKey, one for each");

/// The text before and after an inserted value.
struct Frame
{
    std::u16string_view prefix;
    std::u16string_view suffix;

    QString around(const QString& value) const
    {
        return QStringView(prefix).toString().append(value).append(QStringView(suffix));
    }
};

using Frames = PerLanguage<Frame>;
using Names = PerLanguage<std::u16string_view>;

constexpr Frames selectWindowsTitleFrames({u"将窗口加入「", u"」"}, {u"Add windows to “", u"”"},
                                          {u"「", u"」にウィンドウを追加"}, {u"‘", u"’에 창 추가"},
                                          {u"Ajouter des fenêtres à « ", u" »"},
                                          {u"Fenster zu „", u"“ hinzufügen"});

constexpr Frames currentWindowLocationFrames({u"当前：", u""}, {u"Current: ", u""},
                                             {u"現在：", u""}, {u"현재: ", u""},
                                             {u"Actuel : ", u""}, {u"Aktuell: ", u""});

constexpr Frames selectedWindowCountFrames({u"已选择 ", u" 个窗口"}, {u"", u" windows selected"},
                                           {u"", u"個のウィンドウを選択中"}, {u"창 ", u"개 선택됨"},
                                           {u"", u" fenêtres sélectionnées"},
                                           {u"", u" Fenster ausgewählt"});

constexpr Frames confirmWindowSelectionFrames({u"加入 ", u" 个窗口"}, {u"Add ", u" windows"},
                                              {u"", u"個のウィンドウを追加"}, {u"창 ", u"개 추가"},
                                              {u"Ajouter ", u" fenêtres"},
                                              {u"", u" Fenster hinzufügen"});

constexpr Frames statusHelpFrames({u"当前状态：", u"；单击更改"},
                                  {u"Current status: ", u"; click to change"},
                                  {u"現在の状態：", u"；クリックで変更"},
                                  {u"현재 상태: ", u"; 클릭하여 변경"},
                                  {u"État actuel : ", u"; cliquez pour changer"},
                                  {u"Aktueller Status: ", u"; zum Ändern klicken"});

constexpr Frames statusAccessibilityFrames({u"待办状态：", u""}, {u"Todo status: ", u""},
                                           {u"タスクの状態：", u""}, {u"할 일 상태: ", u""},
                                           {u"État de la tâche : ", u""},
                                           {u"Aufgabenstatus: ", u""});

constexpr Names todoNames(u"待办", u"Todo", u"未着手", u"할 일", u"À faire", u"Offen");
constexpr Names ingNames(u"进行中", u"In progress", u"進行中", u"진행 중", u"En cours",
                         u"In Arbeit");
constexpr Names completedNames(u"已完成", u"Completed", u"完了", u"완료", u"Terminée", u"Erledigt");

constexpr Frames priorityAccessibilityFrames({u"优先级：", u""}, {u"Priority: ", u""},
                                             {u"優先度：", u""}, {u"우선순위: ", u""},
                                             {u"Priorité : ", u""}, {u"Priorität: ", u""});

constexpr Frames openTodoCountFrames({u"", u" 个未完成待办"}, {u"", u" unfinished todos"},
                                     {u"未完了のタスク", u"件"}, {u"미완료 할 일 ", u"개"},
                                     {u"", u" tâches inachevées"}, {u"", u" offene Aufgaben"});

constexpr Frames oneOpenTodoFrames({u"", u" 个未完成待办"}, {u"", u" unfinished todo"},
                                   {u"未完了のタスク", u"件"}, {u"미완료 할 일 ", u"개"},
                                   {u"", u" tâche inachevée"}, {u"", u" offene Aufgabe"});

constexpr Frames windowCountFrames({u"", u" 个窗口"}, {u"", u" windows"}, {u"", u"個のウィンドウ"},
                                   {u"창 ", u"개"}, {u"", u" fenêtres"}, {u"", u" Fenster"});

constexpr Frames oneWindowFrames({u"", u" 个窗口"}, {u"", u" window"}, {u"", u"個のウィンドウ"},
                                 {u"창 ", u"개"}, {u"", u" fenêtre"}, {u"", u" Fenster"});

constexpr Frames foundWindowsFrames({u"找到：窗口 ", u"、"}, {u"Found: windows ", u", "},
                                    {u"一致：ウィンドウ ", u"、"}, {u"찾음: 창 ", u", "},
                                    {u"Trouvé : fenêtres ", u", "}, {u"Gefunden: Fenster ", u", "});
constexpr Frames foundGoalsFrames({u"目标 ", u"、"}, {u"goals ", u", "}, {u"目標 ", u"、"},
                                  {u"목표 ", u", "}, {u"objectifs ", u", "}, {u"Ziele ", u", "});
constexpr Frames foundTodosFrames({u"待办 ", u""}, {u"todos ", u""}, {u"タスク ", u""},
                                  {u"할 일 ", u""}, {u"tâches ", u""}, {u"Aufgaben ", u""});
constexpr Frames moreInHiddenGoalsFrames({u"隐藏的目标中还有 ", u" 项"},
                                         {u"", u" more in hidden goals"},
                                         {u"非表示の目標にあと", u"件"},
                                         {u"숨긴 목표에 ", u"개 더 있음"},
                                         {u"", u" de plus dans les objectifs masqués"},
                                         {u"", u" weitere in ausgeblendeten Zielen"});
constexpr Frames oneMoreInHiddenGoalsFrames({u"隐藏的目标中还有 ", u" 项"},
                                            {u"", u" more in hidden goals"},
                                            {u"非表示の目標にあと", u"件"},
                                            {u"숨긴 목표에 ", u"개 더 있음"},
                                            {u"", u" de plus dans les objectifs masqués"},
                                            {u"", u" weiterer Treffer in ausgeblendeten Zielen"});
constexpr Frames hiddenGoalsFrames({u"已隐藏目标：", u""}, {u"Hidden goals: ", u""},
                                   {u"非表示の目標：", u""}, {u"숨긴 목표: ", u""},
                                   {u"Objectifs masqués : ", u""}, {u"Ausgeblendete Ziele: ", u""});
constexpr Frames hiddenWithWindowsFrames({u"，其中含窗口：", u""}, {u", with windows: ", u""},
                                         {u"、うちウィンドウあり：", u""}, {u", 창 있음: ", u""},
                                         {u", avec fenêtres : ", u""}, {u", mit Fenstern: ", u""});
constexpr Frames onlyMatchesShownFrames(
    {u"只显示与「", u"」匹配的窗口"}, {u"Only windows that match “", u"” are shown"},
    {u"「", u"」に一致するウィンドウだけを表示中"}, {u"‘", u"’ 검색과 일치하는 창만 표시 중"},
    {u"Seules les fenêtres correspondant à « ", u" » sont affichées"},
    {u"Nur Fenster, die zu „", u"“ passen, sind zu sehen"});
constexpr Frames showMoreWindowsFrames({u"再显示 ", u" 个"}, {u"Show ", u" more"},
                                       {u"あと", u"個を表示"}, {u"", u"개 더 보기"},
                                       {u"Afficher ", u" de plus"}, {u"", u" weitere anzeigen"});
constexpr Frames dropIntoFrames = Frames::same({u"→ ", u""});
constexpr Frames dropBeforeFrames({u"→ 移到「", u"」之前"}, {u"→ before “", u"”"},
                                  {u"→「", u"」の前へ"}, {u"→ ‘", u"’ 앞으로"},
                                  {u"→ avant « ", u" »"}, {u"→ vor „", u"“"});
constexpr Frames backupGoalsFrames({u"目标：", u" · "}, {u"Goals: ", u" · "}, {u"目標：", u" · "},
                                   {u"목표: ", u" · "}, {u"Objectifs : ", u" · "},
                                   {u"Ziele: ", u" · "});
constexpr Frames backupTodosFrames({u"未完成待办：", u""}, {u"Unfinished todos: ", u""},
                                   {u"未完了のタスク：", u""}, {u"미완료 할 일: ", u""},
                                   {u"Tâches inachevées : ", u""}, {u"Offene Aufgaben: ", u""});
constexpr Frames allTodosFrames({u"待办：", u" · "}, {u"Todos: ", u" · "}, {u"タスク：", u" · "},
                                {u"할 일: ", u" · "}, {u"Tâches : ", u" · "},
                                {u"Aufgaben: ", u" · "});
constexpr Frames leftOutFrames({u"不会导入的行：", u""}, {u"Lines left out: ", u""},
                               {u"読み込まれない行：", u""}, {u"가져오지 않는 줄: ", u""},
                               {u"Lignes laissées de côté : ", u""},
                               {u"Ausgelassene Zeilen: ", u""});
constexpr Frames lineFrames({u"第 ", u" 行，"}, {u"Line ", u", "}, {u"", u"行目、"},
                            {u"", u"번째 줄, "}, {u"Ligne ", u", "}, {u"Zeile ", u", "});
constexpr Frames movedAsideToFrames({u"原文件在同一文件夹中：", u""},
                                    {u"The old file is in the same folder: ", u""},
                                    {u"元のファイルは同じフォルダにあります：", u""},
                                    {u"이전 파일은 같은 폴더에 있습니다: ", u""},
                                    {u"L’ancien fichier se trouve dans le même dossier : ", u""},
                                    {u"Die alte Datei liegt im selben Ordner: ", u""});
constexpr Frames textTooLongFrames(
    {u"文本过长：此处最多容纳 ", u" 个字符，未插入任何内容。"},
    {u"Too long: at most ", u" characters fit here. Nothing was inserted."},
    {u"長すぎます。ここに入力できるのは", u"文字までです。何も挿入されていません。"},
    {u"너무 깁니다. 여기에는 최대 ", u"자까지 입력할 수 있습니다. 아무것도 삽입되지 않았습니다."},
    {u"Trop long : ici, ", u" caractères au maximum. Rien n’a été inséré."},
    {u"Zu lang: Hier passen höchstens ", u" Zeichen hinein. Nichts wurde eingefügt."});

constexpr Frames makeTodosFrames({u"创建 ", u" 个待办"}, {u"Make ", u" todos"},
                                 {u"", u"件のタスクを作成"}, {u"할 일 ", u"개 만들기"},
                                 {u"Créer ", u" tâches"}, {u"", u" Aufgaben erstellen"});

constexpr Frames overlongTitleFrames(
    {u"标题有 ", u" 个字符，过长而无法在此编辑。输入新标题之前，它保持不变。"},
    {u"The title has ",
     u" characters, too many to be edited here. It stays as it is until another one is entered."},
    {u"タイトルは",
     u"文字あり、長すぎてここでは編集できません。新しいタイトルを入力するまで、そのまま残ります。"},
    {u"제목이 ",
     u"자로 너무 길어 여기서 편집할 수 없습니다. 새 제목을 입력할 때까지 그대로 유지됩니다."},
    {u"Le titre compte ", u" caractères, trop pour être modifié ici. Il reste tel quel jusqu’à la "
                          u"saisie d’un autre."},
    {u"Der Titel hat ",
     u" Zeichen, zu viele, um ihn hier zu bearbeiten. Er bleibt, wie er ist, bis "
     u"ein anderer eingegeben wird."});

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

constexpr Frames onVirtualDesktopFrames({u"在虚拟桌面「", u"」上"}, {u"On desktop “", u"”"},
                                        {u"仮想デスクトップ「", u"」にあります"},
                                        {u"가상 데스크톱 ‘", u"’에 있음"},
                                        {u"Sur le bureau « ", u" »"},
                                        {u"Auf Arbeitsfläche „", u"“"});

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

constexpr Names dayAndTimeSeparators(u" ", u", ", u" ", u" ", u", ", u", ");
constexpr Names windowNameSeparators(u"：", u": ", u"：", u": ", u" : ", u": ");

/// Whether what is counted stands in the singular.
bool isSingular(qsizetype count, AppLanguage language)
{
    return count == 1 || (count == 0 && language == AppLanguage::french);
}

/// With the count in one frame or the other.
QString counted(qsizetype count, const Frames& singular, const Frames& plural, AppLanguage language)
{
    const Frames& frames = isSingular(count, language) ? singular : plural;
    return frames[language].around(QString::number(count));
}

/// What a person typed, within a text of ours.
QString shortened(const QString& text)
{
    constexpr qsizetype longest = 40;
    return text.size() > longest ? beginning(text, longest) + u'…' : text;
}

const Names& statusNames(TodoStatus status)
{
    switch (status) {
    case TodoStatus::todo:
        return todoNames;
    case TodoStatus::ing:
        return ingNames;
    case TodoStatus::completed:
        return completedNames;
    }
    Q_UNREACHABLE();
}

} // namespace

QString text(CopyKey key, AppLanguage language)
{
    const auto row = static_cast<std::size_t>(key);
    // QML can pass any number as a key.
    if (row >= copyKeyCount)
        qFatal("broken invariant: %zu is no key of the interface's texts", row);
    return QStringView(rowsByKey[row]->text(language)).toString();
}

QString selectWindowsTitle(const QString& goalTitle, AppLanguage language)
{
    return selectWindowsTitleFrames[language].around(goalTitle);
}

QString currentWindowLocation(const QString& goalTitle, AppLanguage language)
{
    return currentWindowLocationFrames[language].around(goalTitle);
}

QString selectedWindowCount(qsizetype count, AppLanguage language)
{
    return selectedWindowCountFrames[language].around(QString::number(count));
}

QString confirmWindowSelection(qsizetype count, AppLanguage language)
{
    return confirmWindowSelectionFrames[language].around(QString::number(count));
}

QString statusName(TodoStatus status, AppLanguage language)
{
    return QStringView(statusNames(status)[language]).toString();
}

QString statusHelp(TodoStatus status, AppLanguage language)
{
    return statusHelpFrames[language].around(statusName(status, language));
}

QString statusAccessibilityLabel(TodoStatus status, AppLanguage language)
{
    return statusAccessibilityFrames[language].around(statusName(status, language));
}

CopyKey priorityName(GoalPriority priority)
{
    switch (priority) {
    case GoalPriority::p0:
        return CopyKey::PriorityP0;
    case GoalPriority::p1:
        return CopyKey::PriorityP1;
    case GoalPriority::p2:
        return CopyKey::PriorityP2;
    case GoalPriority::p3:
        return CopyKey::PriorityP3;
    }
    Q_UNREACHABLE();
}

QString priorityAccessibilityLabel(GoalPriority priority, AppLanguage language)
{
    return priorityAccessibilityFrames[language].around(text(priorityName(priority), language));
}

QString openTodoCount(qsizetype count, AppLanguage language)
{
    return counted(count, oneOpenTodoFrames, openTodoCountFrames, language);
}

QString windowCount(qsizetype count, AppLanguage language)
{
    return counted(count, oneWindowFrames, windowCountFrames, language);
}

QString foundCounts(qsizetype windows, qsizetype goals, qsizetype todos, AppLanguage language)
{
    return foundWindowsFrames[language].around(QString::number(windows)) +
           foundGoalsFrames[language].around(QString::number(goals)) +
           foundTodosFrames[language].around(QString::number(todos));
}

QString moreInHiddenGoals(qsizetype count, AppLanguage language)
{
    return counted(count, oneMoreInHiddenGoalsFrames, moreInHiddenGoalsFrames, language);
}

QString hiddenGoals(qsizetype count, qsizetype countWithWindows, AppLanguage language)
{
    QString text = hiddenGoalsFrames[language].around(QString::number(count));
    if (countWithWindows > 0)
        text += hiddenWithWindowsFrames[language].around(QString::number(countWithWindows));
    return text;
}

QString onlyMatchesShown(const QString& searchText, AppLanguage language)
{
    return onlyMatchesShownFrames[language].around(shortened(searchText));
}

QString showMoreWindows(qsizetype count, AppLanguage language)
{
    return showMoreWindowsFrames[language].around(QString::number(count));
}

QString dropInto(const QString& title, AppLanguage language)
{
    return dropIntoFrames[language].around(shortened(title));
}

QString dropBefore(const QString& title, AppLanguage language)
{
    return dropBeforeFrames[language].around(shortened(title));
}

QString textTooLong(qsizetype limit, AppLanguage language)
{
    return textTooLongFrames[language].around(QString::number(limit));
}

QString makeTodos(qsizetype count, AppLanguage language)
{
    return makeTodosFrames[language].around(QString::number(count));
}

QString overlongTitle(qsizetype length, AppLanguage language)
{
    return overlongTitleFrames[language].around(QString::number(length));
}

QString windowsAreBack(qsizetype count, AppLanguage language)
{
    if (count == 1)
        return QStringView(windowIsBackTexts[language]).toString();
    return windowsAreBackFrames[language].around(QString::number(count));
}

QString windowsAreForgotten(qsizetype count, AppLanguage language)
{
    if (count == 1)
        return QStringView(windowIsForgottenTexts[language]).toString();
    return windowsAreForgottenFrames[language].around(QString::number(count));
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
    if (count == 1)
        return QStringView(windowFromLastTimeTexts[language]).toString();
    return windowsFromLastTimeFrames[language].around(QString::number(count));
}

QString closedWindows(qsizetype count, AppLanguage language)
{
    if (count == 1)
        return QStringView(closedWindowTexts[language]).toString();
    return closedWindowsFrames[language].around(QString::number(count));
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

QString onVirtualDesktop(const QString& desktop, AppLanguage language)
{
    return onVirtualDesktopFrames[language].around(desktop);
}

QString windowName(const QString& ownerName, const QString& title, AppLanguage language)
{
    if (ownerName.isEmpty())
        return title;
    return ownerName + QStringView(windowNameSeparators[language]).toString() + title;
}

QString dayAndTime(const QDateTime& local, AppLanguage language)
{
    const QLocale locale(rawValue(language));
    return locale.toString(local.date(), QLocale::LongFormat) +
           QStringView(dayAndTimeSeparators[language]).toString() +
           locale.toString(local.time(), QLocale::ShortFormat);
}

QString backupCounts(qsizetype goals, qsizetype openTodos, AppLanguage language)
{
    return backupGoalsFrames[language].around(QString::number(goals)) +
           backupTodosFrames[language].around(QString::number(openTodos));
}

QString importCounts(qsizetype goals, qsizetype todos, qsizetype openTodos, AppLanguage language)
{
    return backupGoalsFrames[language].around(QString::number(goals)) +
           allTodosFrames[language].around(QString::number(todos)) +
           backupTodosFrames[language].around(QString::number(openTodos));
}

QString linesLeftOut(qsizetype count, AppLanguage language)
{
    return leftOutFrames[language].around(QString::number(count));
}

QString lineLeftOut(qsizetype line, CopyKey reason, const QString& text, AppLanguage language)
{
    const QString why =
        lineFrames[language].around(QString::number(line)) + KelpaCopy::text(reason, language);
    return text.isEmpty() ? why
                          : why + QStringView(windowNameSeparators[language]).toString() + text;
}

QString movedAsideTo(const QString& name, AppLanguage language)
{
    return movedAsideToFrames[language].around(name);
}

} // namespace kelpa::KelpaCopy
