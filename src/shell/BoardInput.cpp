#include "shell/BoardInput.h"

#include "shell/DeadKey.h"
#include "store/WindowStore.h"

#include <QInputMethodEvent>
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

bool hasTrue(const QQuickItem* item, const char* property)
{
    return item != nullptr && item->property(property).toBool();
}

bool isButton(const QQuickItem* item)
{
    return hasTrue(item, "isButton");
}

bool isWithin(const QQuickItem& item, const QPointF& position)
{
    return item.contains(item.mapFromScene(position));
}

/// The item that holds the field and the buttons that belong to it; the field itself if none.
QQuickItem& fieldWithButtons(QQuickItem& field)
{
    QQuickItem* const around = field.parentItem();
    if (around == nullptr || !around->isFocusScope())
        return field;
    // The window's content is not part of a field.
    const QQuickItem* const outside = around->parentItem();
    return outside != nullptr && outside->parentItem() != nullptr ? *around : field;
}

bool isMove(const BoardCommand& command)
{
    return std::holds_alternative<MoveTargetSelection>(command) ||
           std::holds_alternative<MoveWindowSelection>(command);
}

/// Whether a held key carries the command out once, since repeating it would do something else.
bool ignoresAutoRepeat(const BoardCommand& command)
{
    return std::holds_alternative<ActivateSelection>(command) ||
           std::holds_alternative<RequestAddTodo>(command) ||
           std::holds_alternative<ReturnToTargetSelection>(command);
}

/// A visitor made of one function for each kind of command.
template <class... Functions>
struct Overloaded : Functions...
{
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

/// The board's key for a key that is pressed with Control.
BoardKey undoRedoKey(const QKeyEvent& event)
{
    const bool isShifted = event.modifiers().testFlag(Qt::ShiftModifier);
    if (event.key() == Qt::Key_Z)
        return isShifted ? BoardKey::redo : BoardKey::undo;
    return event.key() == Qt::Key_Y && !isShifted ? BoardKey::redo : BoardKey::other;
}

bool typesCharacter(const QKeyEvent& event)
{
    return (!event.text().isEmpty() && event.text().front().isPrint()) || accentOf(event.key());
}

QString writtenIn(const QQuickItem* field)
{
    return field != nullptr ? field->property("text").toString() : QString();
}

/// Whether a click at `position`, in scene coordinates within `item`, does not leave a field.
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
        return undoRedoKey(event);
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
        return typesCharacter(event) ? BoardKey::character : BoardKey::other;
    }
}

bool typesSearch(const QKeyEvent& event, bool isFirst)
{
    const BoardKey key = boardKey(event);
    const bool isBackspace = event.key() == Qt::Key_Backspace && key == BoardKey::other &&
                             (event.modifiers() & ~Qt::ShiftModifier) == 0;
    return key == BoardKey::character || (!isFirst && (key == BoardKey::space || isBackspace));
}

BoardInput::BoardInput(QQuickWindow& window, const QQuickItem& popups, WindowStore& store)
    : m_window(window), m_popups(popups), m_store(store)
{
    m_window.installEventFilter(this);
    connect(&m_window, &QQuickWindow::activeFocusItemChanged, this, [this] {
        if (m_window.activeFocusItem() == m_suspendedField)
            m_suspendedField.clear();
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
            handlePress(press->position());
    }
    // The window itself reacts by having no focus item until it is active again.
    if (event->type() == QEvent::FocusOut && watched == &m_window)
        suspendField();
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
    // A field in a sheet belongs to the sheet: an arrow must not leave it.
    if (isInPopup(item))
        return KeyboardFocus::popup;
    if (isTextInput(*item))
        return KeyboardFocus::textInput;
    // A clicked button, or a card that follows the selection, also has the focus but does not show
    // it.
    if (!hasTrue(item, "visualFocus"))
        return KeyboardFocus::board;
    return isButton(item) ? KeyboardFocus::button : KeyboardFocus::item;
}

KeyContext BoardInput::context(const QKeyEvent& event) const
{
    const QQuickItem* const item = m_window.activeFocusItem();
    // The toolkit considers a minimised window visible.
    const bool isShown =
        m_window.isVisible() && !m_window.windowStates().testFlag(Qt::WindowMinimized);
    return {.isBoardActive = isShown && m_window.isActive(),
            .focus = keyboardFocus(item),
            .navigation = m_store.boardNavigation(),
            .isShiftHeld = event.modifiers().testFlag(Qt::ShiftModifier),
            .isComposing = hasTrue(item, "isComposing"),
            .canFieldUndo = hasTrue(item, "canUndo"),
            .canFieldRedo = hasTrue(item, "canRedo"),
            .isSearching = hasTrue(item, "isSearching"),
            .wasWriting = m_wasWriting && !m_suspendedField.isNull(),
            .hasSearch = !m_store.searchText().isEmpty()};
}

/// No input method has seen the accent that has begun the search, so that none adds the letter.
bool BoardInput::writeAccented(const QKeyEvent& letter)
{
    if (!m_accent || letter.text().isEmpty())
        return false;
    const BegunAccent begun = *std::exchange(m_accent, std::nullopt);
    QQuickItem* const field = m_window.activeFocusItem();
    const std::optional<QString> composed = accented(letter.text(), begun.accent);
    if (!composed || field == nullptr || field != begun.field || writtenIn(field) != begun.before)
        return false;
    QInputMethodEvent write;
    write.setCommitString(*composed);
    QCoreApplication::sendEvent(field, &write);
    return true;
}

bool BoardInput::handleKey(const QKeyEvent& event)
{
    if (writeAccented(event))
        return true;
    const KeyContext now = context(event);
    const KeyDecision decision = decideKey(boardKey(event), now);
    if (decision.cancelsEditor) {
        Q_EMIT editorLeft();
        m_store.cancelTodoEditor();
    }
    if (decision.endsWriting)
        m_wasWriting = false;
    if (decision.startsSearch) {
        Q_EMIT searchStarted();
        QQuickItem* const field = m_window.activeFocusItem();
        if (const std::optional<QChar> accent = accentOf(event.key()))
            m_accent = {*accent, field, writtenIn(field)};
    }
    if (decision.endsSearch && !event.isAutoRepeat())
        m_store.setSearchText(QString());
    if (!decision.command)
        return decision.isIgnored;
    // Space held a little too long would enter a target and raise a window at once; Escape would
    // end the writing and go back.
    if (event.isAutoRepeat() && ignoresAutoRepeat(*decision.command))
        return true;
    leaveSuspendedField();
    const QQuickItem* const item = m_window.activeFocusItem();
    // The focus moves from a clicked button with the selection.
    const bool isClickedButton = now.focus == KeyboardFocus::board && isButton(item);
    if (decision.leavesFocus || (isClickedButton && isMove(*decision.command)))
        resignFocus();
    carryOut(*decision.command);
    return true;
}

void BoardInput::carryOut(const BoardCommand& command)
{
    std::visit(
        Overloaded{
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
    // The focus moves from an item to the focus scope around it, which may not be the board yet. A
    // sheet keeps it, so that Escape closes the sheet.
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

void BoardInput::handlePress(const QPointF& position)
{
    m_wasWriting = false;
    if (keepsFields(*m_window.contentItem(), position))
        return;
    // Leaving the field moves the keyboard, which a sheet that opened since has until it closes.
    const bool isBesideField =
        !m_suspendedField.isNull() && !isWithin(fieldWithButtons(*m_suspendedField), position);
    if (isBesideField && keyboardFocus(m_window.activeFocusItem()) != KeyboardFocus::popup)
        leaveSuspendedField();
    resignFocusIfOutside(position);
}

void BoardInput::resignFocusIfOutside(const QPointF& position)
{
    QQuickItem* const item = m_window.activeFocusItem();
    // Popups keep the focus for as long as they are open.
    if (item == nullptr || isInPopup(item))
        return;
    // A button of the field handles a press on it itself.
    const QQuickItem& place = isTextInput(*item) ? fieldWithButtons(*item) : *item;
    if (!isWithin(place, position))
        resignFocus();
}

void BoardInput::suspendField()
{
    QQuickItem* const item = m_window.activeFocusItem();
    if (item == nullptr || keyboardFocus(item) != KeyboardFocus::textInput)
        return;
    resignFocus();
    m_suspendedField = item;
    m_wasWriting = true;
}

void BoardInput::leaveSuspendedField()
{
    const QPointer<QQuickItem> field = std::exchange(m_suspendedField, nullptr);
    if (field.isNull())
        return;
    // The field's owner learns only from a change of its focus that it is left.
    field->forceActiveFocus();
    resignFocus();
}

} // namespace kelpa
