#include "views/board/BoardController.h"

#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

#include <algorithm>
#include <optional>

namespace kelpa {

BoardController::BoardController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store), m_columns(store), m_goals(store), m_todos(store),
      m_windows(store)
{
    connect(&store, &WindowStore::languageChanged, this, &BoardController::languageChanged);
    connect(&m_languageOffer, &LanguageOffer::taken, &m_firstSteps, &FirstSteps::goalRequested);
    connect(&m_goals, &GoalController::exportRequested, &m_exporting, &ExportController::open);
    connect(&store, &WindowStore::isAutoSortingGoalsChanged, this,
            &BoardController::isAutoSortingGoalsChanged);
    connect(&store, &WindowStore::isAccessibilityTrustedChanged, this,
            &BoardController::isAccessibilityTrustedChanged);
    connect(&store, &WindowStore::isScreenCaptureTrustedChanged, this,
            &BoardController::isScreenCaptureTrustedChanged);
    connect(&store, &WindowStore::obstaclesChanged, this, &BoardController::obstaclesChanged);
    connect(&store, &WindowStore::toastMessageChanged, this, &BoardController::toastMessageChanged);
    connect(&store, &WindowStore::toastOffersUndoChanged, this,
            &BoardController::toastOffersUndoChanged);
    for (const auto signal :
         {&WindowStore::toastOffersUndoChanged, &WindowStore::toastOffersManualOrderChanged,
          &WindowStore::languageChanged})
        connect(&store, signal, this, &BoardController::toastActionTextChanged);
    connect(&store, &WindowStore::isSavingSlowlyChanged, this,
            &BoardController::isSavingSlowlyChanged);
    connect(&store, &WindowStore::canUndoChanged, this, &BoardController::canUndoChanged);
    connect(&store, &WindowStore::canRedoChanged, this, &BoardController::canRedoChanged);
    connect(&store, &WindowStore::isHidingGoalsWithoutOpenTodosChanged, this,
            &BoardController::isHidingGoalsWithoutOpenTodosChanged);
    connect(&store, &WindowStore::boardNavigationChanged, this, [this] {
        m_selectedRow = selectedTarget();
        Q_EMIT selectedRowsChanged();
        Q_EMIT selectionChanged();
    });
    connect(&store, &WindowStore::restorationIDChanged, this, &BoardController::changeRestored);
    // Connected after the models, which follow the store themselves.
    for (const auto signal :
         {&WindowStore::goalsChanged, &WindowStore::isHidingGoalsWithoutOpenTodosChanged,
          &WindowStore::windowsChanged, &WindowStore::searchTextChanged,
          &WindowStore::previewsChanged})
        connect(&store, signal, this, &BoardController::noteRows);
    noteRows();
    connect(m_goals.breadcrumbs(), &BreadcrumbModel::countChanged, this,
            &BoardController::noteColumnCount);
    connect(&m_search, &SearchController::selectionRequested, this,
            &BoardController::selectionRequested);
    connect(&m_goals, &GoalController::windowsRequested, m_windows.picker(), &WindowPicker::open);
    connect(&m_goals, &GoalController::columnRequested, this, [this] {
        // The request is for the goal, not for the todo.
        m_todos.forgetRestoredTodo();
        Q_EMIT selectionRequested();
    });
}

void BoardController::noteRows()
{
    const int row = selectedTarget();
    const int count = m_targets.rowCount();
    const bool hasMoved = row >= 0 && m_selectedRow >= 0 && row != m_selectedRow;
    // Where targets come or go, the others close up.
    const bool isReordered = hasMoved && count == m_rowCount;
    m_selectedRow = row;
    m_rowCount = count;
    Q_EMIT selectedRowsChanged();
    if (isReordered)
        Q_EMIT selectedTargetMoved();
}

BreadcrumbRail BoardController::rail()
{
    return m_goals.breadcrumbs()->count() > 0 ? BreadcrumbRail::shown : BreadcrumbRail::hidden;
}

void BoardController::setBoardWidth(double width)
{
    if (m_boardWidth == width)
        return;
    m_boardWidth = width;
    noteColumnCount();
}

double BoardController::targetAreaWidth()
{
    return kelpa::targetAreaWidth(m_boardWidth, rail());
}

void BoardController::noteColumnCount()
{
    if (const std::optional<int> count = targetGridColumnCount(m_boardWidth, rail()))
        m_store.setTargetGridColumnCount(*count);
    Q_EMIT targetAreaChanged();
}

int BoardController::languageIndex() const
{
    const auto* const found =
        std::find(allAppLanguages.begin(), allAppLanguages.end(), m_store.language());
    return static_cast<int>(found - allAppLanguages.begin());
}

QStringList BoardController::languageNames() const
{
    QStringList names;
    for (const AppLanguage language : allAppLanguages)
        names.append(nativeName(language));
    return names;
}

int BoardController::selectedTarget() const
{
    return m_targets.rowOf(m_store.boardNavigation().target);
}

int BoardController::selectedWindow() const
{
    return static_cast<int>(m_store.selectedWindowIndex());
}

bool BoardController::isAutoSortingGoals() const
{
    return m_store.isAutoSortingGoals();
}

bool BoardController::isAccessibilityTrusted() const
{
    return m_store.isAccessibilityTrusted();
}

bool BoardController::isScreenCaptureTrusted() const
{
    return m_store.isScreenCaptureTrusted();
}

void BoardController::setDoubleTapOffered(bool isOffered)
{
    if (m_isDoubleTapOffered == isOffered)
        return;
    m_isDoubleTapOffered = isOffered;
    m_firstSteps.setReturnOffered(isOffered);
    Q_EMIT isDoubleTapOfferedChanged();
}

QString BoardController::toastMessage() const
{
    return m_store.toastMessage().value_or(QString());
}

bool BoardController::toastOffersUndo() const
{
    return m_store.toastOffersUndo();
}

QString BoardController::toastActionText() const
{
    if (m_store.toastOffersUndo())
        return KelpaCopy::text(CopyKey::Undo, m_store.language());
    return m_store.toastOffersManualOrder()
               ? KelpaCopy::text(CopyKey::StopSorting, m_store.language())
               : QString();
}

void BoardController::takeToastOffer()
{
    if (m_store.toastOffersManualOrder())
        m_store.setAutoSortingGoals(false);
    else
        m_store.undo();
}

void BoardController::explainAutomaticOrder()
{
    m_store.explainAutomaticOrder();
}

bool BoardController::isSavingSlowly() const
{
    return m_store.isSavingSlowly();
}

void BoardController::setToastHeld(bool isHeld)
{
    m_store.setToastHeld(isHeld);
}

bool BoardController::isHidingGoalsWithoutOpenTodos() const
{
    return m_store.isHidingGoalsWithoutOpenTodos();
}

void BoardController::refresh()
{
    m_store.refresh();
}

void BoardController::activateSelection()
{
    m_store.activateSelection();
}

void BoardController::clearSelection()
{
    m_store.clearTargetSelection();
}

bool BoardController::canUndo() const
{
    return m_store.canUndo();
}

bool BoardController::canRedo() const
{
    return m_store.canRedo();
}

void BoardController::undo()
{
    m_store.undo();
}

void BoardController::redo()
{
    m_store.redo();
}

void BoardController::setLanguageIndex(int index)
{
    if (index >= 0 && index < static_cast<int>(allAppLanguages.size()))
        m_store.chooseLanguage(allAppLanguages.at(static_cast<std::size_t>(index)));
}

void BoardController::toggleAutoSortingGoals()
{
    m_store.setAutoSortingGoals(!m_store.isAutoSortingGoals());
}

void BoardController::toggleHidingGoalsWithoutOpenTodos()
{
    m_store.setHidingGoalsWithoutOpenTodos(!m_store.isHidingGoalsWithoutOpenTodos());
}

bool BoardController::needsAccessibility() const
{
    return m_store.obstacles().accessibility == Obstacle::permission;
}

bool BoardController::needsScreenCapture() const
{
    return m_store.obstacles().screenCapture == Obstacle::permission;
}

bool BoardController::needsWindowManager() const
{
    return m_store.obstacles().accessibility == Obstacle::windowManager ||
           m_store.obstacles().screenCapture == Obstacle::windowManager;
}

bool BoardController::needsComposite() const
{
    return m_store.obstacles().screenCapture == Obstacle::composite;
}

bool BoardController::hasPermissionSettings() const
{
    return m_store.obstacles().hasSettings;
}

void BoardController::requestPermissions()
{
    m_store.requestPermissions();
}

void BoardController::noteScrollActivity()
{
    m_store.noteScrollActivity();
}

} // namespace kelpa
