// What holds of a board on the screen, whatever a person has done with it: each function returns a
// sentence for every promise that is broken, and nothing where all of them hold.
#pragma once

#include "store/WindowStore.h"
#include "views/board/BoardController.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>

namespace kelpa::test {

/// The parts of one board. They outlive the value.
struct ShownBoard
{
    WindowStore& store;
    BoardController& controller;
    QQuickWindow& window;
    /// The window has lost the keyboard, and since then nobody has clicked on the board, other than
    /// in a menu or sheet over it: a person may believe to be writing still, and the field waits.
    bool mayBeWriting = false;
};

/// Whether an item is of a type that is written in QML.
bool isOfType(const QObject& item, const char* type);

/// The type's name as it is written; "nothing" for no item.
QString typeName(const QObject* item);

/// `item` and all that shows below it.
QList<QQuickItem*> shownItems(QQuickItem* item);

/// Holds at any moment: the selection is one that the board shows, the models have the store's
/// rows, and the item with the keyboard focus is one that shows.
QStringList brokenPromises(const ShownBoard& board);

/// What of that concerns the lists of todos among `items`. TodoPromises.cpp.
QStringList brokenTodoLists(const ShownBoard& board, const QList<QQuickItem*>& items);

/// Holds once nothing moves, besides `brokenPromises`: each row in view has one item, with the
/// row's values and in the row's place, no two rows cover each other, every item has a size, the
/// focus is in the sheet or menu in front, else on the selected item unless a person has gone
/// elsewhere with it, and no blank field for a new todo stays open that was left.
QStringList brokenPromisesAtRest(const ShownBoard& board);

} // namespace kelpa::test
