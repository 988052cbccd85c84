#include "views/PreviewDetail.h"

#include "store/WindowStore.h"
#include "windows/PreviewRotation.h"

#include <QQuickWindow>

namespace kelpa {

PreviewDetail::PreviewDetail(WindowStore& store, QQuickItem& parent)
    : QQuickItem(&parent), m_store(store)
{
    noteRatio(window()->effectiveDevicePixelRatio());
}

void PreviewDetail::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged)
        noteRatio(value.realValue);
    QQuickItem::itemChange(change, value);
}

void PreviewDetail::noteRatio(qreal devicePixelRatio)
{
    m_store.setPreviewPixels((QSizeF(previewCardSize) * devicePixelRatio).toSize());
}

} // namespace kelpa
