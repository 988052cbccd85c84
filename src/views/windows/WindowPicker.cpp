#include "views/windows/WindowPicker.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "views/models/ColumnID.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

enum Role {
    locationRole = firstRoleBesidePresentation,
    isInGoalRole,
    isChosenRole,
};

} // namespace

QVariant PickerRowModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PickerRow& row = rows().at(index.row());
    switch (role) {
    case locationRole:
        return row.location;
    case isInGoalRole:
        return row.isInGoal;
    case isChosenRole:
        return row.isChosen;
    default:
        return presentationValue(row.presentation, role);
    }
}

QHash<int, QByteArray> PickerRowModel::roleNames() const
{
    QHash<int, QByteArray> names = presentationRoleNames();
    names.insert(locationRole, QByteArrayLiteral("location"));
    names.insert(isInGoalRole, QByteArrayLiteral("isInGoal"));
    names.insert(isChosenRole, QByteArrayLiteral("isChosen"));
    return names;
}

WindowPicker::WindowPicker(WindowStore& store, QObject* parent) : QObject(parent), m_store(store)
{
    for (const auto signal : {&WindowStore::windowsChanged, &WindowStore::goalsChanged,
                              &WindowStore::previewsChanged, &WindowStore::languageChanged})
        connect(&store, signal, this, [this] { update(Order::unchanged); });
    connect(&m_rows, &QAbstractItemModel::rowsInserted, this, &WindowPicker::rowCountChanged);
    connect(&m_rows, &QAbstractItemModel::rowsRemoved, this, &WindowPicker::rowCountChanged);
}

void WindowPicker::setSearchText(const QString& text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    update(Order::sorted);
    Q_EMIT searchTextChanged();
}

void WindowPicker::open(const QString& columnID)
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    if (!column || !column->goalID)
        return;
    if (goalWith(*column->goalID, m_store.goals()) != nullptr)
        setRequest(GoalWindowPickerRequest{*column->goalID});
}

void WindowPicker::close()
{
    setRequest(std::nullopt);
}

void WindowPicker::setRequest(std::optional<GoalWindowPickerRequest> request)
{
    if (m_request == request)
        return;
    m_request = request;
    // A sheet that fades away still shows what it showed; the next one starts anew.
    if (m_request) {
        setSelection({});
        setSearchText({});
        update(Order::sorted);
    }
    Q_EMIT requestChanged();
}

void WindowPicker::toggle(quint32 windowID)
{
    if (!m_request)
        return;
    setSelection(toggledSelection(m_selection, windowID,
                                  selectableWindowIDs(m_store.windows(), m_request->goalID)));
    update(Order::unchanged);
}

void WindowPicker::confirm()
{
    if (!m_request || m_selection.chosen.isEmpty())
        return;
    const GoalID target = m_request->goalID;
    const QSet<WindowID> confirmed =
        confirmedWindows(m_selection, selectableWindowIDs(m_store.windows(), target));
    m_isConfirming = true;
    const bool isDone = m_store.assign(confirmed, target);
    m_isConfirming = false;
    if (isDone) {
        close();
        return;
    }
    setSelection(refusedSelection(m_selection, selectableWindowIDs(m_store.windows(), target)));
    update(Order::sorted);
}

void WindowPicker::setSelection(const WindowSelection& selection)
{
    if (m_selection == selection)
        return;
    m_selection = selection;
    Q_EMIT selectionChanged();
}

void WindowPicker::updateChosenCount()
{
    const QSet<WindowID> selectable = selectableWindowIDs(m_store.windows(), m_request->goalID);
    const int count = static_cast<int>(confirmedWindows(m_selection, selectable).size());
    if (m_chosenCount == count)
        return;
    m_chosenCount = count;
    Q_EMIT selectionChanged();
}

void WindowPicker::update(Order order)
{
    if (!m_request || m_isConfirming)
        return;
    const QList<Goal>& goals = m_store.goals();
    const Goal* const target = goalWith(m_request->goalID, goals);
    if (target == nullptr) {
        close();
        return;
    }
    const AppLanguage language = m_store.language();
    const LocationTitles titles =
        locationTitles(goals, KelpaCopy::text(CopyKey::Unsorted, language));
    QList<PickerRow> rows;
    QList<WindowItem> windows =
        windowsToSelect(m_store.windows(), m_request->goalID, titles, m_searchText, QLocale());
    if (order == Order::unchanged)
        windows = inShownOrder(windows, m_windows);
    m_windows = windows;
    rows.reserve(windows.size());
    for (const WindowItem& window : std::as_const(windows)) {
        const bool isInGoal = window.goalID == m_request->goalID;
        const QString location =
            isInGoal ? KelpaCopy::text(CopyKey::AlreadyInGoal, language)
                     : KelpaCopy::currentWindowLocation(singleLine(titles.of(window)), language);
        rows.append({windowPresentation(m_store, window), location, isInGoal,
                     m_selection.chosen.contains(window.id)});
    }
    m_rows.setRows(rows);
    updateChosenCount();
    const QString goalTitle = singleLine(target->title);
    if (m_goalTitle != goalTitle) {
        m_goalTitle = goalTitle;
        Q_EMIT goalTitleChanged();
    }
}

} // namespace kelpa
