// The part of `world` that acts on the interface from outside as the toolkit's plugins do: input
// methods, held keys, drags, the clipboard and assistive programs.
#pragma once

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QObject>
#include <QPointF>
#include <QQuickItem>
#include <QString>
#include <QStringList>

namespace kelpa::test {

class WorldInput : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Acts as an input method does while a person has not yet chosen what to write.
    Q_INVOKABLE void compose(const QString& text);
    /// Acts as some input methods do when the person has given up: only the cursor is left.
    Q_INVOKABLE void composeNothing();
    /// Acts as an input method does when the person has chosen.
    Q_INVOKABLE void finishComposing(const QString& text);
    /// Sends what the window system sends repeatedly for a held key.
    Q_INVOKABLE void repeatKey(QQuickItem* item, int key);
    /// The pointer comes to a place of the item's window, dragging a text.
    Q_INVOKABLE void dragTo(QQuickItem* item, QPointF place);
    Q_INVOKABLE void dropAt(QQuickItem* item, QPointF place);
    /// What assistive programs are told of the item: "disabled", "selectable", "selected",
    /// "checked".
    Q_INVOKABLE static QStringList states(QObject* item);
    Q_INVOKABLE static void switchAccessibilityOn() { QAccessible::setActive(true); }
    /// No program has anything to paste.
    Q_INVOKABLE void clearClipboard() { QGuiApplication::clipboard()->clear(); }
    /// A program has that text to paste.
    Q_INVOKABLE void offerText(const QString& text) { QGuiApplication::clipboard()->setText(text); }

private:
    QMimeData m_dragged;
    bool m_isDragging = false;
};

} // namespace kelpa::test
