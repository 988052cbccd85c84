#include "text/KeyHelp.h"

#include "text/PerLanguage.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace kelpa {

namespace {

using Texts = PerLanguage<std::u16string_view>;

/// What a key does nothing without.
enum class KeyAbility : std::uint8_t {
    none,
    doubleTap,
    workOnGoals,
    /// Goals are pinned, and `workOnGoals` is missing.
    onlyPinGoals,
};

struct Row
{
    Texts keys;
    Texts meaning;
    KeyAbility needed = KeyAbility::none;
};

constexpr Texts newGoal{u"Ctrl+N", u"Ctrl+N", u"Ctrl+N", u"Ctrl+N", u"Ctrl+N", u"Strg+N"};
constexpr Texts help = Texts::same(u"F1");
constexpr Texts quit{u"Ctrl+Q", u"Ctrl+Q", u"Ctrl+Q", u"Ctrl+Q", u"Ctrl+Q", u"Strg+Q"};
constexpr Texts rename = Texts::same(u"F2");
constexpr Texts deleteTodo{u"Delete", u"Delete", u"Delete", u"Delete", u"Suppr", u"Entf"};
constexpr Texts moveLeft = Texts::same(u"Alt+←");
constexpr Texts moveRight = Texts::same(u"Alt+→");
constexpr Texts moveUp = Texts::same(u"Alt+↑");
constexpr Texts moveDown = Texts::same(u"Alt+↓");
constexpr Texts undo{u"Ctrl+Z", u"Ctrl+Z", u"Ctrl+Z", u"Ctrl+Z", u"Ctrl+Z", u"Strg+Z"};
constexpr Texts redo{u"Ctrl+Y", u"Ctrl+Y", u"Ctrl+Y", u"Ctrl+Y", u"Ctrl+Y", u"Strg+Y"};
constexpr Texts work{u"Ctrl+G", u"Ctrl+G", u"Ctrl+G", u"Ctrl+G", u"Ctrl+G", u"Strg+G"};
constexpr Texts goBack{u"Ctrl+Shift+G", u"Ctrl+Shift+G", u"Ctrl+Shift+G",
                       u"Ctrl+Shift+G", u"Ctrl+Maj+G",   u"Strg+Umschalt+G"};
constexpr Texts commandReturn{u"Ctrl+回车",  u"Ctrl+Return", u"Ctrl+Enter",
                              u"Ctrl+Enter", u"Ctrl+Entrée", u"Strg+Eingabe"};

constexpr std::array rows{
    Row{{u"方向键", u"Arrows", u"矢印キー", u"방향키", u"Flèches", u"Pfeiltasten"},
        {u"选择目标或窗口", u"Select a goal or a window", u"目標やウィンドウを選択",
         u"목표나 창 선택", u"Sélectionner un objectif ou une fenêtre",
         u"Ein Ziel oder Fenster auswählen"}},
    Row{{u"空格", u"Space", u"Space", u"Space", u"Espace", u"Leertaste"},
        {u"进入目标；将窗口置于最前", u"Enter a goal; bring a window forward",
         u"目標に入る、ウィンドウを手前に表示", u"목표로 들어가기, 창을 앞으로 가져오기",
         u"Entrer dans un objectif ; mettre une fenêtre au premier plan",
         u"In ein Ziel hineingehen; ein Fenster nach vorn holen"}},
    Row{{u"回车", u"Return", u"Enter", u"Enter", u"Entrée", u"Eingabe"},
        {u"为目标添加待办；将窗口置于最前", u"Add a todo to a goal; bring a window forward",
         u"目標にタスクを追加、ウィンドウを手前に表示", u"목표에 할 일 추가, 창을 앞으로 가져오기",
         u"Ajouter une tâche à un objectif ; mettre une fenêtre au premier plan",
         u"Einem Ziel eine Aufgabe hinzufügen; ein Fenster nach vorn holen"}},
    Row{{u"Esc", u"Esc", u"Esc", u"Esc", u"Échap", u"Esc"},
        {u"返回；结束编辑或搜索", u"Go back; end an edit or a search", u"戻る、編集や検索を終了",
         u"뒤로 가기, 편집이나 검색 끝내기", u"Revenir ; terminer une saisie ou une recherche",
         u"Zurück; Bearbeiten oder Suchen beenden"}},
    Row{{u"A–Z、0–9、Ctrl+F", u"A–Z, 0–9, Ctrl+F", u"A–Z、0–9、Ctrl+F", u"A–Z, 0–9, Ctrl+F",
         u"A–Z, 0–9, Ctrl+F", u"A–Z, 0–9, Strg+F"},
        {u"搜索窗口、目标和待办", u"Search windows, goals and todos",
         u"ウィンドウ、目標、タスクを検索", u"창, 목표, 할 일 검색",
         u"Rechercher fenêtres, objectifs et tâches", u"Fenster, Ziele und Aufgaben suchen"}},
    Row{commandReturn,
        {u"打开第一个匹配的窗口；将粘贴的每一行建为待办",
         u"Open the first window that was found; make a todo of each pasted line",
         u"最初に見つかったウィンドウを開く、貼り付けた各行をタスクにする",
         u"처음 찾은 창 열기, 붙여 넣은 줄마다 할 일 만들기",
         u"Ouvrir la première fenêtre trouvée ; créer une tâche par ligne collée",
         u"Das erste gefundene Fenster öffnen; aus jeder eingefügten Zeile eine Aufgabe machen"}},
    Row{newGoal,
        {u"新建目标", u"Create a goal", u"目標を作成", u"목표 만들기", u"Créer un objectif",
         u"Ein Ziel erstellen"}},
    Row{rename,
        {u"重命名目标；编辑待办", u"Rename a goal; edit a todo", u"目標の名前を変更、タスクを編集",
         u"목표 이름 변경, 할 일 편집", u"Renommer un objectif ; modifier une tâche",
         u"Ein Ziel umbenennen; eine Aufgabe bearbeiten"}},
    Row{deleteTodo,
        {u"删除待办", u"Delete a todo", u"タスクを削除", u"할 일 삭제", u"Supprimer une tâche",
         u"Eine Aufgabe löschen"}},
    Row{{u"Alt+方向键", u"Alt+Arrow", u"Alt+矢印キー", u"Alt+방향키", u"Alt+Flèche", u"Alt+Pfeil"},
        {u"移动目标或待办", u"Move a goal or a todo", u"目標やタスクを移動", u"목표나 할 일 이동",
         u"Déplacer un objectif ou une tâche", u"Ein Ziel oder eine Aufgabe verschieben"}},
    Row{{u"Ctrl+B", u"Ctrl+B", u"Ctrl+B", u"Ctrl+B", u"Ctrl+B", u"Strg+B"},
        {u"将窗口放回原来的目标", u"Put a window back into its goal", u"ウィンドウを元の目標に戻す",
         u"창을 원래 목표로 되돌리기", u"Remettre une fenêtre dans son objectif",
         u"Ein Fenster in sein Ziel zurücklegen"}},
    Row{{u"Ctrl+Shift+B", u"Ctrl+Shift+B", u"Ctrl+Shift+B", u"Ctrl+Shift+B", u"Ctrl+Maj+B",
         u"Strg+Umschalt+B"},
        {u"拒绝卡片上提示的目标", u"Decline the goal that a card names", u"カードが示す目標を断る",
         u"카드가 알려 주는 목표 거절하기", u"Refuser l’objectif qu’indique une carte",
         u"Das Ziel ablehnen, das eine Karte nennt"}},
    Row{work,
        {u"专注于一个目标：将其他窗口最小化", u"Work on a goal: minimise the other windows",
         u"目標に取り組む：ほかのウィンドウを最小化", u"목표에 집중: 다른 창 최소화",
         u"Travailler sur un objectif : réduire les autres fenêtres",
         u"An einem Ziel arbeiten: die anderen Fenster minimieren"},
        KeyAbility::workOnGoals},
    Row{work,
        {u"专注于已固定的目标：前往其虚拟桌面", u"Work on a pinned goal: go to its desktop",
         u"固定した目標に取り組む：その仮想デスクトップへ移動",
         u"고정된 목표에 집중: 해당 가상 데스크톱으로 이동",
         u"Travailler sur un objectif épinglé : aller à son bureau",
         u"An einem angehefteten Ziel arbeiten: zu seiner Arbeitsfläche gehen"},
        KeyAbility::onlyPinGoals},
    Row{goBack,
        {u"恢复之前的窗口", u"Restore the windows as they were before",
         u"ウィンドウを元の状態に戻す", u"창을 이전 상태로 되돌리기",
         u"Rétablir les fenêtres telles qu’elles étaient",
         u"Die Fenster wiederherstellen, wie sie vorher waren"},
        KeyAbility::workOnGoals},
    Row{{u"Ctrl+Z、Ctrl+Y", u"Ctrl+Z, Ctrl+Y", u"Ctrl+Z、Ctrl+Y", u"Ctrl+Z, Ctrl+Y",
         u"Ctrl+Z, Ctrl+Y", u"Strg+Z, Strg+Y"},
        {u"撤销、重做", u"Undo, redo", u"元に戻す、やり直す", u"실행 취소, 다시 실행",
         u"Annuler, rétablir", u"Rückgängig machen, wiederholen"}},
    Row{{u"Page Up、Page Down", u"Page Up, Page Down", u"Page Up、Page Down", u"Page Up, Page Down",
         u"Page préc., Page suiv.", u"Bild auf, Bild ab"},
        {u"滚动看板", u"Scroll the board", u"ボードをスクロール", u"보드 스크롤",
         u"Faire défiler le tableau", u"In der Übersicht blättern"}},
    Row{{u"Home、End", u"Home, End", u"Home、End", u"Home, End", u"Début, Fin", u"Pos1, Ende"},
        {u"前往看板的开头或末尾", u"Go to the beginning or the end of the board",
         u"ボードの先頭または末尾へ移動", u"보드의 처음이나 끝으로 이동",
         u"Aller au début ou à la fin du tableau", u"Zum Anfang oder Ende der Übersicht gehen"}},
    Row{Texts::same(u"Tab"),
        {u"前往下一个控件", u"Go to the next control", u"次のコントロールへ移動",
         u"다음 컨트롤로 이동", u"Passer à l’élément suivant", u"Zum nächsten Element gehen"}},
    Row{{u"菜单键、Shift+F10", u"Menu, Shift+F10", u"メニューキー、Shift+F10",
         u"메뉴 키, Shift+F10", u"Menu, Maj+F10", u"Menü, Umschalt+F10"},
        {u"打开所选项的菜单", u"Open the menu of what is selected", u"選択項目のメニューを開く",
         u"선택한 항목의 메뉴 열기", u"Ouvrir le menu de la sélection",
         u"Das Menü der Auswahl öffnen"}},
    Row{Texts::same(u"⌘ ⌘"),
        {u"从任何程序呼出 Kelpa", u"Bring Kelpa forward from any program",
         u"どのプログラムからでもKelpaを呼び出す", u"어떤 프로그램에서든 Kelpa 불러오기",
         u"Afficher Kelpa depuis n’importe quel programme",
         u"Kelpa aus jedem Programm nach vorn holen"},
        KeyAbility::doubleTap},
    Row{help,
        {u"显示这些按键", u"Show these keys", u"このキー一覧を表示", u"이 키 목록 표시",
         u"Afficher ces touches", u"Diese Tasten zeigen"}},
    Row{quit,
        {u"退出 Kelpa", u"Quit Kelpa", u"Kelpaを終了", u"Kelpa 종료", u"Quitter Kelpa",
         u"Kelpa beenden"}},
};

QString textOf(std::u16string_view text)
{
    return QStringView(text).toString();
}

bool isOffered(const Row& row, const OfferedKeys& offered)
{
    switch (row.needed) {
    case KeyAbility::none:
        return true;
    case KeyAbility::doubleTap:
        return offered.doubleTap;
    case KeyAbility::workOnGoals:
        return offered.workOnGoals;
    case KeyAbility::onlyPinGoals:
        return offered.pinGoals && !offered.workOnGoals;
    }
    Q_UNREACHABLE();
}

} // namespace

QList<KeyHelp> keyHelp(AppLanguage language, const OfferedKeys& offered)
{
    QList<KeyHelp> texts;
    for (const Row& row : rows) {
        if (isOffered(row, offered))
            texts.append({textOf(row.keys[language]), textOf(row.meaning[language])});
    }
    return texts;
}

QString newGoalKeys(AppLanguage language)
{
    return textOf(newGoal[language]);
}

QString helpKeys(AppLanguage language)
{
    return textOf(help[language]);
}

QString makeTodosKeys(AppLanguage language)
{
    return textOf(commandReturn[language]);
}

QString undoKeys(AppLanguage language)
{
    return textOf(undo[language]);
}

QString redoKeys(AppLanguage language)
{
    return textOf(redo[language]);
}

QString renameKeys(AppLanguage language)
{
    return textOf(rename[language]);
}

QString deleteTodoKeys(AppLanguage language)
{
    return textOf(deleteTodo[language]);
}

QString moveLeftKeys(AppLanguage language)
{
    return textOf(moveLeft[language]);
}

QString moveRightKeys(AppLanguage language)
{
    return textOf(moveRight[language]);
}

QString moveUpKeys(AppLanguage language)
{
    return textOf(moveUp[language]);
}

QString moveDownKeys(AppLanguage language)
{
    return textOf(moveDown[language]);
}

QString workKeys(AppLanguage language)
{
    return textOf(work[language]);
}

QString goBackKeys(AppLanguage language)
{
    return textOf(goBack[language]);
}

QString quitKeys(AppLanguage language)
{
    return textOf(quit[language]);
}

QString languageOfferKeys(qsizetype index, qsizetype count)
{
    // A digit alone begins a search.
    return count == 1 ? QStringLiteral("↵") : QStringLiteral("Alt+%1").arg(index + 1);
}

} // namespace kelpa
