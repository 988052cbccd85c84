// Has assistive programs read a view's items in the order of their `z`.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// The items of a container are told in the order in which they were made, wherever a view has
/// placed them since. This brings them into the order of their `z`, which a delegate binds to its
/// index; soon after a change, and once for all changes of one turn of the event loop. Main thread.
class ReadingOrder : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    /// For a view, its `contentItem`. It may be gone before this is.
    Q_PROPERTY(QQuickItem* container READ container WRITE setContainer NOTIFY containerChanged)

public:
    explicit ReadingOrder(QObject* parent = nullptr);

    QQuickItem* container() const { return m_container; }
    void setContainer(QQuickItem* container);

Q_SIGNALS:
    void containerChanged();

private:
    void watchChildren();
    void schedule();
    void apply();

    QPointer<QQuickItem> m_container;
    bool m_isScheduled = false;
};

} // namespace kelpa
