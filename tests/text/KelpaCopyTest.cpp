#include "text/KelpaCopy.h"

#include "text/ComposedTexts.h"
#include "text/DeclaredKeys.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa {
namespace {

using enum AppLanguage;

TEST(KelpaCopy, The_sheet_s_title_names_the_goal)
{
    expectTexts({{{chinese, u"将窗口加入「Taxes」"},
                  {english, u"Add windows to “Taxes”"},
                  {japanese, u"「Taxes」にウィンドウを追加"},
                  {korean, u"‘Taxes’에 창 추가"},
                  {french, u"Ajouter des fenêtres à « Taxes »"},
                  {german, u"Fenster zu „Taxes“ hinzufügen"}}},
                [](AppLanguage language) {
                    return KelpaCopy::selectWindowsTitle(QStringLiteral("Taxes"), language);
                });
}

TEST(KelpaCopy, A_window_s_location_names_its_goal)
{
    expectTexts({{{chinese, u"当前：Taxes"},
                  {english, u"Current: Taxes"},
                  {japanese, u"現在：Taxes"},
                  {korean, u"현재: Taxes"},
                  {french, u"Actuel : Taxes"},
                  {german, u"Aktuell: Taxes"}}},
                [](AppLanguage language) {
                    return KelpaCopy::currentWindowLocation(QStringLiteral("Taxes"), language);
                });
}

TEST(KelpaCopy, The_count_of_selected_windows_is_a_line)
{
    expectTexts({{{chinese, u"已选择 12 个窗口"},
                  {english, u"12 windows selected"},
                  {japanese, u"12個のウィンドウを選択中"},
                  {korean, u"창 12개 선택됨"},
                  {french, u"12 fenêtres sélectionnées"},
                  {german, u"12 Fenster ausgewählt"}}},
                [](AppLanguage language) { return KelpaCopy::selectedWindowCount(12, language); });
}

TEST(KelpaCopy, The_confirm_button_says_how_many_windows)
{
    expectTexts(
        {{{chinese, u"加入 12 个窗口"},
          {english, u"Add 12 windows"},
          {japanese, u"12個のウィンドウを追加"},
          {korean, u"창 12개 추가"},
          {french, u"Ajouter 12 fenêtres"},
          {german, u"12 Fenster hinzufügen"}}},
        [](AppLanguage language) { return KelpaCopy::confirmWindowSelection(12, language); });
}

TEST(KelpaCopy, A_field_says_how_much_it_takes_and_what_happened)
{
    expectTexts(
        {{{chinese, u"文本过长：此处最多容纳 50000 个字符，未插入任何内容。"},
          {english, u"Too long: at most 50000 characters fit here. Nothing was inserted."},
          {japanese,
           u"長すぎます。ここに入力できるのは50000文字までです。何も挿入されていません。"},
          {korean, u"너무 깁니다. 여기에는 최대 50000자까지 입력할 수 있습니다. 아무것도 삽입되지 "
                   u"않았습니다."},
          {french, u"Trop long : ici, 50000 caractères au maximum. Rien n’a été inséré."},
          {german, u"Zu lang: Hier passen höchstens 50000 Zeichen hinein. Nichts wurde "
                   u"eingefügt."}}},
        [](AppLanguage language) { return KelpaCopy::textTooLong(50000, language); });
}

TEST(KelpaCopy, Pasted_lines_are_offered_as_todos)
{
    expectTexts({{{chinese, u"创建 5 个待办"},
                  {english, u"Make 5 todos"},
                  {japanese, u"5件のタスクを作成"},
                  {korean, u"할 일 5개 만들기"},
                  {french, u"Créer 5 tâches"},
                  {german, u"5 Aufgaben erstellen"}}},
                [](AppLanguage language) { return KelpaCopy::makeTodos(5, language); });
}

TEST(KelpaCopy, A_title_that_no_field_takes_says_how_long_it_is_and_that_it_stays)
{
    expectTexts(
        {{{chinese, u"标题有 5000000 个字符，过长而无法在此编辑。输入新标题之前，它保持不变。"},
          {english, u"The title has 5000000 characters, too many to be edited here. It stays as it "
                    u"is until another one is entered."},
          {japanese, u"タイトルは5000000文字あり、長すぎてここでは編集できません。新しいタイトルを"
                     u"入力するまで、そのまま残ります。"},
          {korean,
           u"제목이 5000000자로 너무 길어 여기서 편집할 수 없습니다. 새 제목을 입력할 때까지 "
           u"그대로 유지됩니다."},
          {french, u"Le titre compte 5000000 caractères, trop pour être modifié ici. Il reste tel "
                   u"quel jusqu’à la saisie d’un autre."},
          {german, u"Der Titel hat 5000000 Zeichen, zu viele, um ihn hier zu bearbeiten. Er "
                   u"bleibt, wie er ist, bis ein anderer eingegeben wird."}}},
        [](AppLanguage language) { return KelpaCopy::overlongTitle(5000000, language); });
}

TEST(KelpaCopy, A_count_of_one_still_reads_as_many)
{
    EXPECT_EQ(KelpaCopy::selectedWindowCount(1, english), QStringLiteral("1 windows selected"));
    EXPECT_EQ(KelpaCopy::confirmWindowSelection(1, english), QStringLiteral("Add 1 windows"));
    EXPECT_EQ(KelpaCopy::selectedWindowCount(0, english), QStringLiteral("0 windows selected"));
}

TEST(KelpaCopy, Counts_are_not_grouped)
{
    EXPECT_EQ(KelpaCopy::selectedWindowCount(1234567, german),
              QStringLiteral("1234567 Fenster ausgewählt"));
}

TEST(KelpaCopy, An_empty_goal_title_is_inserted_as_it_is)
{
    EXPECT_EQ(KelpaCopy::selectWindowsTitle(QString(), english),
              QStringLiteral("Add windows to “”"));
    EXPECT_EQ(KelpaCopy::currentWindowLocation(QString(), german), QStringLiteral("Aktuell: "));
}

TEST(KelpaCopy, A_goal_title_that_looks_like_a_place_holder_is_inserted_as_it_is)
{
    EXPECT_EQ(KelpaCopy::selectWindowsTitle(QStringLiteral("%1 {title} %L1 ”"), english),
              QStringLiteral("Add windows to “%1 {title} %L1 ””"));
    EXPECT_EQ(KelpaCopy::currentWindowLocation(QStringLiteral("  spaced "), english),
              QStringLiteral("Current:   spaced "));
}

struct StatusTexts
{
    AppLanguage language;
    TodoStatus status;
    const char16_t* name;
    const char16_t* help;
    const char16_t* accessibilityLabel;
};

TEST(KelpaCopy, The_status_control_tells_the_status_and_what_a_click_does)
{
    using enum TodoStatus;
    const std::array rows = std::to_array<StatusTexts>({
        {chinese, todo, u"待办", u"当前状态：待办；单击更改", u"待办状态：待办"},
        {chinese, ing, u"进行中", u"当前状态：进行中；单击更改", u"待办状态：进行中"},
        {chinese, completed, u"已完成", u"当前状态：已完成；单击更改", u"待办状态：已完成"},
        {english, todo, u"Todo", u"Current status: Todo; click to change", u"Todo status: Todo"},
        {english, ing, u"In progress", u"Current status: In progress; click to change",
         u"Todo status: In progress"},
        {english, completed, u"Completed", u"Current status: Completed; click to change",
         u"Todo status: Completed"},
        {japanese, todo, u"未着手", u"現在の状態：未着手；クリックで変更", u"タスクの状態：未着手"},
        {japanese, ing, u"進行中", u"現在の状態：進行中；クリックで変更", u"タスクの状態：進行中"},
        {japanese, completed, u"完了", u"現在の状態：完了；クリックで変更", u"タスクの状態：完了"},
        {korean, todo, u"할 일", u"현재 상태: 할 일; 클릭하여 변경", u"할 일 상태: 할 일"},
        {korean, ing, u"진행 중", u"현재 상태: 진행 중; 클릭하여 변경", u"할 일 상태: 진행 중"},
        {korean, completed, u"완료", u"현재 상태: 완료; 클릭하여 변경", u"할 일 상태: 완료"},
        {french, todo, u"À faire", u"État actuel : À faire; cliquez pour changer",
         u"État de la tâche : À faire"},
        {french, ing, u"En cours", u"État actuel : En cours; cliquez pour changer",
         u"État de la tâche : En cours"},
        {french, completed, u"Terminée", u"État actuel : Terminée; cliquez pour changer",
         u"État de la tâche : Terminée"},
        {german, todo, u"Offen", u"Aktueller Status: Offen; zum Ändern klicken",
         u"Aufgabenstatus: Offen"},
        {german, ing, u"In Arbeit", u"Aktueller Status: In Arbeit; zum Ändern klicken",
         u"Aufgabenstatus: In Arbeit"},
        {german, completed, u"Erledigt", u"Aktueller Status: Erledigt; zum Ändern klicken",
         u"Aufgabenstatus: Erledigt"},
    });
    for (const StatusTexts& row : rows) {
        EXPECT_EQ(KelpaCopy::statusName(row.status, row.language), QString::fromUtf16(row.name));
        EXPECT_EQ(KelpaCopy::statusHelp(row.status, row.language), QString::fromUtf16(row.help));
        EXPECT_EQ(KelpaCopy::statusAccessibilityLabel(row.status, row.language),
                  QString::fromUtf16(row.accessibilityLabel));
    }
}

TEST(KelpaCopy, The_status_control_tells_which_status_comes_next)
{
    expectTexts(
        {{{chinese, u"下一状态：进行中"},
          {english, u"Next status: In progress"},
          {japanese, u"次の状態：進行中"},
          {korean, u"다음 상태: 진행 중"},
          {french, u"État suivant : En cours"},
          {german, u"Nächster Status: In Arbeit"}}},
        [](AppLanguage language) { return KelpaCopy::nextStatus(TodoStatus::ing, language); });
}

TEST(KelpaCopy, Badges_and_priorities_have_names_for_screen_readers)
{
    EXPECT_EQ(KelpaCopy::priorityAccessibilityLabel(GoalPriority::p0, english),
              QStringLiteral("Priority: P0"));
    EXPECT_EQ(KelpaCopy::priorityAccessibilityLabel(GoalPriority::p3, french),
              QStringLiteral("Priorité : P3"));
    EXPECT_EQ(KelpaCopy::openTodoCount(3, english), QStringLiteral("3 unfinished todos"));
    EXPECT_EQ(KelpaCopy::openTodoCount(3, japanese), QStringLiteral("未完了のタスク3件"));
    EXPECT_EQ(KelpaCopy::windowCount(2, german), QStringLiteral("2 Fenster"));
    EXPECT_EQ(KelpaCopy::windowCount(2, korean), QStringLiteral("창 2개"));
}

TEST(KelpaCopy, A_search_says_how_much_it_has_found_and_how_much_is_hidden)
{
    expectTexts({{{chinese, u"找到：窗口 3、目标 1、待办 0"},
                  {english, u"Found: windows 3, goals 1, todos 0"},
                  {japanese, u"一致：ウィンドウ 3、目標 1、タスク 0"},
                  {korean, u"찾음: 창 3, 목표 1, 할 일 0"},
                  {french, u"Trouvé : fenêtres 3, objectifs 1, tâches 0"},
                  {german, u"Gefunden: Fenster 3, Ziele 1, Aufgaben 0"}}},
                [](AppLanguage language) { return KelpaCopy::foundCounts(3, 1, 0, language); });
    expectTexts({{{chinese, u"隐藏的目标中还有 2 项"},
                  {english, u"2 more in hidden goals"},
                  {japanese, u"非表示の目標にあと2件"},
                  {korean, u"숨긴 목표에 2개 더 있음"},
                  {french, u"2 de plus dans les objectifs masqués"},
                  {german, u"2 weitere in ausgeblendeten Zielen"}}},
                [](AppLanguage language) { return KelpaCopy::moreInHiddenGoals(2, language); });
    expectTexts({{{chinese, u"已隐藏目标：5，其中含窗口：2"},
                  {english, u"Hidden goals: 5, with windows: 2"},
                  {japanese, u"非表示の目標：5、うちウィンドウあり：2"},
                  {korean, u"숨긴 목표: 5, 창 있음: 2"},
                  {french, u"Objectifs masqués : 5, avec fenêtres : 2"},
                  {german, u"Ausgeblendete Ziele: 5, mit Fenstern: 2"}}},
                [](AppLanguage language) { return KelpaCopy::hiddenGoals(5, 2, language); });
    expectTexts({{{chinese, u"已隐藏目标：5"},
                  {english, u"Hidden goals: 5"},
                  {japanese, u"非表示の目標：5"},
                  {korean, u"숨긴 목표: 5"},
                  {french, u"Objectifs masqués : 5"},
                  {german, u"Ausgeblendete Ziele: 5"}}},
                [](AppLanguage language) { return KelpaCopy::hiddenGoals(5, 0, language); });
}

TEST(KelpaCopy, A_fold_says_how_many_windows_are_in_it)
{
    expectTexts({{{chinese, u"再显示 22 个"},
                  {english, u"Show 22 more"},
                  {japanese, u"あと22個を表示"},
                  {korean, u"22개 더 보기"},
                  {french, u"Afficher 22 de plus"},
                  {german, u"22 weitere anzeigen"}}},
                [](AppLanguage language) { return KelpaCopy::showMoreWindows(22, language); });
}

TEST(KelpaCopy, A_drag_names_the_place_where_it_would_end)
{
    const QString title = QStringLiteral("Taxes");
    for (const AppLanguage language : allAppLanguages)
        EXPECT_EQ(KelpaCopy::dropInto(title, language), QStringLiteral("→ Taxes"));
    expectTexts({{{chinese, u"→ 移到「Taxes」之前"},
                  {english, u"→ before “Taxes”"},
                  {japanese, u"→「Taxes」の前へ"},
                  {korean, u"→ ‘Taxes’ 앞으로"},
                  {french, u"→ avant « Taxes »"},
                  {german, u"→ vor „Taxes“"}}},
                [&](AppLanguage language) { return KelpaCopy::dropBefore(title, language); });
    EXPECT_EQ(KelpaCopy::dropInto(QString(50, u'a'), english),
              QStringLiteral("→ ") + QString(40, u'a') + u'…');
}

TEST(KelpaCopy, A_board_that_is_narrowed_names_the_search)
{
    expectTexts({{{chinese, u"只显示与「bank」匹配的窗口"},
                  {english, u"Only windows that match “bank” are shown"},
                  {japanese, u"「bank」に一致するウィンドウだけを表示中"},
                  {korean, u"‘bank’ 검색과 일치하는 창만 표시 중"},
                  {french, u"Seules les fenêtres correspondant à « bank » sont affichées"},
                  {german, u"Nur Fenster, die zu „bank“ passen, sind zu sehen"}}},
                [](AppLanguage language) {
                    return KelpaCopy::onlyMatchesShown(QStringLiteral("bank"), language);
                });
    EXPECT_EQ(KelpaCopy::onlyMatchesShown(QString(41, u'a'), english),
              QStringLiteral("Only windows that match “%1…” are shown").arg(QString(40, u'a')));
    // Never between the halves of a character.
    EXPECT_EQ(KelpaCopy::onlyMatchesShown(QString(39, u'a') + QStringLiteral("😀b"), english),
              QStringLiteral("Only windows that match “%1…” are shown").arg(QString(39, u'a')));
}

TEST(KelpaCopy, A_card_says_on_which_virtual_desktop_its_window_is)
{
    expectTexts({{{chinese, u"在虚拟桌面「Web」上"},
                  {english, u"On desktop “Web”"},
                  {japanese, u"仮想デスクトップ「Web」にあります"},
                  {korean, u"가상 데스크톱 ‘Web’에 있음"},
                  {french, u"Sur le bureau « Web »"},
                  {german, u"Auf Arbeitsfläche „Web“"}}},
                [](AppLanguage language) {
                    return KelpaCopy::onVirtualDesktop(QStringLiteral("Web"), language);
                });
}

TEST(KelpaCopy, A_card_is_named_by_its_application_and_its_title)
{
    const auto name = [](AppLanguage language) {
        return KelpaCopy::windowName(QStringLiteral("Mail"), QStringLiteral("Inbox: 3"), language);
    };
    expectTexts({{{chinese, u"Mail：Inbox: 3"},
                  {english, u"Mail: Inbox: 3"},
                  {japanese, u"Mail：Inbox: 3"},
                  {korean, u"Mail: Inbox: 3"},
                  {french, u"Mail : Inbox: 3"},
                  {german, u"Mail: Inbox: 3"}}},
                name);
    EXPECT_EQ(KelpaCopy::windowName(QString(), QStringLiteral("Inbox"), french),
              QStringLiteral("Inbox"));
}

TEST(KelpaCopy, A_file_that_was_moved_aside_is_named)
{
    const auto text = [](AppLanguage language) {
        return KelpaCopy::movedAsideTo(QStringLiteral("a.b"), language);
    };
    expectTexts({{{chinese, u"原文件在同一文件夹中：a.b"},
                  {english, u"The old file is in the same folder: a.b"},
                  {japanese, u"元のファイルは同じフォルダにあります：a.b"},
                  {korean, u"이전 파일은 같은 폴더에 있습니다: a.b"},
                  {french, u"L’ancien fichier se trouve dans le même dossier : a.b"},
                  {german, u"Die alte Datei liegt im selben Ordner: a.b"}}},
                text);
}

TEST(KelpaCopy, Day_and_time_are_written_as_in_the_language)
{
    const QDateTime time(QDate(2026, 11, 22), QTime(16, 5));
    EXPECT_EQ(KelpaCopy::dayAndTime(time, chinese), QStringLiteral("2026年11月22日星期日 16:05"));
    // Since CLDR 42, which Qt 6.8 has, the space before PM is one that does not break.
    QString text = KelpaCopy::dayAndTime(time, english);
    EXPECT_EQ(text.replace(QChar(u'\u202F'), u' '),
              QStringLiteral("Sunday, November 22, 2026, 4:05 PM"));
    EXPECT_EQ(KelpaCopy::dayAndTime(time, german),
              QStringLiteral("Sonntag, 22. November 2026, 16:05"));
}

TEST(KelpaCopy, The_rows_hold_every_declared_key)
{
    const QList<CopyKey> keys = declaredKeys();
    ASSERT_EQ(static_cast<std::size_t>(keys.size()), copyKeyCount);
    for (qsizetype i = 0; i < keys.size(); ++i)
        EXPECT_EQ(static_cast<qsizetype>(keys.at(i)), i);
}

TEST(KelpaCopyDeathTest, A_number_that_is_no_key_halts_the_program)
{
    EXPECT_DEATH(static_cast<void>(KelpaCopy::text(static_cast<CopyKey>(copyKeyCount), english)),
                 "is no key of the interface's texts");
    EXPECT_DEATH(static_cast<void>(KelpaCopy::text(static_cast<CopyKey>(-1), english)),
                 "is no key of the interface's texts");
}

} // namespace
} // namespace kelpa
