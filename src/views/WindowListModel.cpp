#include "views/WindowListModel.h"

namespace kelpa {

namespace {

enum Role {
    windowIDRole = Qt::UserRole + 1,
    ownerNameRole,
    titleRole,
    isMinimizedRole,
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
    case windowIDRole:
        return row.id;
    case ownerNameRole:
        return row.ownerName;
    case titleRole:
        return row.title;
    case isMinimizedRole:
        return row.isMinimized;
    case isOnScreenRole:
        return row.isOnScreen;
    case isSelectedRole:
        return row.isSelected;
    default:
        return {};
    }
}

QHash<int, QByteArray> WindowListModel::roleNames() const
{
    return {{windowIDRole, "windowID"},     {ownerNameRole, "ownerName"},
            {titleRole, "title"},           {isMinimizedRole, "isMinimized"},
            {isOnScreenRole, "isOnScreen"}, {isSelectedRole, "isSelected"}};
}

void WindowListModel::setWindows(const QList<WindowItem>& windows, std::optional<WindowID> selected)
{
    QList<WindowRow> rows;
    rows.reserve(windows.size());
    for (const WindowItem& window : windows) {
        rows.append({window.id, window.ownerName, window.title, window.isMinimized,
                     window.isOnScreen, window.id == selected});
    }
    setRows(rows);
}

} // namespace kelpa
