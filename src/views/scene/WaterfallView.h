// The rows of a model as items in columns of equal width. Only what stands in a stripe of the view,
// as a rule what a scrolling view shows of it, has items.
#pragma once

#include "layout/WaterfallGeometry.h"
#include "views/scene/WaterfallDelegate.h"
#include "views/scene/WaterfallItems.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QVariant>
#include <QVariantAnimation>
#include <QtQmlIntegration/qqmlintegration.h>

#include <vector>

namespace kelpa {

/// Lengths in points, in the view's own coordinates. Main thread.
/// An item's width is that of its column, on whole pixels. Without `fixedItemHeight` a row takes
/// the implicit height of its item, which the item may reach by a motion of its own, and keeps it
/// while it has none. Rows that change their places move there within `motionTime`.
class WaterfallView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_CLASSINFO("DefaultProperty", "delegates")

    /// A QAbstractItemModel.
    Q_PROPERTY(QVariant model READ modelValue WRITE setModelValue NOTIFY modelChanged FINAL)
    Q_PROPERTY(QQmlListProperty<kelpa::WaterfallDelegate> delegates READ delegates FINAL)
    Q_PROPERTY(double minimumColumnWidth READ minimumColumnWidth WRITE setMinimumColumnWidth NOTIFY
                   layoutChanged FINAL)
    Q_PROPERTY(double spacing READ spacing WRITE setSpacing NOTIFY layoutChanged FINAL)
    /// 0 for none.
    Q_PROPERTY(int fixedColumnCount READ fixedColumnCount WRITE setFixedColumnCount NOTIFY
                   layoutChanged FINAL)
    Q_PROPERTY(double fixedItemHeight READ fixedItemHeight WRITE setFixedItemHeight NOTIFY
                   layoutChanged FINAL)
    /// Of rows that have never had an item.
    Q_PROPERTY(double assumedHeight MEMBER m_assumedHeight FINAL)
    /// The stripe in which rows have items.
    Q_PROPERTY(double visibleFrom READ visibleFrom WRITE setVisibleFrom NOTIFY stripeChanged FINAL)
    Q_PROPERTY(double visibleTo READ visibleTo WRITE setVisibleTo NOTIFY stripeChanged FINAL)
    /// The row that has an item wherever it is; -1 for none.
    Q_PROPERTY(int pinnedRow READ pinnedRow WRITE setPinnedRow NOTIFY pinnedRowChanged FINAL)
    /// Milliseconds; 0 for no motion.
    Q_PROPERTY(int motionTime MEMBER m_motionTime FINAL)
    /// How many rows have items.
    Q_PROPERTY(int itemCount READ itemCount NOTIFY itemCountChanged FINAL)
    Q_PROPERTY(bool isMoving READ isMoving NOTIFY isMovingChanged FINAL)

public:
    explicit WaterfallView(QQuickItem* parent = nullptr);
    ~WaterfallView() override;

    QVariant modelValue() const { return QVariant::fromValue<QObject*>(m_model); }
    /// Anything but a model is none.
    void setModelValue(const QVariant& model);
    void setModel(QAbstractItemModel* model);
    QQmlListProperty<WaterfallDelegate> delegates();
    double minimumColumnWidth() const { return m_geometry.layout().minimumColumnWidth; }
    void setMinimumColumnWidth(double width);
    double spacing() const { return m_geometry.layout().spacing; }
    void setSpacing(double spacing);
    int fixedColumnCount() const { return m_geometry.layout().fixedColumnCount.value_or(0); }
    void setFixedColumnCount(int count);
    double fixedItemHeight() const { return m_geometry.layout().fixedItemHeight.value_or(0); }
    void setFixedItemHeight(double height);
    double visibleFrom() const { return m_visibleFrom; }
    void setVisibleFrom(double top);
    double visibleTo() const { return m_visibleTo; }
    void setVisibleTo(double bottom);
    int pinnedRow() const { return m_pinnedRow; }
    void setPinnedRow(int row);
    int itemCount() const { return static_cast<int>(m_shown.size()); }
    bool isMoving() const { return m_motion.state() == QAbstractAnimation::Running; }

    /// Where the row stands, or will when nothing moves any more, whether or not it has an item;
    /// empty for a row that there is not.
    Q_INVOKABLE QRectF rowRect(int row);
    /// Null for a row without one.
    Q_INVOKABLE QQuickItem* itemAtRow(int row) const;
    /// The row whose item is `item` or holds it; -1 for none, as for null.
    Q_INVOKABLE int rowOf(const QQuickItem* item) const;
    /// Does at once what is otherwise done before the next frame.
    Q_INVOKABLE void layOut();

Q_SIGNALS:
    void modelChanged();
    void layoutChanged();
    void stripeChanged();
    void pinnedRowChanged();
    void itemCountChanged();
    void isMovingChanged();
    /// An item shows a row from now on, in its place. Only from here on it can take the focus:
    /// while an item is put into a window, the toolkit sorts out by itself where the focus is.
    void itemShown(QQuickItem* item);
    /// The row of the item in which the keyboard is has been removed, and the item goes now.
    void focusedRowRemoved(int row, QQuickItem* item);

private Q_SLOTS:
    void pinChanged();

protected:
    void updatePolish() override;
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    struct Shown
    {
        int row = 0;
        QQuickItem* item = nullptr;
        const WaterfallDelegate* delegate = nullptr;
        /// Of the motion, also of one that has ended.
        QPointF from;
        QPointF to;
        /// Made in this pass, and not seen before.
        bool isNew = false;
    };
    enum class Arrival { jump, move };

    void setLayout(const WaterfallLayout& layout);
    void connectModel();
    void resetRows();
    void insertRows(int first, int last);
    void removeRows(int first, int last);
    void announceFocusedRow(int first, int last);
    void moveRows(int first, int last, int before);
    void changeRows(int first, int last);
    /// Rows or their geometry are not as they were.
    void markSoiled();

    std::vector<Shown>::iterator shownAt(int row);
    const WaterfallDelegate* delegateOf(int row) const;
    void show(int row, QPointF place);
    void giveBack(const Shown& shown);
    bool canLayOut() const;
    /// Where the row's item stands: its frame, with edges on whole pixels, so that lines are sharp.
    QRectF itemFrame(int row) const;
    bool holds(const Shown& shown, const QQuickItem* item) const;
    bool isInStripe(const QRectF& rect) const;
    bool mustStay(const Shown& shown) const;
    void takeHeight(QQuickItem& item);
    void settle();
    void bringMovedIn();
    void placeShown(Arrival arrival);
    bool fillStripe();
    void emptyOutside();
    void stackInOrder();
    void advance(double progress);

    WaterfallGeometry m_geometry{WaterfallLayout{1, 0, std::nullopt, std::nullopt}};
    WaterfallItems m_items;
    QPointer<QAbstractItemModel> m_model;
    QList<WaterfallDelegate*> m_delegates;
    /// By ascending rows.
    std::vector<Shown> m_shown;
    /// Not announced yet.
    QList<QPointer<QQuickItem>> m_arrived;
    QList<WaterfallGeometry::Change> m_changes;
    QVariantAnimation m_motion;
    double m_assumedHeight = 0;
    double m_visibleFrom = 0;
    double m_visibleTo = 0;
    int m_pinnedRow = -1;
    int m_motionTime = 0;
    /// Nothing has been seen yet that could move.
    bool m_isFresh = true;
    bool m_isLayingOut = false;
};

} // namespace kelpa
