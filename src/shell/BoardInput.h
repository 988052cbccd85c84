// Brings the keys and clicks of the main window to the store.
#pragma once

#include "shell/KeyRouting.h"

#include <QObject>
#include <QPointF>
#include <QPointer>

class QKeyEvent;
class QQuickItem;
class QQuickWindow;

namespace kelpa {

class WindowStore;

/// Which of the board's keys an event is; `other` for any further key. Shift with F10 is the key
/// for a menu. Control with Z undoes, and with Shift and Z, or with Y, redoes; whatever else is
/// pressed together with Control, Alt or Super belongs to somebody else.
BoardKey boardKey(const QKeyEvent& event);

/// Looks at the window's events before anybody else. Main thread.
///
/// A control has the keyboard when the person went to it with a key. Whatever else has the focus,
/// what was clicked or what follows the selection, leaves the keys to the board.
///
/// A press elsewhere takes the keyboard from whatever has it, so that the focus follows the
/// selection again; from what is open over the board, such as a sheet with its field, it does not.
///
/// A field gives the keyboard up when another program gets it, and waits with what was typed. It is
/// left for good by what would have left it otherwise: a click beside it, unless it goes to an item
/// that keeps fields, or the next key that does something on the board. A field in a sheet keeps
/// the keyboard, as the board has no use for it.
///
/// One types in an item that takes input methods. What else there is to know of an item, it tells
/// by its properties; one that it does not have counts as false. Of the item with the focus:
///
///     visualFocus        a key brought the focus to it, and it shows that; all controls of the
///                        toolkit have it
///     isButton           Space and Return press it; the toolkit's own type for that is private
///     isComposing        of a field: an input method has not finished what is being written
///     canUndo, canRedo   of a field: it could take back what was typed, or do it again; all fields
///                        of the toolkit have them
///     isSearching        of a field: what is written in it narrows the board
///
/// and of any item that is clicked:
///
///     keepsFields        a click in it takes nobody out of a field
class BoardInput : public QObject
{
    Q_OBJECT

public:
    /// Menus and sheets live in `popups`, an item of the window's. All outlive it.
    BoardInput(QQuickWindow& window, const QQuickItem& popups, WindowStore& store);
    ~BoardInput() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The menu of the selected window or goal, or of the board, is to be opened.
    void menuRequested();
    /// An arrow key leaves the field in which one types, whether the store opened it or a view. It
    /// is still there, with what is written in it.
    void editorLeft();

private:
    bool isInPopup(const QQuickItem* item) const;
    KeyboardFocus keyboardFocus(const QQuickItem* item) const;
    KeyContext context(const QKeyEvent& event) const;
    bool handleKey(const QKeyEvent& event);
    void carryOut(const BoardCommand& command);
    void notePress(const QPointF& position);
    void resignFocus();
    void resignFocusIfOutside(const QPointF& position);
    void letFieldWait();
    void leaveWaitingField();

    QQuickWindow& m_window;
    const QQuickItem& m_popups;
    WindowStore& m_store;
    /// Has given the keyboard up to another program, and not had it since.
    QPointer<QQuickItem> m_waitingField;
};

} // namespace kelpa
