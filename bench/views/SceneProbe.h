// How benchmarks of the views measure a window's frames, find its items and send it events.
#pragma once

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSet>

#include <chrono>
#include <ctime>
#include <stdexcept>

namespace kelpa::bench {

inline double processorMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Processor time until the next frame of the window has been drawn.
template <class Cause>
double untilFrame(QQuickWindow* const* window, const Cause& cause)
{
    const double start = processorMilliseconds();
    cause();
    bool isDrawn = false;
    const auto drawn =
        QObject::connect(*window, &QQuickWindow::frameSwapped, [&isDrawn] { isDrawn = true; });
    while (!isDrawn)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(drawn);
    return processorMilliseconds() - start;
}

/// Runs the event loop until timers and motions have ended.
inline void rest()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(80);
    while (std::chrono::steady_clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// Counts all items below an object, also those of closed menus and pooled ones.
inline void collectItems(QObject& object, QSet<const QObject*>& seen, int& count)
{
    if (seen.contains(&object))
        return;
    seen.insert(&object);
    for (QObject* const child : object.children())
        collectItems(*child, seen, count);
    auto* const item = qobject_cast<QQuickItem*>(&object);
    if (item == nullptr)
        return;
    ++count;
    for (QQuickItem* const child : item->childItems())
        collectItems(*child, seen, count);
}

inline int itemCount(QQuickWindow& window)
{
    QSet<const QObject*> seen;
    int count = 0;
    collectItems(window, seen, count);
    collectItems(*window.contentItem(), seen, count);
    return count;
}

/// The first item of the type, from the back to the front; null for none.
inline QQuickItem* findItem(QQuickItem& item, const char* type)
{
    const QByteArray name = item.metaObject()->className();
    if (name == type || name.startsWith(QByteArray(type) + "_QMLTYPE"))
        return &item;
    for (QQuickItem* const child : item.childItems()) {
        if (QQuickItem* const found = findItem(*child, type))
            return found;
    }
    return nullptr;
}

/// The first row of the model whose role "kind" has that value.
inline int firstRow(const QAbstractItemModel& model, const QString& kind)
{
    const int role = model.roleNames().key("kind");
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.data(model.index(row, 0), role).toString() == kind)
            return row;
    }
    throw std::runtime_error("the board has no such target");
}

/// The first target that is highlighted, since it would accept what is dragged over it; null for
/// none.
inline const QQuickItem* highlightedTarget(const QQuickItem& item)
{
    if (item.property("isAccepting").toBool())
        return &item;
    const QList<QQuickItem*> children = item.childItems();
    for (const QQuickItem* const child : children) {
        if (const QQuickItem* const highlighted = highlightedTarget(*child))
            return highlighted;
    }
    return nullptr;
}

/// The first item of the type whose centre lies in the area, in the window's coordinates; null for
/// none.
inline const QQuickItem* shownItem(const QQuickItem& item, const char* type, const QRectF& area)
{
    if (QByteArray(item.metaObject()->className()).startsWith(QByteArray(type) + "_QMLTYPE") &&
        area.contains(item.mapToScene({item.width() / 2, item.height() / 2})))
        return &item;
    const QList<QQuickItem*> children = item.childItems();
    for (const QQuickItem* const child : children) {
        if (const QQuickItem* const found = shownItem(*child, type, area))
            return found;
    }
    return nullptr;
}

inline void sendMouse(QQuickWindow& window, QEvent::Type type, QPointF place, Qt::MouseButtons held)
{
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, window.mapToGlobal(place), changed, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

} // namespace kelpa::bench
