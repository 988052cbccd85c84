#include "views/windows/WindowListModel.h"

namespace kelpa {

namespace {

enum Role {
    isMinimizedRole = firstRoleBesidePresentation,
    isOnScreenRole,
    isSelectedRole,
};

} // namespace

QVariant WindowListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WindowRow& row = rows().at(index.row());
    switch (role) {
    case isMinimizedRole:
        return row.isMinimized;
    case isOnScreenRole:
        return row.isOnScreen;
    case isSelectedRole:
        return row.isSelected;
    default:
        return presentationValue(row.presentation, role);
    }
}

QHash<int, QByteArray> WindowListModel::roleNames() const
{
    QHash<int, QByteArray> names = presentationRoleNames();
    names.insert(isMinimizedRole, QByteArrayLiteral("isMinimized"));
    names.insert(isOnScreenRole, QByteArrayLiteral("isOnScreen"));
    names.insert(isSelectedRole, QByteArrayLiteral("isSelected"));
    return names;
}

void WindowListModel::setWindows(const QList<WindowItem>& windows, std::optional<WindowID> selected,
                                 const PresentationOf& presentationOf)
{
    QList<WindowRow> rows;
    rows.reserve(windows.size());
    for (const WindowItem& window : windows)
        rows.append(
            {presentationOf(window), window.isMinimized, window.isOnScreen, window.id == selected});
    setRows(rows);
}

} // namespace kelpa
