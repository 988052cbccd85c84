// The window cards of one column.
#pragma once

#include "model/WindowItem.h"
#include "views/RowListModel.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>
#include <optional>

namespace kelpa {

class WindowStore;

/// The preview of a window's card.
struct CardPreview
{
    /// Differs for each picture of the window; 0 while there is none.
    qint64 revision = 0;
    /// Shown instead of a picture; empty while there is one.
    QString message;

    friend bool operator==(const CardPreview&, const CardPreview&) = default;
};

/// As `store` has it now.
CardPreview cardPreview(const WindowStore& store, const WindowItem& window);

/// What a card shows of a window.
struct WindowRow
{
    WindowID id = 0;
    QString ownerName;
    QString title;
    bool isMinimized = false;
    bool isOnScreen = false;
    bool isSelected = false;
    CardPreview preview;

    WindowID key() const { return id; }

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

    using PreviewOf = std::function<CardPreview(const WindowItem& window)>;

    /// In the order of `windows`. `selected` is the window that the keyboard has selected, if any.
    void setWindows(const QList<WindowItem>& windows, std::optional<WindowID> selected,
                    const PreviewOf& previewOf);
};

} // namespace kelpa
