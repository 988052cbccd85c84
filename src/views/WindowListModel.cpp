#include "views/WindowListModel.h"

#include "model/Text.h"
#include "store/WindowStore.h"

namespace kelpa {

namespace {

enum Role {
    windowIDRole = Qt::UserRole + 1,
    ownerNameRole,
    titleRole,
    isMinimizedRole,
    isOnScreenRole,
    isSelectedRole,
    previewRevisionRole,
    previewMessageRole,
};

} // namespace

CardPreview cardPreview(const WindowStore& store, const WindowItem& window)
{
    const auto found = store.previews().constFind(window.id);
    if (found != store.previews().constEnd())
        return {found->image.cacheKey(), {}};
    return {0, store.previewMessage(window).value_or(QString())};
}

QVariant WindowListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WindowRow& row = rows().at(index.row());
    switch (role) {
    case windowIDRole:
        return row.id;
    case ownerNameRole:
        return singleLine(row.ownerName);
    case titleRole:
        return singleLine(row.title);
    case isMinimizedRole:
        return row.isMinimized;
    case isOnScreenRole:
        return row.isOnScreen;
    case isSelectedRole:
        return row.isSelected;
    case previewRevisionRole:
        return row.preview.revision;
    case previewMessageRole:
        return row.preview.message;
    default:
        return {};
    }
}

QHash<int, QByteArray> WindowListModel::roleNames() const
{
    return {{windowIDRole, "windowID"},
            {ownerNameRole, "ownerName"},
            {titleRole, "title"},
            {isMinimizedRole, "isMinimized"},
            {isOnScreenRole, "isOnScreen"},
            {isSelectedRole, "isSelected"},
            {previewRevisionRole, "previewRevision"},
            {previewMessageRole, "previewMessage"}};
}

void WindowListModel::setWindows(const QList<WindowItem>& windows, std::optional<WindowID> selected,
                                 const PreviewOf& previewOf)
{
    QList<WindowRow> rows;
    rows.reserve(windows.size());
    for (const WindowItem& window : windows) {
        rows.append({window.id, window.ownerName, window.title, window.isMinimized,
                     window.isOnScreen, window.id == selected, previewOf(window)});
    }
    setRows(rows);
}

} // namespace kelpa
