// Follows the compositions of input methods in text fields, and how fields paste, and keeps their
// texts within a length that can be laid out at every keystroke.
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

class QInputMethodEvent;

namespace kelpa {

/// One for each QML engine, which creates it. Main thread.
///
/// Some input methods, asked to discard a composition that ended without them, write it once more
/// instead, wherever the keyboard is by then. The followed fields reject it.
///
/// What would make the text of a followed field longer than `longestText` is rejected as a whole,
/// so that nothing of it is lost unnoticed, and the field's function `refuseText` is called.
class TextComposition : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    /// In UTF-16 units.
    Q_PROPERTY(int longestText READ longestText CONSTANT FINAL)

public:
    using QObject::QObject;

    static int longestText();

    /// Called once for each field, which may be destroyed at any time. From then on the field
    /// queries other programs' clipboard only where a person pastes by key or button, and a program
    /// that does not answer only once; the field's `canPaste` means nothing.
    Q_INVOKABLE void follow(QQuickItem* field);
    /// Pastes into `field`, a text field of the toolkit, as the key for it does.
    Q_INVOKABLE void paste(QQuickItem* field);
    /// Discards the composition in `field`, which keeps everything else. Does nothing without a
    /// composition.
    Q_INVOKABLE void cancel(QQuickItem* field);
    /// Writes the composition in `field` into it, as it is. Does nothing without a composition.
    Q_INVOKABLE void keep(QQuickItem* field);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void end(QQuickItem& field, const QString& composed, const QString& written);
    bool isWrittenAgain(const QObject& field, const QInputMethodEvent& event);
    void noteWritten(const QObject& field, const QInputMethodEvent& event);
    /// Whether the event is a paste for which no program gives a text, or one that is too long.
    bool isVainPaste(QQuickItem& field, const QEvent& event);
    /// Whether the event would write more than the field takes, which is told then.
    bool isRefused(QQuickItem& field, const QEvent& event);

    /// The composition that has been written since the event loop ran last.
    QString m_written;
    /// The text that an input method may write once more; empty as soon as it does something else.
    QString m_ended;
    /// Whether nothing could be pasted by key the last time.
    bool m_isPasteVain = false;
};

} // namespace kelpa
