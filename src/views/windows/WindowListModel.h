// The window cards of one column.
#pragma once

#include "model/WindowItem.h"
#include "views/models/RowListModel.h"
#include "views/windows/WindowPresentation.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>
#include <optional>

namespace kelpa {

/// The properties of a window that a card shows.
struct WindowRow
{
    WindowPresentation presentation;
    bool isMinimized = false;
    bool isOnScreen = false;
    bool isSelected = false;

    WindowID key() const { return presentation.id; }

    friend bool operator==(const WindowRow&, const WindowRow&) = default;
};

class WindowListModel : public RowListModel<WindowRow>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A column of the board has it.")

public:
    using RowListModel<WindowRow>::RowListModel;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    using PresentationOf = std::function<WindowPresentation(const WindowItem& window)>;

    /// In the order of `windows`. `selected` is the window that the keyboard has selected, if any.
    void setWindows(const QList<WindowItem>& windows, std::optional<WindowID> selected,
                    const PresentationOf& presentationOf);
};

} // namespace kelpa
