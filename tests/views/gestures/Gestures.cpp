// What a person does at random.
#include "views/gestures/GestureSession.h"

#include <QInputMethodEvent>
#include <QKeySequence>
#include <QTest>
#include <QWheelEvent>

namespace kelpa::test {

using namespace std::chrono_literals;

QPoint GestureSession::placeOn(const QList<QQuickItem*>& items)
{
    const QRectF ground(QPointF(0, 0), QSizeF(m_window->size()));
    QList<QRectF> places;
    for (const QQuickItem* const item : items) {
        const QRectF place = item->mapRectToScene(item->boundingRect()) & ground;
        if (place.width() >= 1 && place.height() >= 1)
            places.append(place);
    }
    if (places.isEmpty())
        return {below(m_window->width()), below(m_window->height())};
    const QRectF place = places[below(static_cast<int>(places.size()))];
    return {static_cast<int>(place.left()) + below(static_cast<int>(place.width())),
            static_cast<int>(place.top()) + below(static_cast<int>(place.height()))};
}

QPoint GestureSession::anyPlace()
{
    if (chance(6))
        return placeOn({});
    const auto* const overlay = m_window->property("overlay").value<QQuickItem*>();
    QList<QQuickItem*> items;
    for (QQuickItem* const each : overlay->childItems())
        items += shownItems(each);
    if (items.isEmpty() || chance(6))
        items = shownItems(m_window->contentItem());
    items.removeIf([](const QQuickItem* item) {
        return item->acceptedMouseButtons() == Qt::NoButton || !item->isEnabled();
    });
    return placeOn(items);
}

std::string GestureSession::pressKey()
{
    struct Stroke
    {
        Qt::Key key = Qt::Key_unknown;
        Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    };
    static constexpr std::array often{
        Stroke{Qt::Key_Left},  Stroke{Qt::Key_Right},  Stroke{Qt::Key_Up},  Stroke{Qt::Key_Down},
        Stroke{Qt::Key_Space}, Stroke{Qt::Key_Return}, Stroke{Qt::Key_Tab}, Stroke{Qt::Key_Escape}};
    static const std::array seldom{
        Stroke{Qt::Key_Backtab, Qt::ShiftModifier},
        Stroke{Qt::Key_Enter},
        Stroke{Qt::Key_Delete},
        Stroke{Qt::Key_Backspace},
        Stroke{Qt::Key_Home},
        Stroke{Qt::Key_End},
        Stroke{Qt::Key_PageUp},
        Stroke{Qt::Key_PageDown},
        Stroke{Qt::Key_Menu},
        Stroke{Qt::Key_F10, Qt::ShiftModifier},
        Stroke{Qt::Key_F1},
        Stroke{Qt::Key_F2},
        Stroke{Qt::Key_Left, Qt::AltModifier},
        Stroke{Qt::Key_Right, Qt::AltModifier},
        Stroke{Qt::Key_Up, Qt::AltModifier},
        Stroke{Qt::Key_Down, Qt::AltModifier},
        Stroke{Qt::Key_Z, Qt::ControlModifier},
        Stroke{Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier},
        Stroke{Qt::Key_Y, Qt::ControlModifier},
        Stroke{Qt::Key_A, Qt::ControlModifier},
        Stroke{Qt::Key_C, Qt::ControlModifier},
        Stroke{Qt::Key_X, Qt::ControlModifier},
        Stroke{Qt::Key_V, Qt::ControlModifier},
        Stroke{Qt::Key_F, Qt::ControlModifier},
        Stroke{Qt::Key_N, Qt::ControlModifier},
        Stroke{Qt::Key_B, Qt::ControlModifier},
        Stroke{Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier},
        Stroke{Qt::Key_G, Qt::ControlModifier},
        Stroke{Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier},
        Stroke{Qt::Key_Return, Qt::ControlModifier},
        Stroke{Qt::Key_Q, Qt::ControlModifier},
    };
    const Stroke stroke = chance(2) ? any(often) : any(seldom);
    const int times = chance(4) ? 1 + below(5) : 1;
    for (int i = 0; i < times; ++i)
        QTest::keyClick(m_window, stroke.key, stroke.modifiers);
    count("key");
    return "press " + QKeySequence(stroke.modifiers | stroke.key).toString().toStdString() +
           (times == 1 ? "" : ", " + std::to_string(times) + " times");
}

std::string GestureSession::write()
{
    static const std::array words{"ta", "gar", "w 3", "zz", "x", "1", "# ", "new one"};
    const char* const word = any(words);
    for (const char* letter = word; *letter != '\0'; ++letter)
        QTest::keyClick(m_window, *letter);
    if (chance(2))
        QTest::keyClick(m_window, Qt::Key_Return);
    count("writing");
    return std::string("write \"") + word + '"';
}

std::string GestureSession::compose()
{
    QObject* const field = QGuiApplication::focusObject();
    if (field == nullptr)
        return "compose nowhere";
    QInputMethodEvent begun(QStringLiteral("にほ"), {});
    QCoreApplication::sendEvent(field, &begun);
    if (chance(3))
        return "begin to compose, then " + (chance(2) ? pressKey() : click());
    count("composition");
    QInputMethodEvent ended;
    ended.setCommitString(chance(3) ? QString() : QStringLiteral("日本"));
    // The field may have gone meanwhile.
    if (QObject* const holder = QGuiApplication::focusObject())
        QCoreApplication::sendEvent(holder, &ended);
    return "compose";
}

std::string GestureSession::click()
{
    const QPoint place = anyPlace();
    const Qt::MouseButton button = chance(5) ? Qt::RightButton : Qt::LeftButton;
    QTest::mouseMove(m_window, place);
    ManualViewTime::deliverEvents();
    std::string name = button == Qt::RightButton ? "right click" : "click";
    if (chance(8)) {
        name = "double " + name;
        QTest::mouseDClick(m_window, button, {}, place);
    } else if (chance(8)) {
        name = "hover";
    } else {
        // Behind a menu or a sheet, the field of the board goes on waiting.
        const auto* const overlay = m_window->property("overlay").value<QQuickItem*>();
        const QQuickItem* const holder = m_window->activeFocusItem();
        if (holder == nullptr || !overlay->isAncestorOf(holder))
            m_mayBeWriting = false;
        QTest::mouseClick(m_window, button, {}, place);
    }
    count(name);
    return name + " at " + std::to_string(place.x()) + "," + std::to_string(place.y());
}

std::string GestureSession::turnWheel()
{
    const QPoint place = anyPlace();
    const QPoint step(0, 120 * (below(7) - 3));
    QWheelEvent event(place, m_window->mapToGlobal(place), {}, step, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_window, &event);
    count("wheel");
    return "turn the wheel";
}

std::string GestureSession::resize()
{
    m_window->resize(900 + below(5) * 150, 620 + below(3) * 120);
    count("resize");
    return "resize";
}

std::string GestureSession::leaveAndComeBack()
{
    m_mayBeWriting = true;
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    ManualViewTime::deliverEvents();
    if (chance(2))
        changeFromOutside();
    m_window->requestActivate();
    ManualViewTime::deliverEvents();
    count("other program in front");
    return "go to another program and come back";
}

std::string GestureSession::closeAndShow()
{
    m_mayBeWriting = true;
    m_window->close();
    ManualViewTime::deliverEvents();
    if (chance(2))
        changeFromOutside();
    showAgain();
    count("closed and shown");
    return "close the window and show it again";
}

std::string GestureSession::letTimePass()
{
    const std::chrono::milliseconds time(any(std::array{10, 300, 1000, 6000}));
    scheduler.advance(time);
    m_time.pass(time);
    count("time");
    return std::to_string(time.count()) + " ms pass";
}

std::string GestureSession::anyGesture()
{
    const int kind = below(100);
    if (kind < 38)
        return pressKey();
    if (kind < 44)
        return write();
    if (kind < 46)
        return compose();
    if (kind < 72)
        return click();
    if (kind < 82)
        return drag();
    if (kind < 85)
        return turnWheel();
    if (kind < 86)
        return resize();
    if (kind < 87)
        return leaveAndComeBack();
    if (kind < 88)
        return closeAndShow();
    if (kind < 92)
        return changeDesktop();
    if (kind < 95)
        return changeFromOutside();
    if (kind < 97)
        return answerDialogs();
    return letTimePass();
}

} // namespace kelpa::test
