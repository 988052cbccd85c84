// What is remembered of windows as QML sees it: the goals that a window without one may have been
// in, and the windows that a goal had, which a sheet lists. It decides nothing that the store
// decides.
#pragma once

#include "model/Identifiers.h"
#include "views/windows/AbsentWindowModel.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. A column is named by `columnText`, a window by its number.
class WindowMemoryController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// Whether the windows of goals are remembered.
    Q_PROPERTY(bool isRemembering READ isRemembering NOTIFY isRememberingChanged)

    /// Whether the sheet with the windows that a goal had is open, and the goal's title.
    Q_PROPERTY(bool isListOpen READ isListOpen NOTIFY listChanged)
    Q_PROPERTY(QString listTitle READ listTitle NOTIFY listChanged)
    Q_PROPERTY(kelpa::AbsentWindowModel* list READ list CONSTANT)
    Q_PROPERTY(int listCount READ listCount NOTIFY listChanged)
    /// Whether all windows of the sheet are from an earlier run.
    Q_PROPERTY(bool isListFromLastTime READ isListFromLastTime NOTIFY listChanged)

public:
    /// `store` outlives the controller.
    explicit WindowMemoryController(WindowStore& store, QObject* parent = nullptr);

    bool isRemembering() const;
    Q_INVOKABLE void toggleRemembering();

    /// The goals that the window may have been in, likeliest first: `columnID` and `title` of each.
    Q_INVOKABLE QVariantList formerGoals(quint32 windowID) const;
    /// Puts the window back into the goal that it may have been in. False where a person has to
    /// choose among several.
    Q_INVOKABLE bool putBack(quint32 windowID);
    /// The same for the window that the arrow keys have selected, if any.
    Q_INVOKABLE bool putSelectionBack();
    /// Puts the window back into that one of them.
    Q_INVOKABLE void putBackInto(quint32 windowID, const QString& columnID);
    /// The window is another one than those that its goals have had.
    Q_INVOKABLE void decline(quint32 windowID);
    /// The same of the window that the arrow keys have selected, where it may have been in any.
    Q_INVOKABLE void declineSelection();

    bool isListOpen() const { return m_listedGoal.has_value(); }
    QString listTitle() const;
    AbsentWindowModel* list() { return &m_list; }
    int listCount() const { return m_list.rowCount(); }
    /// As `WindowController::titleLengths`.
    Q_INVOKABLE static QString titleLengths(const QString& title);
    bool isListFromLastTime() const { return m_isListFromLastTime; }
    /// Opens the sheet for a goal; any other column, and one that has all its windows, does
    /// nothing.
    Q_INVOKABLE void openList(const QString& columnID);
    /// The sheet also closes when nothing is left in it.
    Q_INVOKABLE void closeList();
    /// Opens a window of the list again, which joins the goal.
    Q_INVOKABLE void reopen(quint32 windowID);
    Q_INVOKABLE void reopenAll();
    Q_INVOKABLE void forget(quint32 windowID);
    Q_INVOKABLE void forgetAll();

Q_SIGNALS:
    void isRememberingChanged();
    void listChanged();

private:
    void updateList();
    QSet<WindowID> listedWindows() const;

    WindowStore& m_store;
    std::optional<GoalID> m_listedGoal;
    AbsentWindowModel m_list;
    bool m_isListFromLastTime = true;
};

} // namespace kelpa
