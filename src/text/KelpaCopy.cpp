#include "text/KelpaCopy.h"

#include "model/Text.h"
#include "text/CopyFrame.h"
#include "text/CopyRowsBackups.h"
#include "text/CopyRowsBoard.h"
#include "text/CopyRowsDesktop.h"
#include "text/CopyRowsGoals.h"
#include "text/CopyRowsPresence.h"
#include "text/CopyRowsTransfer.h"
#include "text/CopyRowsTrouble.h"
#include "text/CopyRowsWindows.h"

#include <QLocale>

#include <algorithm>
#include <array>

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

constexpr Frames nextStatusFrames({u"下一状态：", u""}, {u"Next status: ", u""},
                                  {u"次の状態：", u""}, {u"다음 상태: ", u""},
                                  {u"État suivant : ", u""}, {u"Nächster Status: ", u""});

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

constexpr Frames onVirtualDesktopFrames({u"在虚拟桌面「", u"」上"}, {u"On desktop “", u"”"},
                                        {u"仮想デスクトップ「", u"」にあります"},
                                        {u"가상 데스크톱 ‘", u"’에 있음"},
                                        {u"Sur le bureau « ", u" »"},
                                        {u"Auf Arbeitsfläche „", u"“"});

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

QString nextStatus(TodoStatus next, AppLanguage language)
{
    return nextStatusFrames[language].around(statusName(next, language));
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

QString onVirtualDesktop(const QString& desktop, AppLanguage language)
{
    return onVirtualDesktopFrames[language].around(desktop);
}

QString windowName(const QString& ownerName, const QString& title, AppLanguage language)
{
    return ownerName.isEmpty() ? title : withColon(ownerName, title, language);
}

QString withColon(const QString& what, const QString& name, AppLanguage language)
{
    return what + QStringView(windowNameSeparators[language]).toString() + name;
}

QString dayAndTime(const QDateTime& local, AppLanguage language)
{
    const QLocale locale(rawValue(language));
    return locale.toString(local.date(), QLocale::LongFormat) +
           QStringView(dayAndTimeSeparators[language]).toString() +
           locale.toString(local.time(), QLocale::ShortFormat);
}

QString movedAsideTo(const QString& name, AppLanguage language)
{
    return movedAsideToFrames[language].around(name);
}

} // namespace kelpa::KelpaCopy
