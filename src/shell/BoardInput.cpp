#include "shell/BoardInput.h"

#include "store/WindowStore.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

bool isTextInput(const QQuickItem& item)
{
    return item.flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

bool tells(const QQuickItem* item, const char* property)
{
    return item != nullptr && item->property(property).toBool();
}

bool isButton(const QQuickItem* item)
{
    return tells(item, "isButton");
}

bool isWithin(const QQuickItem& item, const QPointF& position)
{
    return item.contains(item.mapFromScene(position));
}

/// The field with the buttons that belong to it.
QQuickItem& fieldWithButtons(QQuickItem& field)
{
    QQuickItem* const around = field.parentItem();
    if (around == nullptr || !around->isFocusScope())
        return field;
    // The window and all that it shows are no part of a field.
    const QQuickItem* const outside = around->parentItem();
    return outside != nullptr && outside->parentItem() != nullptr ? *around : field;
}

bool isMove(const BoardCommand& command)
{
    return std::holds_alternative<MoveTargetSelection>(command) ||
           std::holds_alternative<MoveWindowSelection>(command);
}

/// Of a key that is held: once, where each further time would do something else.
bool isDoneOnce(const BoardCommand& command)
{
    return std::holds_alternative<ActivateSelection>(command) ||
           std::holds_alternative<RequestAddTodo>(command);
}

/// One function for each kind of command.
template <class... Functions>
struct Each : Functions...
{
    using Functions::operator()...;
};
template <class... Functions>
Each(Functions...) -> Each<Functions...>;

/// Of a key that is pressed with Control.
BoardKey historyKey(const QKeyEvent& event)
{
    const bool isShifted = event.modifiers().testFlag(Qt::ShiftModifier);
    if (event.key() == Qt::Key_Z)
        return isShifted ? BoardKey::redo : BoardKey::undo;
    return event.key() == Qt::Key_Y && !isShifted ? BoardKey::redo : BoardKey::other;
}

/// Whether something at the place of the scene, which the item holds, takes nobody out of a field.
bool keepsFields(const QQuickItem& item, const QPointF& position)
{
    const QList<QQuickItem*> children = item.childItems();
    return item.property("keepsFields").toBool() ||
           std::any_of(children.begin(), children.end(), [&position](const QQuickItem* child) {
               return child->isVisible() && isWithin(*child, position) &&
                      keepsFields(*child, position);
           });
}

} // namespace

BoardKey boardKey(const QKeyEvent& event)
{
    const auto foreign = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event.modifiers() & foreign) == Qt::ControlModifier)
        return historyKey(event);
    if ((event.modifiers() & foreign) != 0)
        return BoardKey::other;
    if (event.key() == Qt::Key_F10 && event.modifiers().testFlag(Qt::ShiftModifier))
        return BoardKey::menu;
    switch (event.key()) {
    case Qt::Key_Left:
        return BoardKey::left;
    case Qt::Key_Right:
        return BoardKey::right;
    case Qt::Key_Up:
        return BoardKey::up;
    case Qt::Key_Down:
        return BoardKey::down;
    case Qt::Key_Space:
        return BoardKey::space;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return BoardKey::enter;
    case Qt::Key_Escape:
        return BoardKey::escape;
    case Qt::Key_Menu:
        return BoardKey::menu;
    default:
        return BoardKey::other;
    }
}

BoardInput::BoardInput(QQuickWindow& window, const QQuickItem& popups, WindowStore& store)
    : m_window(window), m_popups(popups), m_store(store)
{
    m_window.installEventFilter(this);
    connect(&m_window, &QQuickWindow::activeFocusItemChanged, this, [this] {
        if (m_window.activeFocusItem() == m_waitingField)
            m_waitingField.clear();
    });
}

BoardInput::~BoardInput() = default;

bool BoardInput::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return handleKey(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* const press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::LeftButton || press->button() == Qt::RightButton)
            notePress(press->position());
    }
    // The window's own answer is that nothing in it has the focus, until it has the keyboard again.
    if (event->type() == QEvent::FocusOut && watched == &m_window)
        letFieldWait();
    return QObject::eventFilter(watched, event);
}

bool BoardInput::isInPopup(const QQuickItem* item) const
{
    return item == &m_popups || m_popups.isAncestorOf(item);
}

KeyboardFocus BoardInput::keyboardFocus(const QQuickItem* item) const
{
    if (item == nullptr)
        return KeyboardFocus::board;
    // A field in a sheet is the sheet's: an arrow must not leave it.
    if (isInPopup(item))
        return KeyboardFocus::popup;
    if (isTextInput(*item))
        return KeyboardFocus::textInput;
    // A button that was clicked, or a card that follows the selection, has the focus too, but does
    // not show it.
    if (!tells(item, "visualFocus"))
        return KeyboardFocus::board;
    return isButton(item) ? KeyboardFocus::button : KeyboardFocus::item;
}

KeyContext BoardInput::context(const QKeyEvent& event) const
{
    const QQuickItem* const item = m_window.activeFocusItem();
    // A minimised window counts as visible for the toolkit.
    const bool isShown =
        m_window.isVisible() && !m_window.windowStates().testFlag(Qt::WindowMinimized);
    return {.isBoardActive = isShown && m_window.isActive(),
            .focus = keyboardFocus(item),
            .navigation = m_store.boardNavigation(),
            .isShiftHeld = event.modifiers().testFlag(Qt::ShiftModifier),
            .isComposing = tells(item, "isComposing"),
            .canFieldUndo = tells(item, "canUndo"),
            .canFieldRedo = tells(item, "canRedo"),
            .isSearching = tells(item, "isSearching")};
}

bool BoardInput::handleKey(const QKeyEvent& event)
{
    const KeyContext now = context(event);
    const KeyDecision decision = decideKey(boardKey(event), now);
    if (decision.cancelsEditor) {
        Q_EMIT editorLeft();
        m_store.cancelTodoEditor();
    }
    if (!decision.command)
        return false;
    // Held a little too long, it would enter a target and raise a window at once.
    if (event.isAutoRepeat() && isDoneOnce(*decision.command))
        return true;
    leaveWaitingField();
    const QQuickItem* const item = m_window.activeFocusItem();
    // From a button that was clicked, the focus goes with the selection.
    const bool isClickedButton = now.focus == KeyboardFocus::board && isButton(item);
    if (decision.leavesFocus || (isClickedButton && isMove(*decision.command)))
        resignFocus();
    carryOut(*decision.command);
    return true;
}

void BoardInput::carryOut(const BoardCommand& command)
{
    std::visit(
        Each{
            [this](const MoveTargetSelection& move) {
                m_store.moveTargetSelection(move.direction);
            },
            [this](const MoveWindowSelection& move) {
                m_store.moveWindowSelection(move.direction);
            },
            [this](const ActivateSelection&) { m_store.activateSelection(); },
            [this](const ReturnToTargetSelection&) { m_store.returnToTargetSelection(); },
            [this](const RequestAddTodo& request) { m_store.requestAddTodo(request.goalID); },
            [this](const OpenMenu&) { Q_EMIT menuRequested(); },
            [this](const UndoChange&) { m_store.undo(); },
            [this](const RedoChange&) { m_store.redo(); },
        },
        command);
}

void BoardInput::resignFocus()
{
    // From a part, the focus goes to what it stands in, which is not the board yet. A sheet keeps
    // it: Escape is to close that.
    const QQuickItem* before = nullptr;
    QQuickItem* item = m_window.activeFocusItem();
    while (item != nullptr && item != before && item != m_window.contentItem()) {
        item->setFocus(false);
        if (isInPopup(item))
            return;
        before = item;
        item = m_window.activeFocusItem();
    }
}

void BoardInput::notePress(const QPointF& position)
{
    if (keepsFields(*m_window.contentItem(), position))
        return;
    if (!m_waitingField.isNull() && !isWithin(fieldWithButtons(*m_waitingField), position))
        leaveWaitingField();
    resignFocusIfOutside(position);
}

void BoardInput::resignFocusIfOutside(const QPointF& position)
{
    QQuickItem* const item = m_window.activeFocusItem();
    // What is open over the board has the keyboard for as long as it is open.
    if (item == nullptr || isInPopup(item))
        return;
    // A press on a button of the field is for that to answer.
    const QQuickItem& place = isTextInput(*item) ? fieldWithButtons(*item) : *item;
    if (!isWithin(place, position))
        resignFocus();
}

void BoardInput::letFieldWait()
{
    QQuickItem* const item = m_window.activeFocusItem();
    if (item == nullptr || keyboardFocus(item) != KeyboardFocus::textInput)
        return;
    resignFocus();
    m_waitingField = item;
}

void BoardInput::leaveWaitingField()
{
    const QPointer<QQuickItem> field = std::exchange(m_waitingField, nullptr);
    if (field.isNull())
        return;
    // Whoever made the field learns by its focus alone that it is left.
    field->forceActiveFocus();
    resignFocus();
}

} // namespace kelpa
