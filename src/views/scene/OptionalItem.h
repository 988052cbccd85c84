// A part of the scene that exists only while it is wanted.
#pragma once

#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Makes one item of its component, next to itself among the children of its parent, for as long as
/// it is wanted. What most rows of a long list do without costs them little then: a Repeater of one
/// row is a model, three groups and a delegate. Unlike that one's, the item's handlers run while it
/// leaves the scene. Main thread.
class OptionalItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_CLASSINFO("DefaultProperty", "component")

    Q_PROPERTY(QQmlComponent* component MEMBER m_component FINAL)
    Q_PROPERTY(bool isWanted READ isWanted WRITE setWanted NOTIFY isWantedChanged FINAL)
    /// Null while it is not wanted, and before this item is complete.
    Q_PROPERTY(QQuickItem* item READ item NOTIFY itemChanged FINAL)

public:
    explicit OptionalItem(QQuickItem* parent = nullptr);
    ~OptionalItem() override;

    bool isWanted() const { return m_isWanted; }
    void setWanted(bool isWanted);
    QQuickItem* item() const { return m_item; }

Q_SIGNALS:
    void isWantedChanged();
    void itemChanged();

protected:
    void componentComplete() override;

private:
    void makeOrRemove();

    QQmlComponent* m_component = nullptr;
    bool m_isWanted = false;
    /// Owned by this item.
    QPointer<QQuickItem> m_item;
};

} // namespace kelpa
