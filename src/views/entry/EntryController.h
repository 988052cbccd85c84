// The field for a todo over whatever is in front: what is typed, which goal it is for, and the
// goals that complete what follows a number sign.
#pragma once

#include "views/entry/GoalCompletion.h"
#include "views/models/ColumnID.h"
#include "views/models/RowListModel.h"

#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

#include <cstdint>
#include <optional>

namespace kelpa {

class WindowStore;

/// What the field shows over, which proposes a goal: that of the window in front, or the one that
/// is selected on the board.
enum class EntryOver : std::uint8_t { window, board };

/// Its rows are the goals that match; none while no goal is being typed. What is typed outlasts
/// `close`, until it is added. Main thread.
class EntryController : public RowListModel<EntryGoal>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program has it.")

    Q_PROPERTY(QString text READ text NOTIFY changed)
    /// A position in UTF-16 units.
    Q_PROPERTY(int caret READ caret NOTIFY changed)
    /// Grows whenever the text becomes another one than the person has typed.
    Q_PROPERTY(int replacementCount READ replacementCount NOTIFY changed)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    /// Whether a goal is being typed that matches some.
    Q_PROPERTY(bool isCompleting READ isCompleting NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// The row that Return takes; -1 without rows.
    Q_PROPERTY(int currentRow READ currentRow NOTIFY changed)
    /// The title of that row; empty without rows.
    Q_PROPERTY(QString currentTitle READ currentTitle NOTIFY changed)
    /// The list that the todo would be added to now.
    Q_PROPERTY(QString goalTitle READ goalTitle NOTIFY changed)
    /// The accent of its goal; empty for "Unsorted".
    Q_PROPERTY(QString goalAccent READ goalAccent NOTIFY changed)

public:
    /// `store` outlives the controller.
    explicit EntryController(WindowStore& store, QObject* parent = nullptr);

    QString text() const { return m_text; }
    int caret() const { return static_cast<int>(m_caret); }
    int replacementCount() const { return m_replacementCount; }
    bool isOpen() const { return m_isOpen; }
    bool isCompleting() const { return rowCount() > 0; }
    int count() const { return rowCount(); }
    int currentRow() const { return isCompleting() ? m_currentRow : -1; }
    QString currentTitle() const;
    QString goalTitle() const;
    QString goalAccent() const;

    /// The field is to show: proposes a goal, unless the text has one already. Waits for the
    /// windows as long as `WindowStore::refresh` does.
    void open(EntryOver over);
    Q_INVOKABLE void close();

    /// The person has typed, or moved the caret: a position in UTF-16 units.
    Q_INVOKABLE void edit(const QString& text, int caret);
    /// Goes down so many rows, from the last to the first.
    Q_INVOKABLE void moveCurrent(int rows);
    /// Takes the goal of this row in place of what is typed of it; does nothing for another one.
    Q_INVOKABLE void take(int row);
    /// Return: takes the current row, unless its title is typed already; else adds the todo to its
    /// goal and closes. A blank text is not added.
    Q_INVOKABLE void commit();
    /// Escape: what is typed is no goal; closes where none is being typed.
    Q_INVOKABLE void cancel();

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void changed();
    void added();

private:
    void update();
    void propose();
    void correctProposal();
    void setText(const EditedText& edited);
    std::optional<NamedGoal> named() const;
    EntryGoal target() const;

    WindowStore& m_store;
    /// All goals in the order of the board, and "Unsorted".
    QList<EntryGoal> m_goals;
    QString m_text;
    qsizetype m_caret = 0;
    int m_replacementCount = 0;
    bool m_isOpen = false;
    EntryOver m_over = EntryOver::window;
    /// Whether the windows that were asked for at the opening may still come: a window server that
    /// is slow reports them when the field is there already.
    bool m_isAwaitingWindows = false;
    /// Whether the next update proposes a goal anew.
    bool m_isProposalDue = false;
    int m_currentRow = 0;
    bool m_hasMoved = false;
    /// The start of a mention that is none.
    std::optional<qsizetype> m_declined;
    std::optional<GoalID> m_proposed;
    /// What the person took for this text.
    std::optional<ColumnID> m_chosen;
    /// The goal of the last todo.
    std::optional<GoalID> m_last;
};

} // namespace kelpa
