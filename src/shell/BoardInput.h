// The main window's event filter: turns keys into commands for the store, and moves the keyboard
// focus as keys and clicks require.
#pragma once

#include "shell/KeyRouting.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>

#include <optional>

class QKeyEvent;
class QQuickItem;
class QQuickWindow;

namespace kelpa {

class WindowStore;

/// Which of the board's keys an event is; `other` for any other key. Shift+F10 is the menu key.
/// Ctrl+Z undoes; Ctrl+Shift+Z and Ctrl+Y redo; every other combination with Control, Alt or Super
/// is left to window managers, input methods and controls.
BoardKey boardKey(const QKeyEvent& event);

/// Whether a key that comes before the board can take it types something to search for. Space and
/// Backspace do unless they are the first of these keys: the board would act on them.
bool typesSearch(const QKeyEvent& event, bool isFirst);

/// Receives the window's events before the window does. Main thread.
///
/// A control receives keys when the person moved the focus to it with a key. Any other item with
/// the focus, because it was clicked or follows the selection, leaves the keys to the board.
///
/// A press elsewhere takes the focus from the item that has it, so that the focus follows the
/// selection again; items that are open over the board, such as a sheet with its field, keep it.
///
/// A text field is suspended when another program gets the keyboard: it gives up the focus but
/// keeps its text. It is left for good by what would have left it otherwise: a click beside it,
/// unless on an item that keeps fields, or the next key that does something on the board. Space and
/// undo do nothing until then, or until Escape or a click: the person may believe to be writing in
/// the field. That Escape does nothing else. A field in a sheet keeps the focus, as the board has
/// no use for it.
///
/// An item that accepts input methods is a text field. Everything else about an item comes from its
/// properties; a missing property counts as false. Of the item with the focus:
///
///     visualFocus        a key moved the focus to it, and it shows that; all controls of the
///                        toolkit have it
///     isButton           Space and Return press it; the toolkit's own type for that is private
///     isComposing        field only: an input method is composing
///     canUndo, canRedo   field only: it can undo or redo what was typed; all fields of the toolkit
///                        have them
///     isSearching        field only: its text filters the board
///
/// and of any item that is clicked:
///
///     keepsFields        a click in it does not leave a field
class BoardInput : public QObject
{
    Q_OBJECT

public:
    /// `popups` is the item of the window that holds menus and sheets. All outlive this object.
    BoardInput(QQuickWindow& window, const QQuickItem& popups, WindowStore& store);
    ~BoardInput() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The person requested the menu of the selected window or goal, or of the board.
    void menuRequested();
    /// An arrow key leaves the text field, whether the store or a view opened it. Emitted while the
    /// field still exists, with its text.
    void editorLeft();
    /// A character is typed while nothing has the keyboard, or a dead key, which begins one. The
    /// search field gets it if it takes the focus now.
    void searchStarted();

private:
    bool isInPopup(const QQuickItem* item) const;
    KeyboardFocus keyboardFocus(const QQuickItem* item) const;
    KeyContext context(const QKeyEvent& event) const;
    bool writeAccented(const QKeyEvent& letter);
    bool handleKey(const QKeyEvent& event);
    void carryOut(const BoardCommand& command);
    void handlePress(const QPointF& position);
    void resignFocus();
    void resignFocusIfOutside(const QPointF& position);
    void suspendField();
    void leaveSuspendedField();

    QQuickWindow& m_window;
    const QQuickItem& m_popups;
    WindowStore& m_store;
    /// Lost the focus to another program and has not had it since.
    QPointer<QQuickItem> m_suspendedField;
    /// `KeyContext::wasWriting`, while there is such a field.
    bool m_wasWriting = false;
    /// A dead key has begun a search, and its letter is still to come.
    struct BegunAccent
    {
        QChar accent;
        QPointer<QQuickItem> field;
        /// What stood in the field then.
        QString before;
    };
    std::optional<BegunAccent> m_accent;
};

} // namespace kelpa
