#include "views/WorldInput.h"

#include <QDragMoveEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QQuickWindow>

namespace kelpa::test {

void WorldInput::compose(const QString& text)
{
    QInputMethodEvent event(text, {});
    QGuiApplication::sendEvent(QGuiApplication::focusObject(), &event);
}

void WorldInput::composeNothing()
{
    QInputMethodEvent event(QString(),
                            {QInputMethodEvent::Attribute(QInputMethodEvent::Cursor, 0, 1)});
    QGuiApplication::sendEvent(QGuiApplication::focusObject(), &event);
}

void WorldInput::finishComposing(const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QGuiApplication::sendEvent(QGuiApplication::focusObject(), &event);
}

void WorldInput::repeatKey(QQuickItem* item, int key)
{
    for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent event(type, key, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(item->window(), &event);
    }
}

void WorldInput::dragTo(QQuickItem* item, QPointF place)
{
    const QPoint position = item->mapToScene(place).toPoint();
    m_dragged.setText(QStringLiteral("7"));
    if (!m_isDragging) {
        QDragEnterEvent enter(position, Qt::MoveAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(item->window(), &enter);
    }
    m_isDragging = true;
    QDragMoveEvent move(position, Qt::MoveAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &move);
}

void WorldInput::dropAt(QQuickItem* item, QPointF place)
{
    m_isDragging = false;
    QDropEvent drop(item->mapToScene(place), Qt::MoveAction, &m_dragged, Qt::LeftButton,
                    Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &drop);
}

QStringList WorldInput::states(QObject* item)
{
    const QAccessible::State state = QAccessible::queryAccessibleInterface(item)->state();
    QStringList names;
    if (state.readOnly)
        names.append(QStringLiteral("read-only"));
    if (state.checkable)
        names.append(QStringLiteral("checkable"));
    if (state.selectable)
        names.append(QStringLiteral("selectable"));
    if (state.selected)
        names.append(QStringLiteral("selected"));
    if (state.checked)
        names.append(QStringLiteral("checked"));
    return names;
}

} // namespace kelpa::test
