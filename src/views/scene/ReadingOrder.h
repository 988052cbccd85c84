// Reading order: assistive programs and the Tab key go by the stacking order of sibling items,
// which at first is the order in which they were created. Here it follows the order of what they
// show.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Stacks siblings in the order of the list; an item that is already in order is not restacked.
void stackSiblings(const QList<QQuickItem*>& items);

/// Stacks the items of a container in the order of their `z`, which a delegate binds to its index.
/// Changes within one turn of the event loop are coalesced and take effect after it. Main thread.
class ReadingOrder : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    /// For a view, its `contentItem`. It may be destroyed before this is.
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
