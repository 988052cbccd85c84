#include "views/controls/TextComposition.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>

#include <utility>

namespace kelpa {

namespace {

/// Whether a program offers something there. Waits for its answer; the toolkit, which requests the
/// text in several formats, would wait for each of them anew where none comes.
bool isAnswered(QClipboard::Mode mode)
{
    const QMimeData* const content = QGuiApplication::clipboard()->mimeData(mode);
    return content != nullptr && !content->formats().isEmpty();
}

QString composedText(const QObject& field)
{
    return field.property("preeditText").toString();
}

} // namespace

void TextComposition::follow(QQuickItem* field)
{
    if (field == nullptr)
        return;
    field->installEventFilter(this);
    // Whenever a program takes the clipboard, the toolkit's field would ask it at once for its
    // contents, and wait: the board would freeze for as long as that program does not answer.
    QObject::disconnect(QGuiApplication::clipboard(), nullptr, field, nullptr);
}

void TextComposition::paste(QQuickItem* field)
{
    if (field != nullptr && isAnswered(QClipboard::Clipboard))
        QMetaObject::invokeMethod(field, "paste");
}

void TextComposition::cancel(QQuickItem* field)
{
    if (field != nullptr)
        end(*field, composedText(*field), {});
}

void TextComposition::keep(QQuickItem* field)
{
    if (field != nullptr)
        end(*field, composedText(*field), composedText(*field));
}

void TextComposition::end(QQuickItem& field, const QString& composed, const QString& written)
{
    if (composed.isEmpty())
        return;
    // The input method forgets it without an event.
    QGuiApplication::inputMethod()->reset();
    QInputMethodEvent last;
    last.setCommitString(written);
    QCoreApplication::sendEvent(&field, &last);
    m_ended = composed;
}

bool TextComposition::isVainPaste(const QEvent& event)
{
    if (event.type() == QEvent::KeyPress) {
        const auto& press = static_cast<const QKeyEvent&>(event);
        if (!press.matches(QKeySequence::Paste))
            return false;
        // A held key does not wait again.
        if (!press.isAutoRepeat() || !m_isPasteVain)
            m_isPasteVain = !isAnswered(QClipboard::Clipboard);
        return m_isPasteVain;
    }
    return event.type() == QEvent::MouseButtonRelease &&
           static_cast<const QMouseEvent&>(event).button() == Qt::MiddleButton &&
           !isAnswered(QClipboard::Selection);
}

bool TextComposition::eventFilter(QObject* watched, QEvent* event)
{
    if (isVainPaste(*event))
        return true;
    switch (event->type()) {
    case QEvent::InputMethod: {
        const auto& what = *static_cast<QInputMethodEvent*>(event);
        if (isWrittenAgain(*watched, what))
            return true;
        noteWritten(*watched, what);
        break;
    }
    case QEvent::FocusOut:
        // The toolkit writes a composition as it is into the field that loses the keyboard.
        if (!m_written.isEmpty())
            m_ended = std::exchange(m_written, QString());
        break;
    case QEvent::MouseButtonPress:
        // The toolkit does the same where the press moves the cursor.
        m_ended = composedText(*watched);
        break;
    case QEvent::KeyPress:
        m_ended.clear();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool TextComposition::isWrittenAgain(const QObject& field, const QInputMethodEvent& event)
{
    // A text that is still being composed is written for the first time.
    if (m_ended.isEmpty() || !composedText(field).isEmpty() || event.commitString() != m_ended ||
        !event.preeditString().isEmpty() || event.replacementLength() != 0)
        return false;
    m_ended.clear();
    return true;
}

void TextComposition::noteWritten(const QObject& field, const QInputMethodEvent& event)
{
    const QString& written = event.commitString();
    if (!event.preeditString().isEmpty() || (!written.isEmpty() && written != m_ended))
        m_ended.clear();
    if (written.isEmpty() || written != composedText(field))
        return;
    m_written = written;
    // Text that the input method itself has written is not followed by a loss of the keyboard at
    // once.
    QMetaObject::invokeMethod(
        this, [this] { m_written.clear(); }, Qt::QueuedConnection);
}

} // namespace kelpa
