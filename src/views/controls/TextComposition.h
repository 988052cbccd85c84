// What an input method composes in a field, and the end of it; what every field needs beside that.
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

class QInputMethodEvent;

namespace kelpa {

/// One for each QML engine, which makes it. Main thread.
///
/// Some input methods, asked to forget a composition that ended without them, write it once more
/// instead, wherever the keyboard is by then. The fields that are followed do not take it.
class TextComposition : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// To be called once for each field, which lives as long as it likes. From then on the field
    /// asks other programs for the clipboard only where a person pastes by key or button, and one
    /// that does not answer only once; its `canPaste` says nothing.
    Q_INVOKABLE void follow(QQuickItem* field);
    /// Pastes into `field`, a text field of the toolkit, as the key for it does.
    Q_INVOKABLE void paste(QQuickItem* field);
    /// Throws away what is being composed in `field`, which keeps everything else. Does nothing
    /// where nothing is.
    Q_INVOKABLE void cancel(QQuickItem* field);
    /// Writes what is being composed in `field` into it, as it is. Does nothing where nothing is.
    Q_INVOKABLE void keep(QQuickItem* field);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void end(QQuickItem& field, const QString& composed, const QString& written);
    bool isWrittenAgain(const QObject& field, const QInputMethodEvent& event);
    void noteWritten(const QObject& field, const QInputMethodEvent& event);
    /// Whether the event would paste what nobody gives.
    bool isVainPaste(const QEvent& event);

    /// What was composed and has been written since the event loop ran last.
    QString m_written;
    /// What an input method may write once more; empty as soon as it does something else.
    QString m_ended;
    /// The last paste by key was.
    bool m_isPasteVain = false;
};

} // namespace kelpa
