// The contract between a waterfall and its delegates: which component shows a row, which properties
// of the item receive the row's values, and which of its own the item reports to the view.
#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QObject>
#include <QQmlComponent>
#include <QQuickItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// What an item reports to the view that shows its row, as `WaterfallDelegate.isPinned`. Main
/// thread; the item owns it.
class WaterfallDelegateAttached : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS

    /// Whether the item stays with its row, however far that is from the visible range. The view
    /// respects it in items that declare it; in others a later assignment has no effect.
    Q_PROPERTY(bool isPinned READ isPinned WRITE setPinned NOTIFY isPinnedChanged FINAL)
    /// Whether rows within the item change places all the time, and with them its height: the view
    /// then moves no rows either. The same holds for it.
    Q_PROPERTY(bool isRestless MEMBER m_isRestless NOTIFY isRestlessChanged FINAL)
    /// Points. The height of an item while all are collapsed, and with all of its content; 0 for an
    /// item that has its implicit height only. The same holds for both.
    Q_PROPERTY(double restHeight MEMBER m_restHeight NOTIFY heightsChanged FINAL)
    Q_PROPERTY(double fullHeight MEMBER m_fullHeight NOTIFY heightsChanged FINAL)
    /// The height that the view has chosen, not less than the item's implicit height; 0 before the
    /// first pass. The item has it at the end of its motion.
    Q_PROPERTY(double grantedHeight READ grantedHeight NOTIFY grantedHeightChanged FINAL)
    /// False while the view chooses a height that nobody is to see the item reach.
    Q_PROPERTY(bool isGrantEased READ isGrantEased NOTIFY isGrantEasedChanged FINAL)

public:
    using QObject::QObject;

    bool isPinned() const { return m_isPinned; }
    void setPinned(bool isPinned);
    bool isRestless() const { return m_isRestless; }
    double restHeight() const { return m_restHeight; }
    double fullHeight() const { return m_fullHeight; }
    double grantedHeight() const { return m_grantedHeight; }
    bool isGrantEased() const { return m_isGrantEased; }
    enum class Grant { immediate, eased };
    void grant(double height, Grant how);

Q_SIGNALS:
    void isPinnedChanged();
    void isRestlessChanged();
    void heightsChanged();
    void grantedHeightChanged();
    void isGrantEasedChanged();

private:
    bool m_isPinned = false;
    bool m_isRestless = false;
    bool m_isGrantEased = true;
    double m_restHeight = 0;
    double m_fullHeight = 0;
    double m_grantedHeight = 0;

    void setGrantEased(bool isEased);
};

/// The component of all rows whose role "kind" is `kind`; of all rows when `kind` is empty.
/// An item receives the value of each role for which it has a property of the same name, and the
/// row as its property "index". Items are pooled: once its row is far away, an item receives the
/// values of another row of the same component. Main thread.
class WaterfallDelegate : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_ATTACHED(kelpa::WaterfallDelegateAttached)
    Q_CLASSINFO("DefaultProperty", "component")

    Q_PROPERTY(QString kind MEMBER m_kind FINAL)
    Q_PROPERTY(QQmlComponent* component MEMBER m_component FINAL)

public:
    using QObject::QObject;

    static WaterfallDelegateAttached* qmlAttachedProperties(QObject* item);

    /// The first of `delegates` that shows rows of the kind of `row`; null for none.
    static const WaterfallDelegate* forRow(const QList<WaterfallDelegate*>& delegates,
                                           const QAbstractItemModel& model, int row);
    /// A new item with the values of the row, `width` points wide, whose parent and owner is
    /// `view`. Null, with a warning, where the component makes none.
    QQuickItem* createItem(QQuickItem& view, const QAbstractItemModel& model, int row,
                           double width) const;
    static void writeValues(QQuickItem& item, const QAbstractItemModel& model, int row);
    static void writeIndex(QQuickItem& item, int row);
    /// Null for an item that declares no attached property.
    static WaterfallDelegateAttached* attachedTo(const QQuickItem& item);

private:
    QString m_kind;
    QQmlComponent* m_component = nullptr;
};

} // namespace kelpa
