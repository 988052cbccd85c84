// The wording of the interface, text by text.
#include "text/KelpaCopy.h"

#include "text/TextPrinting.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace kelpa {
namespace {

struct SixTexts
{
    CopyKey key;
    /// In the order of `AppLanguage`.
    std::array<std::u16string_view, 6> texts;
};

constexpr std::array sixTexts = std::to_array<SixTexts>({
    {CopyKey::UnsortedHint,
     {u"拖到一个目标开始整理", u"Drag to a goal to start organizing",
      u"目標へドラッグして整理を始める", u"목표로 드래그해 정리를 시작하세요",
      u"Glissez vers un objectif pour commencer", u"Zu einem Ziel ziehen, um zu beginnen"}},
    {CopyKey::AddFirstGoalHint,
     {u"先添加一个目标，再把窗口拖进去", u"Add a goal, then drag windows to it",
      u"まず目標を追加し、そこへウィンドウをドラッグします",
      u"먼저 목표를 추가한 다음 창을 드래그하세요",
      u"Ajoutez un objectif, puis glissez-y des fenêtres",
      u"Füge ein Ziel hinzu und ziehe Fenster darauf"}},
    {CopyKey::GoalsHiddenHint,
     {u"没有未完成待办的目标已隐藏。点按“显示全部”即可查看。",
      u"Goals without unfinished todos are hidden. Choose “Show All” to see them.",
      u"未完了のタスクがない目標は隠れています。「すべて表示」で表示できます。",
      u"미완료 할 일이 없는 목표는 숨겨져 있습니다. ‘모두 보기’를 누르면 표시됩니다.",
      u"Les objectifs sans tâches inachevées sont masqués. « Tout afficher » les affiche.",
      u"Ziele ohne offene Aufgaben sind ausgeblendet. „Alle anzeigen“ zeigt sie wieder."}},
    {CopyKey::OpenSystemSettings,
     {u"打开系统设置", u"Open System Settings", u"システム設定を開く", u"시스템 설정 열기",
      u"Ouvrir les réglages système", u"Systemeinstellungen öffnen"}},
    {CopyKey::AccessibilityNeeded,
     {u"需要辅助功能权限来聚焦和打开窗口",
      u"Accessibility permission is needed to focus and open windows",
      u"ウィンドウのフォーカスと起動にはアクセシビリティ許可が必要です",
      u"창에 포커스를 맞추고 열려면 손쉬운 사용 권한이 필요합니다",
      u"L’accès à l’accessibilité est requis pour ouvrir et activer les fenêtres",
      u"Für das Fokussieren und Öffnen von Fenstern wird Bedienungshilfen-Zugriff benötigt"}},
    {CopyKey::AccessibilityText,
     {u"允许后，点击卡片、方向键和空格才能切换或打开窗口。",
      u"After allowing it, cards, arrow keys, and Space can switch or open windows.",
      u"許可すると、カード、矢印キー、スペースでウィンドウを切り替えたり開いたりできます。",
      u"허용하면 카드, 화살표 키, 스페이스로 창을 전환하거나 열 수 있습니다.",
      u"Après autorisation, les cartes, les flèches et la barre d’espace contrôlent les fenêtres.",
      u"Nach der Freigabe steuern Karten, Pfeiltasten und Leertaste die Fenster."}},
    {CopyKey::ScreenRecordingNeeded,
     {u"需要屏幕录制权限来显示实时窗口画面",
      u"Screen Recording permission is needed for live previews",
      u"ライブプレビューには画面収録の許可が必要です",
      u"실시간 미리보기를 위해 화면 기록 권한이 필요합니다",
      u"L’accès à l’enregistrement d’écran est requis pour les aperçus",
      u"Für Live-Vorschauen wird Bildschirmaufnahme benötigt"}},
    {CopyKey::ScreenRecordingText,
     {u"允许后，窗口卡片会显示低分辨率实时预览。",
      u"After allowing it, window cards will show low-resolution live previews.",
      u"許可すると、ウィンドウカードに低解像度のライブプレビューが表示されます。",
      u"허용하면 창 카드에 저해상도 실시간 미리보기가 표시됩니다.",
      u"Après autorisation, les cartes afficheront un aperçu en direct basse résolution.",
      u"Nach der Freigabe zeigen Fensterkarten Live-Vorschauen mit niedriger Auflösung."}},
    {CopyKey::CreateGoalPlaceholder,
     {u"例如：准备周五的提案", u"e.g. Prepare Friday's proposal", u"例：金曜の提案を準備",
      u"예: 금요일 제안서 준비", u"ex. Préparer la proposition de vendredi",
      u"z. B. Vorschlag für Freitag vorbereiten"}},
    {CopyKey::CreateGoalText,
     {u"用一句话描述你现在要完成的事。", u"Describe what you want to accomplish in one sentence.",
      u"今やることを一文で説明してください。", u"지금 할 일을 한 문장으로 설명하세요.",
      u"Décrivez en une phrase ce que vous voulez accomplir.",
      u"Beschreibe in einem Satz, was du erledigen möchtest."}},
    {CopyKey::EnterGoalName,
     {u"输入目标名称", u"Enter a goal name", u"目標名を入力", u"목표 이름 입력",
      u"Saisir le nom de l’objectif", u"Zielnamen eingeben"}},
    {CopyKey::HideEmptyHelp,
     {u"隐藏没有未完成待办的目标", u"Hide goals without unfinished todos",
      u"未完了のタスクがない目標を隠す", u"미완료 할 일이 없는 목표 숨기기",
      u"Masquer les objectifs sans tâches inachevées", u"Ziele ohne offene Aufgaben ausblenden"}},
    {CopyKey::AutoSortGoals,
     {u"自动排序目标（优先级、待办数量）", u"Auto-sort goals by priority and todo count",
      u"優先度とタスク数で目標を自動並べ替え", u"우선순위와 할 일 수로 목표 자동 정렬",
      u"Trier automatiquement par priorité et tâches",
      u"Ziele nach Priorität und Aufgaben sortieren"}},
    {CopyKey::SearchWindowsOrApps,
     {u"搜索窗口或应用", u"Search windows or apps", u"ウィンドウやアプリを検索", u"창 또는 앱 검색",
      u"Rechercher des fenêtres ou apps", u"Fenster oder Apps suchen"}},
    {CopyKey::KeyboardHint,
     {u"方向键选择并展开 · 空格进入 / 打开 · Esc 返回",
      u"Arrows Select & Expand · Space Enter / Open · Esc Back",
      u"矢印キー 選択・展開 · Space 入る / 開く · Esc 戻る",
      u"방향키 선택·펼치기 · Space 진입 / 열기 · Esc 뒤로",
      u"Flèches Sélectionner et déployer · Espace Entrer / Ouvrir · Échap Retour",
      u"Pfeile Auswählen und Aufklappen · Leertaste Öffnen · Esc Zurück"}},
    {CopyKey::DoubleTapHint,
     {u"连按两下 ⌘，立即呼出 Kelpa", u"Press ⌘ twice to bring Kelpa forward instantly",
      u"⌘を2回押すと、Kelpaをすぐに呼び出せます", u"⌘를 두 번 눌러 Kelpa를 바로 불러오세요",
      u"Appuyez deux fois sur ⌘ pour afficher Kelpa immédiatement",
      u"Drücke zweimal ⌘, um Kelpa sofort aufzurufen"}},
    {CopyKey::Subtitle,
     {u"把打开的窗口，放回正在做的事", u"Put open windows back where the work is",
      u"開いているウィンドウを、今やることへ戻す", u"열린 창을 지금 하고 있는 일로 돌려놓으세요",
      u"Ramenez les fenêtres ouvertes là où le travail se fait",
      u"Offene Fenster dorthin legen, wo die Arbeit stattfindet"}},
    {CopyKey::DragWindowHere,
     {u"把窗口拖到这里", u"Drag a window here", u"ウィンドウをここへドラッグ",
      u"창을 여기로 드래그하세요", u"Glissez une fenêtre ici", u"Fenster hierher ziehen"}},
    {CopyKey::CopyAndDragTodo,
     {u"复制并拖动待办", u"Copy and drag todo", u"タスクをコピーしてドラッグ",
      u"할 일 복사 및 드래그", u"Copier et déplacer la tâche", u"Aufgabe kopieren und ziehen"}},
    {CopyKey::CopyAndDragTodoHelp,
     {u"单击复制待办；拖动调整顺序", u"Click to copy; drag to reorder",
      u"クリックでコピー、ドラッグで並べ替え", u"클릭해 복사하고 드래그해 순서 변경",
      u"Cliquez pour copier ; glissez pour réorganiser",
      u"Klicken zum Kopieren; ziehen zum Sortieren"}},
    {CopyKey::OpenChrome,
     {u"新建 Chrome 并加入此目标", u"Open Chrome in this goal", u"Chrome を開いてこの目標に追加",
      u"Chrome을 열어 이 목표에 추가", u"Ouvrir Chrome dans cet objectif",
      u"Chrome in diesem Ziel öffnen"}},
    {CopyKey::OpenTerminal,
     {u"新建 Terminal 并加入此目标", u"Open a Terminal in this goal",
      u"Terminal を開いてこの目標に追加", u"Terminal을 열어 이 목표에 추가",
      u"Ouvrir un Terminal dans cet objectif", u"Terminal in diesem Ziel öffnen"}},
    {CopyKey::GoToTodoInGoal,
     {u"跳转到目标中的待办", u"Go to todo in goal", u"目標のタスクへ移動", u"목표의 할 일로 이동",
      u"Aller à la tâche dans l’objectif", u"Zur Aufgabe im Ziel springen"}},
    {CopyKey::AllTodosSubtitle,
     {u"所有目标的实时索引", u"A live index across all goals", u"すべての目標のライブインデックス",
      u"모든 목표의 실시간 색인", u"Index en direct de tous les objectifs",
      u"Live-Index für alle Ziele"}},
});

struct EnglishText
{
    CopyKey key;
    std::u16string_view text;
};

constexpr std::array englishTexts = std::to_array<EnglishText>({
    {CopyKey::ProductName, u"Kelpa"},
    {CopyKey::ClearSearch, u"Clear search"},
    {CopyKey::RefreshWindows, u"Refresh windows"},
    {CopyKey::HideEmpty, u"Hide Empty"},
    {CopyKey::ShowAll, u"Show All"},
    {CopyKey::ShowAllHelp, u"Show all goals, including those without unfinished todos"},
    {CopyKey::Language, u"Language"},
    {CopyKey::NewGoal, u"New goal"},
    {CopyKey::Board, u"Board"},
    {CopyKey::Goals, u"Goals"},
    {CopyKey::AddGoal, u"Add goal"},
    {CopyKey::Unsorted, u"Unsorted"},
    {CopyKey::CreateGoalTitle, u"Create a goal"},
    {CopyKey::Cancel, u"Cancel"},
    {CopyKey::Create, u"Create"},
    {CopyKey::Undo, u"Undo"},
    {CopyKey::MoreGoalActions, u"More goal actions"},
    {CopyKey::AddWindowsToGoal, u"Add windows to this goal"},
    {CopyKey::ShowAllWindows, u"Show all windows in this goal"},
    {CopyKey::RenameGoal, u"Rename goal"},
    {CopyKey::DeleteGoal, u"Delete goal"},
    {CopyKey::GoalDeleted, u"Goal deleted"},
    {CopyKey::GoalName, u"Goal name"},
    {CopyKey::Save, u"Save"},
    {CopyKey::Priority, u"Priority"},
    {CopyKey::AllTodos, u"All todos"},
    {CopyKey::NoTodosYet, u"No todos yet"},
    {CopyKey::AddTodo, u"Add todo"},
    {CopyKey::EnterTodo, u"Enter a todo"},
    {CopyKey::EditTodo, u"Edit todo"},
    {CopyKey::MoveToGoal, u"Move to goal"},
    {CopyKey::DeleteTodo, u"Delete todo"},
    {CopyKey::MoreTodoActions, u"More todo actions"},
    {CopyKey::TodoDeleted, u"Todo deleted"},
    {CopyKey::TodoCopied, u"Todo copied to clipboard"},
    {CopyKey::Window, u"Window"},
    {CopyKey::WindowPreview, u"Window preview"},
    {CopyKey::WindowCardHelp, u"Click to switch to the window; drag to another goal"},
    {CopyKey::MoveGoalEarlier, u"Move goal earlier"},
    {CopyKey::MoveGoalLater, u"Move goal later"},
    {CopyKey::MoveTodoUp, u"Move todo up"},
    {CopyKey::MoveTodoDown, u"Move todo down"},
    {CopyKey::CloseAppProcess, u"Close this app process"},
    {CopyKey::PreviewNeedsPermission, u"Allow Screen Recording to show a preview"},
    {CopyKey::PreviewNotYet, u"This window cannot be captured yet"},
    {CopyKey::PreviewMinimized, u"Window is minimized; preview will return when restored"},
    {CopyKey::SelectWindowsText,
     u"Select multiple windows. Confirming moves them from their current goals."},
    {CopyKey::NoMatchingWindows, u"No matching windows"},
    {CopyKey::AlreadyInGoal, u"Already in this goal"},
    {CopyKey::WindowListChanged, u"The window list changed. Please select again."},
    {CopyKey::PriorityP0, u"P0"},
    {CopyKey::PriorityP1, u"P1"},
    {CopyKey::PriorityP2, u"P2"},
    {CopyKey::PriorityP3, u"P3"},
});

QString string(std::u16string_view text)
{
    return QStringView(text).toString();
}

TEST(QuotedTexts, The_longer_texts_read_so_in_all_six_languages)
{
    for (const SixTexts& row : sixTexts) {
        for (std::size_t i = 0; i < row.texts.size(); ++i)
            EXPECT_EQ(KelpaCopy::text(row.key, allAppLanguages[i]), string(row.texts[i]));
    }
}

TEST(QuotedTexts, The_other_texts_read_so_in_English)
{
    for (const EnglishText& row : englishTexts)
        EXPECT_EQ(KelpaCopy::text(row.key, AppLanguage::english), string(row.text));
}

TEST(QuotedTexts, Every_key_of_the_interface_is_quoted_here)
{
    EXPECT_EQ(sixTexts.size() + englishTexts.size(), copyKeyCount);
}

} // namespace
} // namespace kelpa
