#include "views/controls/TextComposition.h"

#include "views/controls/FieldLimit.h"

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

/// The text that a program offers there; empty for none. Waits for its answer; the toolkit, which
/// requests the text in several formats, would wait for each of them anew where none comes.
QString offeredText(QClipboard::Mode mode)
{
    const QMimeData* const content = QGuiApplication::clipboard()->mimeData(mode);
    return content != nullptr && !content->formats().isEmpty() ? content->text() : QString();
}

QString composedText(const QObject& field)
{
    return field.property("preeditText").toString();
}

int selectedLength(const QObject& field)
{
    return field.property("selectionEnd").toInt() - field.property("selectionStart").toInt();
}

/// Whether the field takes `written` units more in place of `replaced`; it is told otherwise.
bool takes(QQuickItem& field, qsizetype written, qsizetype replaced)
{
    const qsizetype length = field.property("length").toInt();
    if (written <= replaced || length - replaced + written <= longestFieldText)
        return true;
    QMetaObject::invokeMethod(&field, "refuseText");
    return false;
}

bool canPaste(QQuickItem& field, QClipboard::Mode mode)
{
    const qsizetype length = offeredText(mode).size();
    // The middle button replaces nothing.
    const int replaced = mode == QClipboard::Clipboard ? selectedLength(field) : 0;
    return length > 0 && takes(field, length, replaced);
}

/// The number of units that a key writes into a field.
qsizetype writtenBy(const QKeyEvent& key)
{
    const QString text = key.text();
    const bool isCommand = key.modifiers().testFlag(Qt::ControlModifier) || text.isEmpty() ||
                           text.front().category() == QChar::Other_Control;
    return isCommand ? 0 : text.size();
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

int TextComposition::longestText()
{
    return static_cast<int>(longestFieldText);
}

void TextComposition::paste(QQuickItem* field)
{
    if (field != nullptr && canPaste(*field, QClipboard::Clipboard))
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

bool TextComposition::isVainPaste(QQuickItem& field, const QEvent& event)
{
    if (event.type() == QEvent::KeyPress) {
        const auto& press = static_cast<const QKeyEvent&>(event);
        if (!press.matches(QKeySequence::Paste))
            return false;
        // A held key does not wait again.
        if (!press.isAutoRepeat() || !m_isPasteVain)
            m_isPasteVain = !canPaste(field, QClipboard::Clipboard);
        return m_isPasteVain;
    }
    return event.type() == QEvent::MouseButtonRelease &&
           static_cast<const QMouseEvent&>(event).button() == Qt::MiddleButton &&
           !canPaste(field, QClipboard::Selection);
}

bool TextComposition::isRefused(QQuickItem& field, const QEvent& event)
{
    if (event.type() == QEvent::KeyPress)
        return !takes(field, writtenBy(static_cast<const QKeyEvent&>(event)),
                      selectedLength(field));
    if (event.type() != QEvent::InputMethod)
        return false;
    const auto& what = static_cast<const QInputMethodEvent&>(event);
    if (takes(field, what.commitString().size(), selectedLength(field) + what.replacementLength()))
        return false;
    // Ends the composition as the event would have done.
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(&field, &nothing);
    return true;
}

bool TextComposition::eventFilter(QObject* watched, QEvent* event)
{
    auto& field = static_cast<QQuickItem&>(*watched);
    if (isVainPaste(field, *event) || isRefused(field, *event))
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
