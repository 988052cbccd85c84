// A small window with the board's event filter.
#pragma once

#include "shell/BoardInput.h"
#include "support/StoreFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace kelpa::test {

/// A window with a field, a button and a card like the board's, and an area that takes no focus.
inline const QByteArray boardScene =
    "import QtQuick\n"
    "import QtQuick.Controls.Basic\n"
    "import QtQuick.Templates as T\n"
    "ApplicationWindow { width: 400; height: 300; visible: true\n"
    "  property int presses: 0; readonly property Item overlay: T.Overlay.overlay\n"
    "  TextField { objectName: 'field'; x: 10; y: 10; width: 200; height: 40\n"
    "    readonly property bool isComposing: preeditText.length > 0 }\n"
    "  FocusScope { objectName: 'row'; Item {}\n"
    "    TextField { objectName: 'edited'; x: 220; y: 10; width: 100; height: 40; focus: true } }\n"
    "  Button { objectName: 'button'; x: 10; y: 100; width: 100; height: 40\n"
    "    readonly property bool isButton: true\n"
    "    onClicked: ++parent.Window.window.presses }\n"
    "  Control { objectName: 'card'; x: 10; y: 160; width: 100; height: 40; focusPolicy: "
    "Qt.TabFocus\n"
    "    property int returns: 0; property int menus: 0\n"
    "    Keys.onReturnPressed: ++returns\n"
    "    Keys.onMenuPressed: ++menus }\n"
    "  FocusScope { id: group; x: 220; y: 60; width: 100; height: 40\n"
    "    property int leavings: 0; objectName: 'group'\n"
    "    onActiveFocusChanged: if (!activeFocus && Window.active) ++leavings\n"
    "    TextField { objectName: 'written'; width: 60; height: 40; focus: true }\n"
    "    Button { x: 60; width: 40; height: 40; onClicked: ++parent.Window.window.presses } }\n"
    "  Popup { objectName: 'sheet'; x: 10; y: 220; focus: true\n"
    "    TextField { objectName: 'inSheet' } }\n"
    "  Menu { objectName: 'menu'; MenuItem { text: 'a' } MenuItem { text: 'b' } }\n"
    "}\n";

class BoardInputTest : public StoreFixture
{
protected:
    void SetUp() override
    {
        QQmlComponent component(&engine);
        component.setData(boardScene, QUrl());
        window.reset(qobject_cast<QQuickWindow*>(component.create()));
        ASSERT_NE(window, nullptr) << qPrintable(component.errorString());
        const auto* const popups = window->property("overlay").value<QQuickItem*>();
        ASSERT_NE(popups, nullptr);
        input = std::make_unique<BoardInput>(*window, *popups, store());
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    void TearDown() override
    {
        input.reset();
        window.reset();
    }

    QQuickItem* item(const char* name) const
    {
        return window->findChild<QQuickItem*>(QString::fromLatin1(name));
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.get(), key, modifiers);
    }

    /// The auto-repeat events of a held key.
    void hold(Qt::Key key)
    {
        QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window.get(), &repeated);
    }

    void clickAt(const QPoint& place)
    {
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, place);
    }

    void goElsewhereAndBack()
    {
        QWindow elsewhere;
        elsewhere.show();
        elsewhere.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// How often the group has lost the focus to another item of the window.
    int leavings() const { return item("group")->property("leavings").toInt(); }

    QString typedText() const { return item("field")->property("text").toString(); }

    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<BoardInput> input;
};

} // namespace kelpa::test
