#include "views/gestures/BoardPromises.h"

#include "views/scene/WaterfallView.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <functional>

namespace kelpa::test {

namespace {

void requireThat(bool holds, const QString& promise, QStringList& broken)
{
    if (!holds)
        broken.append(promise);
}

/// The identifiers, in their order.
template <class Values, class Identify>
auto identifiers(const Values& values, Identify identify)
{
    QList<std::decay_t<decltype(std::invoke(identify, values.front()))>> result;
    result.reserve(values.size());
    for (const auto& value : values)
        result.append(std::invoke(identify, value));
    return result;
}

void checkSelection(const ShownBoard& board, QStringList& broken)
{
    const BoardNavigationState& state = board.store.boardNavigation();
    const bool isEntered = state.layer == BoardNavigationLayer::windows;
    requireThat(isEntered == state.selectedWindowID.has_value(),
                QStringLiteral("a window is selected within a target, and only there"), broken);
    requireThat(!isEntered || !state.target.isNone(),
                QStringLiteral("a selected window is in a selected target"), broken);
    if (isEntered && state.selectedWindowID) {
        const auto isSelected = [&state](const WindowItem& item) {
            return item.id == *state.selectedWindowID &&
                   TargetSelection::of(item.goalID) == state.target;
        };
        requireThat(std::ranges::any_of(board.store.windows(), isSelected),
                    QStringLiteral("the selected window is one of the selected target"), broken);
    }
    const QList<Goal> goals = board.store.visibleGoals();
    int row = state.target.isUnifiedTodos() ? 0 : state.target.isUnassigned() ? 1 : -1;
    for (qsizetype i = 0; i < goals.size(); ++i) {
        if (state.target == TargetSelection::goal(goals[i].id))
            row = static_cast<int>(i) + 2;
    }
    requireThat(row >= 0 || state.target.isNone(), QStringLiteral("the selected goal shows"),
                broken);
    requireThat(board.controller.selectedTarget() == row,
                QStringLiteral("the views select the store's target"), broken);
    if (const std::optional<GoalID> writing = board.store.todoEditorGoalID())
        requireThat(goalWith(*writing, board.store.goals()) != nullptr,
                    QStringLiteral("a field for a todo belongs to a goal that is there"), broken);
}

void checkColumns(const ShownBoard& board, QStringList& broken)
{
    const BoardNavigationState& state = board.store.boardNavigation();
    const QList<ColumnRow>& columns = board.controller.columns()->rows();
    QList<std::optional<GoalID>> expected{std::nullopt};
    for (const Goal& goal : board.store.visibleGoals())
        expected.append(goal.id);
    requireThat(identifiers(columns, &ColumnRow::goalID) == expected,
                QStringLiteral("the columns are the visible goals in their order"), broken);
    requireThat(board.controller.targets()->rowCount() == columns.size() + 2,
                QStringLiteral("the targets are the columns, one before and one behind them"),
                broken);
    for (const ColumnRow& column : columns) {
        const bool isSelected = state.target == TargetSelection::of(column.goalID);
        requireThat(column.isSelected == isSelected,
                    QStringLiteral("the selected column alone is marked"), broken);
        const Goal* const goal =
            column.goalID ? goalWith(*column.goalID, board.store.goals()) : nullptr;
        requireThat(!goal || (goal->title == column.title && goal->priority == column.priority &&
                              goal->accent == column.accent),
                    QStringLiteral("a column shows the values of its goal"), broken);
        const WindowListModel* const model = board.controller.columns()->windows(column.goalID);
        requireThat(model != nullptr, QStringLiteral("a column has a list of windows"), broken);
        if (model == nullptr)
            continue;
        QList<WindowItem> windows = board.store.windows(column.goalID);
        if (!column.goalID)
            windows.resize(board.store.shownUnsortedCount());
        requireThat(identifiers(model->rows(), &WindowRow::key) ==
                        identifiers(windows, &WindowItem::id),
                    QStringLiteral("the cards of a column are its windows in their order"), broken);
        for (const WindowRow& card : model->rows())
            requireThat(card.isSelected == (card.key() == state.selectedWindowID),
                        QStringLiteral("the selected card alone is marked"), broken);
    }
}

bool isAround(const QQuickItem* holder, const QQuickItem* item)
{
    for (const QQuickItem* each = item; each != nullptr; each = each->parentItem()) {
        if (each == holder)
            return true;
    }
    return false;
}

void checkFocus(const ShownBoard& board, QStringList& broken)
{
    const QQuickItem* const holder = board.window.activeFocusItem();
    requireThat(holder != nullptr || !board.window.isActive(),
                QStringLiteral("in the active window an item has the focus"), broken);
    if (holder == nullptr)
        return;
    requireThat(holder->window() == &board.window,
                QStringLiteral("the item with the focus is in the window"), broken);
    const QString name = typeName(holder);
    requireThat(holder->isVisible(), QStringLiteral("%1 shows, which has the focus").arg(name),
                broken);
    requireThat(holder->isEnabled(), QStringLiteral("%1 is enabled, which has the focus").arg(name),
                broken);
}

QQuickItem* onlyOfType(const QList<QQuickItem*>& items, const char* type)
{
    const auto found = std::ranges::find_if(
        items, [type](const QQuickItem* item) { return isOfType(*item, type); });
    return found != items.end() ? *found : nullptr;
}

/// The view of the board's targets.
WaterfallView* targetsOf(const ShownBoard& board, const QList<QQuickItem*>& items)
{
    for (QQuickItem* const item : items) {
        auto* const view = qobject_cast<WaterfallView*>(item);
        if (view != nullptr && view->modelValue().value<QObject*>() == board.controller.targets())
            return view;
    }
    return nullptr;
}

/// The menu or sheet that is open over all others; null while none is open.
QQuickItem* openPopup(const ShownBoard& board)
{
    const auto* const overlay = board.window.property("overlay").value<QQuickItem*>();
    QQuickItem* top = nullptr;
    const QList<QQuickItem*> children = overlay->childItems();
    for (QQuickItem* const item : children) {
        const QObject* const popup = item->parent();
        const bool isOpen = popup != nullptr && popup->property("opened").toBool() &&
                            popup->property("modal").toBool();
        if (isOpen && (top == nullptr || item->z() >= top->z()))
            top = item;
    }
    return top;
}

void checkFocusAtRest(const ShownBoard& board, const QList<QQuickItem*>& items, QStringList& broken)
{
    const QQuickItem* const holder = board.window.activeFocusItem();
    if (!board.window.isActive() || holder == nullptr)
        return;
    const auto* const overlay = board.window.property("overlay").value<QQuickItem*>();
    if (const QQuickItem* const popup = openPopup(board)) {
        requireThat(isAround(overlay, holder),
                    QStringLiteral("%1 is open and has the keyboard, not %2")
                        .arg(typeName(popup->parent()), typeName(holder)),
                    broken);
        return;
    }
    const QQuickItem* const goalBoard = onlyOfType(items, "GoalBoard");
    const WaterfallView* const targets = targetsOf(board, items);
    requireThat(goalBoard != nullptr && targets != nullptr, QStringLiteral("the board shows"),
                broken);
    const int row = board.controller.selectedTarget();
    if (goalBoard == nullptr || targets == nullptr || row < 0)
        return;
    const bool isYielding = holder->property("yieldsFocus").toBool() || isAround(holder, goalBoard);
    const QQuickItem* const target = targets->itemAtRow(row);
    requireThat(target != nullptr, QStringLiteral("the selected target has an item"), broken);
    if (!isYielding || target == nullptr)
        return;
    const std::optional<WindowID> window = board.store.boardNavigation().selectedWindowID;
    if (!window || board.controller.selectedWindow() < 0) {
        requireThat(
            holder == target,
            QStringLiteral("the focus is on the selected target, not on %1").arg(typeName(holder)),
            broken);
        return;
    }
    requireThat(isOfType(*holder, "WindowCard") &&
                    holder->property("windowID").toDouble() == *window && isAround(target, holder),
                QStringLiteral("the focus is on the card of the selected window"), broken);
}

QString placeOf(const QRectF& rect)
{
    return QStringLiteral("%1,%2 %3x%4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

/// A row's item has the values that the model has for the row.
void checkValues(const QQuickItem& item, const QAbstractItemModel& model, int row,
                 QStringList& broken)
{
    const QHash<int, QByteArray> names = model.roleNames();
    for (auto role = names.begin(); role != names.end(); ++role) {
        const QVariant shown = item.property(role.value());
        const QVariant value = model.index(row, 0).data(role.key());
        requireThat(!shown.isValid() || shown == value,
                    QStringLiteral("an item of %1 shows its row's %2")
                        .arg(typeName(&model), QString::fromLatin1(role.value())),
                    broken);
    }
}

void checkRows(WaterfallView& view, QStringList& broken)
{
    const auto* const model =
        qobject_cast<const QAbstractItemModel*>(view.modelValue().value<QObject*>());
    if (model == nullptr || view.width() <= 0)
        return;
    const QString name = typeName(model);
    QSet<const QQuickItem*> expected;
    QList<QRectF> places;
    for (int row = 0; row < model->rowCount(); ++row) {
        const QRectF rect = view.rowRect(row);
        const bool isInView = rect.bottom() > view.visibleFrom() && rect.top() < view.visibleTo();
        const QQuickItem* const item = view.itemAtRow(row);
        requireThat(item != nullptr || !isInView,
                    QStringLiteral("a row of %1 in view has an item: %2 of %3, %4 within %5 to %6")
                        .arg(name)
                        .arg(row)
                        .arg(model->rowCount())
                        .arg(placeOf(rect))
                        .arg(view.visibleFrom())
                        .arg(view.visibleTo()),
                    broken);
        if (item == nullptr)
            continue;
        requireThat(!expected.contains(item), QStringLiteral("an item has one row"), broken);
        expected.insert(item);
        requireThat(item->isVisible(), QStringLiteral("the item of a row shows"), broken);
        const QRectF shown(item->position(), item->size());
        requireThat(std::abs(shown.x() - rect.x()) <= 1 && std::abs(shown.y() - rect.y()) <= 1,
                    QStringLiteral("a row of %1 is in its place: %2 for %3")
                        .arg(name, placeOf(shown), placeOf(rect)),
                    broken);
        checkValues(*item, *model, row, broken);
        for (const QRectF& other : places)
            requireThat(!other.adjusted(1, 1, -1, -1).intersects(shown.adjusted(1, 1, -1, -1)),
                        QStringLiteral("no row of %1 covers another: %2 and %3")
                            .arg(name, placeOf(other), placeOf(shown)),
                        broken);
        places.append(shown);
    }
    const QList<QQuickItem*> children = view.childItems();
    const auto rowsShown = std::ranges::count_if(children, [](const QQuickItem* child) {
        return child->isVisible() && child->property("todoID").isValid();
    });
    requireThat(rowsShown <= expected.size(), QStringLiteral("no item shows a row that is gone"),
                broken);
}

void checkSizes(const QList<QQuickItem*>& items, QStringList& broken)
{
    for (const QQuickItem* const item : items) {
        // The place that the toolkit's lists keep for a highlight swings, and nothing is in it.
        const bool isEmpty =
            !item->flags().testFlag(QQuickItem::ItemHasContents) && item->childItems().isEmpty();
        if (isEmpty)
            continue;
        QString path = typeName(item);
        for (const QQuickItem* each = item->parentItem(); each; each = each->parentItem())
            path += u'<' + typeName(each);
        const bool isFinite = std::isfinite(item->x()) && std::isfinite(item->y()) &&
                              std::isfinite(item->width()) && std::isfinite(item->height());
        requireThat(isFinite && item->width() >= 0 && item->height() >= 0,
                    QStringLiteral("%1 has a size: %2")
                        .arg(path, placeOf(QRectF(item->position(), item->size()))),
                    broken);
    }
}

/// Fields for new todos: one for a list, and none that is blank and was left.
void checkDrafts(const ShownBoard& board, const QList<QQuickItem*>& items, QStringList& broken)
{
    const QQuickItem* const holder = board.window.activeFocusItem();
    const bool isElsewhere =
        !board.window.isActive() || board.mayBeWriting || openPopup(board) != nullptr;
    QSet<QString> lists;
    for (const QQuickItem* const item : items) {
        if (!isOfType(*item, "NewTodoField"))
            continue;
        const QString list = item->property("listID").toString();
        requireThat(!lists.contains(list), QStringLiteral("a list has one field for a new todo"),
                    broken);
        lists.insert(list);
        const bool isBlank = item->property("text").toString().trimmed().isEmpty();
        requireThat(!isBlank || isElsewhere || isAround(item, holder),
                    QStringLiteral("a blank field for a new todo that was left has closed"),
                    broken);
    }
}

} // namespace

bool isOfType(const QObject& item, const char* type)
{
    const QByteArray name = item.metaObject()->className();
    return name.startsWith(QByteArray(type) + "_QMLTYPE");
}

QString typeName(const QObject* item)
{
    return item == nullptr ? QStringLiteral("nothing")
                           : QString::fromLatin1(item->metaObject()->className())
                                 .section(QStringLiteral("_QMLTYPE"), 0, 0);
}

QList<QQuickItem*> shownItems(QQuickItem* item)
{
    if (!item->isVisible())
        return {};
    QList<QQuickItem*> found{item};
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* const child : children)
        found += shownItems(child);
    return found;
}

QStringList brokenPromises(const ShownBoard& board)
{
    QStringList broken;
    checkSelection(board, broken);
    checkColumns(board, broken);
    broken += brokenTodoLists(board, shownItems(board.window.contentItem()));
    checkFocus(board, broken);
    return broken;
}

QStringList brokenPromisesAtRest(const ShownBoard& board)
{
    QStringList broken = brokenPromises(board);
    const QList<QQuickItem*> items = shownItems(board.window.contentItem());
    for (QQuickItem* const item : items) {
        if (auto* const view = qobject_cast<WaterfallView*>(item))
            checkRows(*view, broken);
    }
    checkFocusAtRest(board, items, broken);
    checkSizes(items, broken);
    checkDrafts(board, items, broken);
    return broken;
}

} // namespace kelpa::test
