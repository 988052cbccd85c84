#include "views/scene/WaterfallView.h"

#include <QEasingCurve>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

const QByteArray kindRole = QByteArrayLiteral("kind");
constexpr const char* pinProperty = "isPinned";

/// A new item may be higher than assumed and lower ones make room for more; beyond this, items
/// whose heights depend on their places wait for the next frame.
constexpr int mostPasses = 20;

} // namespace

WaterfallView::WaterfallView(QQuickItem* parent) : QQuickItem(parent), m_items(*this)
{
    m_motion.setStartValue(0.0);
    m_motion.setEndValue(1.0);
    // A spring of a response of 0.18 s and a damping of 0.86 swings past its end by less than a
    // hundredth of the way and rests after 0.2 s: on the rows of a list nobody can tell it from
    // this curve, which every other motion of the board has too.
    m_motion.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_motion, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { advance(value.toDouble()); });
    connect(&m_motion, &QVariantAnimation::stateChanged, this, [this] {
        // What was only passing through can go.
        polish();
        Q_EMIT isMovingChanged();
    });
}

WaterfallView::~WaterfallView()
{
    // They lose their parent when the list of them is gone.
    for (const Shown& each : m_shown)
        each.item->disconnect(this);
}

void WaterfallView::setModelValue(const QVariant& model)
{
    setModel(qobject_cast<QAbstractItemModel*>(model.value<QObject*>()));
}

void WaterfallView::setModel(QAbstractItemModel* model)
{
    if (m_model == model)
        return;
    if (m_model != nullptr)
        m_model->disconnect(this);
    m_model = model;
    connectModel();
    resetRows();
    Q_EMIT modelChanged();
}

QQmlListProperty<WaterfallDelegate> WaterfallView::delegates()
{
    return {this, &m_delegates};
}

void WaterfallView::setLayout(const WaterfallLayout& layout)
{
    if (layout == m_geometry.layout())
        return;
    m_geometry.setLayout(layout);
    markSoiled();
    Q_EMIT layoutChanged();
}

void WaterfallView::setMinimumColumnWidth(double width)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.minimumColumnWidth = std::max(width, 1.0);
    setLayout(layout);
}

void WaterfallView::setSpacing(double spacing)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.spacing = std::max(spacing, 0.0);
    setLayout(layout);
}

void WaterfallView::setFixedColumnCount(int count)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.fixedColumnCount = count > 0 ? std::optional(count) : std::nullopt;
    setLayout(layout);
}

void WaterfallView::setFixedItemHeight(double height)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.fixedItemHeight = height > 0 ? std::optional(height) : std::nullopt;
    setLayout(layout);
}

void WaterfallView::setVisibleFrom(double top)
{
    if (m_visibleFrom == top)
        return;
    m_visibleFrom = top;
    polish();
    Q_EMIT stripeChanged();
}

void WaterfallView::setVisibleTo(double bottom)
{
    if (m_visibleTo == bottom)
        return;
    m_visibleTo = bottom;
    polish();
    Q_EMIT stripeChanged();
}

void WaterfallView::setPinnedRow(int row)
{
    if (m_pinnedRow == row)
        return;
    m_pinnedRow = row;
    polish();
    Q_EMIT pinnedRowChanged();
}

QRectF WaterfallView::rowRect(int row)
{
    if (row < 0 || row >= m_geometry.count() || !canLayOut())
        return {};
    settle();
    return itemFrame(row);
}

QQuickItem* WaterfallView::itemAtRow(int row) const
{
    const auto found = std::ranges::lower_bound(m_shown, row, {}, &Shown::row);
    return found != m_shown.end() && found->row == row ? found->item : nullptr;
}

int WaterfallView::rowOf(const QQuickItem* item) const
{
    const auto found = std::ranges::find_if(
        m_shown, [this, item](const Shown& shown) { return holds(shown, item); });
    return found != m_shown.end() ? found->row : -1;
}

void WaterfallView::updatePolish()
{
    layOut();
}

void WaterfallView::componentComplete()
{
    QQuickItem::componentComplete();
    m_geometry.setWidth(width());
    resetRows();
}

void WaterfallView::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.width() == before.width())
        return;
    m_geometry.setWidth(now.width());
    // Cards keep up with the edge of the window.
    m_isFresh = true;
    markSoiled();
}

void WaterfallView::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        polish();
    QQuickItem::itemChange(change, value);
}

void WaterfallView::layOut()
{
    if (!isComponentComplete() || m_isLayingOut || !canLayOut())
        return;
    m_isLayingOut = true;
    const std::size_t countBefore = m_shown.size();
    const bool isSeen = !m_isFresh && m_motionTime > 0 && isVisible();
    bool isChanged = true;
    for (int pass = 0; isChanged && pass < mostPasses; ++pass) {
        settle();
        bringMovedIn();
        placeShown(isSeen ? Arrival::move : Arrival::jump);
        isChanged = fillStripe() || !m_geometry.isSettled();
    }
    emptyOutside();
    stackInOrder();
    for (Shown& each : m_shown)
        each.isNew = false;
    if (m_visibleFrom < m_visibleTo)
        m_isFresh = false;
    m_isLayingOut = false;
    if (!m_geometry.isSettled())
        polish();
    if (m_shown.size() != countBefore)
        Q_EMIT itemCountChanged();
    for (const QPointer<QQuickItem>& item : std::exchange(m_arrived, {})) {
        if (item != nullptr)
            Q_EMIT itemShown(item);
    }
}

// Columns share the width in fractions of a point.
QRectF WaterfallView::itemFrame(int row) const
{
    const double ratio = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1;
    const auto onPixel = [ratio](double edge) { return std::round(edge * ratio) / ratio; };
    const QRectF frame = m_geometry.frame(row);
    const double left = onPixel(frame.left());
    return {left, onPixel(frame.top()), onPixel(frame.right()) - left, frame.height()};
}

bool WaterfallView::canLayOut() const
{
    return m_geometry.layout().fits(m_geometry.width());
}

void WaterfallView::settle()
{
    m_changes.append(m_geometry.settle());
    setImplicitHeight(m_geometry.height());
}

/// Rows that move into the stripe, or out of it, are seen on their way.
void WaterfallView::bringMovedIn()
{
    const bool isSeen = !m_isFresh && m_motionTime > 0 && isVisible();
    for (const WaterfallGeometry::Change& change : std::exchange(m_changes, {})) {
        const auto row = static_cast<int>(change.index);
        if (!isSeen || change.before.isNull() || row >= m_geometry.count() ||
            itemAtRow(row) != nullptr)
            continue;
        if (isInStripe(change.before) || isInStripe(m_geometry.frame(row))) {
            show(row, change.before.topLeft());
            if (const auto shown = shownAt(row); shown != m_shown.end())
                shown->isNew = false;
        }
    }
}

void WaterfallView::placeShown(Arrival arrival)
{
    bool isStarting = false;
    for (Shown& each : m_shown) {
        const QRectF frame = itemFrame(each.row);
        each.item->setWidth(frame.width());
        if (m_geometry.layout().fixedItemHeight)
            each.item->setHeight(frame.height());
        if (each.to == frame.topLeft())
            continue;
        each.to = frame.topLeft();
        if (arrival == Arrival::jump || each.isNew)
            each.item->setPosition(each.to);
        else
            isStarting = true;
    }
    if (arrival == Arrival::jump && isMoving()) {
        m_motion.stop();
        for (const Shown& each : m_shown)
            each.item->setPosition(each.to);
    }
    if (!isStarting)
        return;
    // Also what moves already goes on from where it is.
    m_motion.stop();
    for (Shown& each : m_shown)
        each.from = each.item->position();
    m_motion.setDuration(m_motionTime);
    m_motion.start();
}

void WaterfallView::advance(double progress)
{
    for (const Shown& each : m_shown) {
        if (each.item->position() != each.to)
            each.item->setPosition(each.from + (each.to - each.from) * progress);
    }
}

/// True when it made an item.
bool WaterfallView::fillStripe()
{
    bool isFilling = false;
    QList<qsizetype> wanted = m_geometry.between(m_visibleFrom, m_visibleTo);
    if (m_pinnedRow >= 0 && m_pinnedRow < m_geometry.count())
        wanted.append(m_pinnedRow);
    for (const qsizetype index : std::as_const(wanted)) {
        const auto row = static_cast<int>(index);
        if (itemAtRow(row) != nullptr)
            continue;
        show(row, itemFrame(row).topLeft());
        isFilling = isFilling || itemAtRow(row) != nullptr;
    }
    return isFilling;
}

void WaterfallView::emptyOutside()
{
    std::vector<Shown> kept;
    kept.reserve(m_shown.size());
    for (const Shown& each : std::exchange(m_shown, {})) {
        const bool isPassing = isInStripe({each.item->position(), each.item->size()});
        if (isInStripe(m_geometry.frame(each.row)) || isPassing || mustStay(each))
            kept.push_back(each);
        else
            giveBack(each);
    }
    m_shown = std::move(kept);
}

bool WaterfallView::isInStripe(const QRectF& rect) const
{
    return rect.top() < m_visibleTo && rect.bottom() > m_visibleFrom;
}

bool WaterfallView::holds(const Shown& shown, const QQuickItem* item) const
{
    return item != nullptr && (item == shown.item || shown.item->isAncestorOf(item));
}

/// What the keyboard or the pointer holds on to stays with its row.
bool WaterfallView::mustStay(const Shown& shown) const
{
    const QQuickWindow* const where = window();
    return shown.row == m_pinnedRow || shown.item->property(pinProperty).toBool() ||
           (where != nullptr &&
            (holds(shown, where->activeFocusItem()) || holds(shown, where->mouseGrabberItem())));
}

/// Assistive programs and the Tab key go by the items' own order.
void WaterfallView::stackInOrder()
{
    for (std::size_t place = m_shown.size(); place-- > 1;) {
        QQuickItem* const former = m_shown.at(place - 1).item;
        QQuickItem* const latter = m_shown.at(place).item;
        const QList<QQuickItem*> children = childItems();
        if (children.indexOf(former) > children.indexOf(latter))
            former->stackBefore(latter);
    }
}

const WaterfallDelegate* WaterfallView::delegateOf(int row) const
{
    const int role = m_model->roleNames().key(kindRole, -1);
    const QString kind =
        role >= 0 ? m_model->data(m_model->index(row, 0), role).toString() : QString();
    const auto found = std::ranges::find_if(m_delegates, [&kind](const WaterfallDelegate* each) {
        return each->kind().isEmpty() || each->kind() == kind;
    });
    return found != m_delegates.end() ? *found : nullptr;
}

std::vector<WaterfallView::Shown>::iterator WaterfallView::shownAt(int row)
{
    const auto found = std::ranges::lower_bound(m_shown, row, {}, &Shown::row);
    return found != m_shown.end() && found->row == row ? found : m_shown.end();
}

void WaterfallView::show(int row, QPointF place)
{
    const WaterfallDelegate* const delegate = delegateOf(row);
    if (delegate == nullptr)
        return;
    QQuickItem* const item = m_items.take(*delegate, *m_model, row, itemFrame(row).width());
    if (item == nullptr)
        return;
    item->setPosition(place);
    const QMetaObject& type = *item->metaObject();
    const QMetaProperty pin = type.property(type.indexOfProperty(pinProperty));
    if (pin.hasNotifySignal()) {
        connect(item, pin.notifySignal(), this,
                staticMetaObject.method(staticMetaObject.indexOfSlot("pinChanged()")));
    }
    const auto next = std::ranges::lower_bound(m_shown, row, {}, &Shown::row);
    m_shown.insert(next, {row, item, delegate, place, place, true});
    m_arrived.append(item);
    if (m_geometry.layout().fixedItemHeight) {
        item->setHeight(m_geometry.itemHeight(row));
        return;
    }
    connect(item, &QQuickItem::implicitHeightChanged, this, [this, item] { takeHeight(*item); });
    takeHeight(*item);
}

void WaterfallView::pinChanged()
{
    // What was kept can go.
    polish();
}

void WaterfallView::giveBack(const Shown& shown)
{
    shown.item->disconnect(this);
    m_items.giveBack(*shown.delegate, *shown.item);
}

void WaterfallView::takeHeight(QQuickItem& item)
{
    const auto shown = std::ranges::find(m_shown, &item, &Shown::item);
    if (shown == m_shown.end())
        return;
    m_geometry.setHeight(shown->row, item.implicitHeight());
    if (!m_geometry.isSettled() && !m_isLayingOut)
        markSoiled();
}

void WaterfallView::markSoiled()
{
    // Known without a pass, so that what this view stands in can be laid out in the same frame.
    if (m_geometry.layout().fixedItemHeight)
        setImplicitHeight(m_geometry.height());
    polish();
}

} // namespace kelpa
