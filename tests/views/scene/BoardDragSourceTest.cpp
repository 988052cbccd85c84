// The drag that a press and a move begin: its text, its picture and its hot spot.
#include "views/scene/BoardDragSource.h"

#include "views/ViewTypes.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPixmap>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace kelpa::test {
namespace {

/// Records each drag instead of running it.
class RecordingSource : public BoardDragSource
{
public:
    QStringList texts;
    QPixmap pixmap;
    QPoint hotSpot;
    std::function<void()> whileDragging;
    Qt::DropAction result = Qt::MoveAction;

protected:
    Qt::DropAction carryOut(QDrag& drag) override
    {
        EXPECT_TRUE(isDragging());
        texts.append(drag.mimeData()->text());
        pixmap = drag.pixmap();
        hotSpot = drag.hotSpot();
        // One drag at a time.
        this->drag(QStringLiteral("another"), {}, 1, {});
        if (whileDragging)
            whileDragging();
        drag.deleteLater();
        return result;
    }
};

/// Keeps every key from the windows, as the toolkit does during a drag.
class KeyEater : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    }
};

const QByteArray scene = "import QtQuick\n"
                         "import Kelpa.Scene\n"
                         "import Kelpa.Controls\n"
                         "Window { id: root; width: 300; height: 200; visible: true\n"
                         "  property BoardDragSource source\n"
                         "  Item { id: face; x: 20; y: 10; width: 100; height: 40\n"
                         "    Rectangle { width: 0.5; height: 40; color: 'black' }\n"
                         "    Rectangle { x: 0.5; width: 99.5; height: 40; color: 'white' } }\n"
                         "  DragArea { objectName: 'area'; anchors.fill: parent; picture: face\n"
                         "    dragSource: root.source; text: 'dragged' } }\n";

class Dragging : public testing::Test
{
protected:
    void SetUp() override
    {
        registerViewTypes();
        engine.addImportPath(QStringLiteral(":/qt/qml"));
        QQmlComponent component(&engine);
        component.setData(scene, QUrl());
        window.reset(qobject_cast<QQuickWindow*>(component.createWithInitialProperties(
            {{QStringLiteral("source"), QVariant::fromValue<BoardDragSource*>(&source)}})));
        ASSERT_NE(window, nullptr) << qPrintable(component.errorString());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    void pressAndMoveOn(const QPoint& place)
    {
        QTest::mousePress(window.get(), Qt::LeftButton, {}, place);
        QTest::mouseMove(window.get(), place + QPoint(40, 0));
    }

    QQmlEngine engine;
    RecordingSource source;
    std::unique_ptr<QQuickWindow> window;
};

TEST_F(Dragging, The_picture_has_the_pixels_of_the_screen)
{
    const double ratio = window->devicePixelRatio();
    pressAndMoveOn({50, 30});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !source.texts.isEmpty(); }));
    QTest::mouseRelease(window.get(), Qt::LeftButton);
    EXPECT_EQ(source.texts, QStringList{QStringLiteral("dragged")});
    EXPECT_FALSE(source.isDragging());
    EXPECT_EQ(source.hotSpot, QPoint(30, 20));
    EXPECT_EQ(source.pixmap.deviceIndependentSize(), QSizeF(100, 40));
    EXPECT_EQ(source.pixmap.size(), QSize(100, 40) * ratio);
    if (ratio == 2) {
        const QImage image = source.pixmap.toImage();
        EXPECT_EQ(image.pixelColor(0, 40), QColor(Qt::black)) << "half a point is one pixel";
        EXPECT_EQ(image.pixelColor(1, 40), QColor(Qt::white));
    }
}

TEST_F(Dragging, What_nothing_has_taken_is_announced_when_the_drag_has_ended)
{
    const QSignalSpy refusals(&source, &BoardDragSource::refused);
    source.drag(QStringLiteral("taken"), {}, 1, {});
    EXPECT_EQ(refusals.count(), 0);
    bool wasDragging = true;
    QObject::connect(&source, &BoardDragSource::refused, &source,
                     [&] { wasDragging = source.isDragging(); });
    source.result = Qt::IgnoreAction;
    source.drag(QStringLiteral("refused"), {}, 1, {});
    ASSERT_EQ(refusals.count(), 1);
    EXPECT_EQ(refusals.first().first().toString(), QStringLiteral("refused"));
    EXPECT_FALSE(wasDragging);
}

TEST_F(Dragging, What_is_given_up_by_Escape_has_not_been_refused)
{
    const QSignalSpy refusals(&source, &BoardDragSource::refused);
    const auto dragAndPress = [this](Qt::Key key) {
        source.whileDragging = [this, key] {
            KeyEater toolkit;
            QCoreApplication::instance()->installEventFilter(&toolkit);
            QCoreApplication::processEvents();
            QTest::keyPress(window.get(), key);
        };
        source.drag(QStringLiteral("dragged"), {}, 1, {});
    };
    source.result = Qt::IgnoreAction;
    dragAndPress(Qt::Key_Escape);
    EXPECT_EQ(refusals.count(), 0);
    dragAndPress(Qt::Key_Shift);
    EXPECT_EQ(refusals.count(), 1);
}

TEST_F(Dragging, What_is_held_beside_its_picture_is_held_at_the_edge_of_it)
{
    pressAndMoveOn({200, 150});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !source.texts.isEmpty(); }));
    QTest::mouseRelease(window.get(), Qt::LeftButton);
    EXPECT_EQ(source.hotSpot, QPoint(100, 40));
}

TEST_F(Dragging, The_place_below_the_pointer_is_named_until_the_pointer_leaves_it)
{
    QQuickItem first;
    QQuickItem second;
    const QSignalSpy changes(&source, &BoardDragSource::destinationChanged);
    source.nameDestination(&first, QStringLiteral("Home"));
    EXPECT_EQ(source.destination(), QStringLiteral("Home"));
    // The next place is entered before the pointer has left the one around it.
    source.nameDestination(&second, QStringLiteral("Work"));
    source.leaveDestination(&first);
    EXPECT_EQ(source.destination(), QStringLiteral("Work"));
    source.leaveDestination(&second);
    EXPECT_EQ(source.destination(), QString());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(Dragging, A_drag_that_has_ended_names_no_place_and_follows_no_pointer)
{
    QQuickItem place;
    const auto moveTo = [this](QPoint position) {
        QMimeData data;
        QDragMoveEvent move(position, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &move);
    };
    source.setParentItem(window->contentItem());
    source.whileDragging = [&] {
        moveTo({120, 90});
        EXPECT_EQ(source.pointer(), QPointF(120, 90));
        source.nameDestination(&place, QStringLiteral("Home"));
    };
    pressAndMoveOn({50, 30});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !source.texts.isEmpty(); }));
    QTest::mouseRelease(window.get(), Qt::LeftButton);
    EXPECT_EQ(source.destination(), QString());
    moveTo({10, 10});
    EXPECT_EQ(source.pointer(), QPointF(120, 90));
    source.setParentItem(nullptr);
}

TEST_F(Dragging, What_goes_away_before_its_picture_is_there_is_not_dragged)
{
    QSignalSpy warnings(&engine, &QQmlEngine::warnings);
    pressAndMoveOn({50, 30});
    delete window->findChild<QObject*>(QStringLiteral("area"));
    QSignalSpy frames(window.get(), &QQuickWindow::frameSwapped);
    ASSERT_TRUE(frames.wait());
    window->update();
    ASSERT_TRUE(frames.wait());
    QTest::mouseRelease(window.get(), Qt::LeftButton);
    EXPECT_EQ(source.texts, QStringList());
    EXPECT_EQ(warnings.size(), 0);
}

} // namespace
} // namespace kelpa::test
