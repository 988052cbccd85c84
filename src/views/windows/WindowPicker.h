// The sheet in which windows are chosen to be moved into a goal.
#pragma once

#include "views/models/RowListModel.h"
#include "views/windows/WindowPresentation.h"
#include "views/windows/WindowSelection.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// The request for which the sheet opened; a second one for the same goal is the same sheet.
struct GoalWindowPickerRequest
{
    GoalID goalID;

    friend bool operator==(const GoalWindowPickerRequest&,
                           const GoalWindowPickerRequest&) = default;
};

/// The properties of a window that the sheet shows.
struct PickerRow
{
    WindowPresentation presentation;
    QString location;
    /// Whether the window is in the goal already, so that it cannot be chosen.
    bool isInGoal = false;
    bool isChosen = false;

    WindowID key() const { return presentation.id; }

    friend bool operator==(const PickerRow&, const PickerRow&) = default;
};

class PickerRowModel : public RowListModel<PickerRow>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window picker has it.")

public:
    using RowListModel<PickerRow>::RowListModel;
    using RowListModel<PickerRow>::setRows;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

/// Follows a store while it is open. Main thread. Every sheet starts with nothing chosen and
/// nothing searched for.
class WindowPicker : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY requestChanged)
    Q_PROPERTY(QString goalTitle READ goalTitle NOTIFY goalTitleChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    /// How many windows a confirmation would move.
    Q_PROPERTY(int chosenCount READ chosenCount NOTIFY selectionChanged)
    /// True even while all chosen windows are gone, which confirming reports.
    Q_PROPERTY(bool canConfirm READ canConfirm NOTIFY selectionChanged)
    /// Whether the last confirmation was refused.
    Q_PROPERTY(bool isRefused READ isRefused NOTIFY selectionChanged)
    Q_PROPERTY(kelpa::PickerRowModel* rows READ rows CONSTANT)
    Q_PROPERTY(int rowCount READ rowCount NOTIFY rowCountChanged)

public:
    /// `store` outlives the picker.
    explicit WindowPicker(WindowStore& store, QObject* parent = nullptr);

    bool isOpen() const { return m_request.has_value(); }
    /// The title of the goal that the windows will join. This and all below stay as they were when
    /// the sheet closed until it opens again.
    QString goalTitle() const { return m_goalTitle; }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    int chosenCount() const { return m_chosenCount; }
    bool canConfirm() const { return !m_selection.chosen.isEmpty(); }
    bool isRefused() const { return m_selection.isRefused; }
    PickerRowModel* rows() { return &m_rows; }
    int rowCount() const { return m_rows.rowCount(); }

    /// Opens the sheet for a goal, named by `columnText`. Any other column does nothing, and a goal
    /// for which it is open keeps what has been chosen.
    Q_INVOKABLE void open(const QString& columnID);
    Q_INVOKABLE void close();
    /// Chooses the window, or deselects it; a window that is in the goal already stays.
    Q_INVOKABLE void toggle(quint32 windowID);
    /// Moves the chosen windows and closes; stays open, with `isRefused`, when that is refused.
    /// Does nothing while nothing is chosen.
    Q_INVOKABLE void confirm();

Q_SIGNALS:
    void requestChanged();
    void goalTitleChanged();
    void searchTextChanged();
    void selectionChanged();
    void rowCountChanged();

private:
    void setRequest(std::optional<GoalWindowPickerRequest> request);
    void setSelection(const WindowSelection& selection);
    /// The order of the windows that are shown already.
    enum class Order { unchanged, sorted };
    void update(Order order);
    void updateChosenCount();

    WindowStore& m_store;
    std::optional<GoalWindowPickerRequest> m_request;
    QString m_goalTitle;
    QString m_searchText;
    WindowSelection m_selection;
    /// Windows that are being moved are still shown as chosen.
    bool m_isConfirming = false;
    int m_chosenCount = 0;
    /// The windows of the rows.
    QList<WindowItem> m_windows;
    PickerRowModel m_rows;
};

} // namespace kelpa
