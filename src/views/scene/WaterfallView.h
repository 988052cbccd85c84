// A virtualised list that shows the rows of a model as items in columns of equal width.
// WaterfallRows holds the rows that have items, WaterfallGeometry computes their positions, and
// WaterfallMotion moves them there; this type follows the model and runs the passes.
#pragma once

#include "layout/WaterfallGeometry.h"
#include "views/scene/WaterfallDelegate.h"
#include "views/scene/WaterfallMotion.h"
#include "views/scene/WaterfallRows.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QVariant>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Lengths in points, in the view's own coordinates. Main thread.
/// An item's width is that of its column, on whole pixels. Without `fixedItemHeight` a row has the
/// implicit height of its item, which the item may reach by a motion of its own, and keeps it while
/// it has no item. Rows whose places change move there within `motionTime`.
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
    /// 0 for none.
    Q_PROPERTY(double fixedItemHeight READ fixedItemHeight WRITE setFixedItemHeight NOTIFY
                   layoutChanged FINAL)
    /// Of rows that have never had an item.
    Q_PROPERTY(double assumedHeight MEMBER m_assumedHeight FINAL)
    /// The height that the rows can fill without scrolling: a row whose item declares a
    /// `fullHeight` shows more in it. 0 for none.
    Q_PROPERTY(double room READ room WRITE setRoom NOTIFY layoutChanged FINAL)
    /// The visible range: rows that reach into it have items.
    Q_PROPERTY(
        double visibleFrom READ visibleFrom WRITE setVisibleFrom NOTIFY visibleRangeChanged FINAL)
    Q_PROPERTY(double visibleTo READ visibleTo WRITE setVisibleTo NOTIFY visibleRangeChanged FINAL)
    /// The row that has an item wherever it is; -1 for none.
    Q_PROPERTY(int pinnedRow READ pinnedRow WRITE setPinnedRow NOTIFY pinnedRowChanged FINAL)
    /// Milliseconds; 0 for no motion.
    Q_PROPERTY(int motionTime MEMBER m_motionTime FINAL)
    /// Milliseconds for which rows that change places all the time move.
    Q_PROPERTY(int patience MEMBER m_patience FINAL)
    /// How many rows have items.
    Q_PROPERTY(int itemCount READ itemCount NOTIFY itemCountChanged FINAL)
    Q_PROPERTY(bool isMoving READ isMoving NOTIFY isMovingChanged FINAL)
    /// Whether rows of `fixedItemHeight` have changed places for so long, one change soon after the
    /// other, that there is no motion for now.
    Q_PROPERTY(bool isRestless READ isRestless NOTIFY isRestlessChanged FINAL)

public:
    explicit WaterfallView(QQuickItem* parent = nullptr);

    QVariant modelValue() const { return QVariant::fromValue<QObject*>(m_model); }
    /// Anything but a model counts as none.
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
    double room() const { return m_geometry.room(); }
    void setRoom(double room);
    double visibleFrom() const { return m_visibleFrom; }
    void setVisibleFrom(double top);
    double visibleTo() const { return m_visibleTo; }
    void setVisibleTo(double bottom);
    int pinnedRow() const { return m_pinnedRow; }
    void setPinnedRow(int row);
    int itemCount() const { return static_cast<int>(m_rows.size()); }
    bool isMoving() const { return m_motion.isRunning(); }
    bool isRestless() const { return m_motion.isRestless(); }

    /// The position of the row, now or when nothing moves any more, whether or not it has an item;
    /// empty for a row that does not exist.
    Q_INVOKABLE QRectF rowRect(int row);
    /// Null for a row without an item.
    Q_INVOKABLE QQuickItem* itemAtRow(int row) const;
    /// The row whose item is `item` or holds it; -1 for none, as for null.
    Q_INVOKABLE int rowOf(const QQuickItem* item) const;
    /// Runs the pass that otherwise runs before the next frame.
    Q_INVOKABLE void layOut();

Q_SIGNALS:
    void modelChanged();
    void layoutChanged();
    void visibleRangeChanged();
    void pinnedRowChanged();
    void itemCountChanged();
    void isMovingChanged();
    void isRestlessChanged();
    /// An item shows a row from now on, in its place. Only from here on can it take the focus:
    /// while an item is put into a window, the toolkit itself decides where the focus is.
    void itemShown(QQuickItem* item);
    /// The row of the item that has the keyboard focus has been removed, and the item goes now.
    void focusedRowRemoved(int row, QQuickItem* item);

protected:
    void updatePolish() override;
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    enum class Transition { immediate, animated };

    void setLayout(const WaterfallLayout& layout);
    /// Rows or their geometry have changed: another pass is needed.
    void invalidateLayout();

    // Following the model: WaterfallViewModel.cpp.
    void connectModel();
    void resetRows();
    void insertRows(int first, int last);
    void removeRows(int first, int last);
    void reportFocusedRow(int first, int last);
    void moveRows(int first, int last, int before);
    void changeRows(int first, int last);

    // A pass: WaterfallViewLayout.cpp.
    bool canLayOut() const;
    void updateGeometry();
    Transition transition() const;
    void showRowsInMotion();
    void applyGeometry();
    void grantHeights();
    bool showVisibleRows();
    void releaseHiddenRows();
    bool mustKeepItem(const WaterfallRow& each) const;
    bool isInVisibleRange(const QRectF& rect) const;
    QRectF itemFrame(int row) const;
    void show(int row, QPointF position, bool isNew);
    void updateRowHeight(QQuickItem& item);
    void stackInRowOrder();
    void reportShownItems();

    WaterfallGeometry m_geometry{WaterfallLayout{1, 0, std::nullopt, std::nullopt}};
    /// Since the last pass.
    QList<WaterfallGeometry::Change> m_changes;
    WaterfallRows m_rows;
    WaterfallMotion m_motion;
    QPointer<QAbstractItemModel> m_model;
    QList<WaterfallDelegate*> m_delegates;
    /// Not reported yet.
    QList<QPointer<QQuickItem>> m_shownItems;
    double m_assumedHeight = 0;
    double m_visibleFrom = 0;
    double m_visibleTo = 0;
    int m_pinnedRow = -1;
    int m_motionTime = 0;
    int m_patience = WaterfallMotion::defaultPatience;
    /// The next pass moves nothing: no row has been seen in a place that it could leave.
    bool m_isFirstPass = true;
    bool m_isLayingOut = false;
};

} // namespace kelpa
