#include "views/windows/PreviewResolution.h"

#include "store/WindowStore.h"
#include "windows/PreviewRotation.h"

#include <QQuickWindow>

namespace kelpa {

PreviewResolution::PreviewResolution(WindowStore& store, QQuickItem& parent)
    : QQuickItem(&parent), m_store(store)
{
    noteRatio(window()->effectiveDevicePixelRatio());
}

void PreviewResolution::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged)
        noteRatio(value.realValue);
    QQuickItem::itemChange(change, value);
}

void PreviewResolution::noteRatio(qreal devicePixelRatio)
{
    m_store.setPreviewPixels((QSizeF(previewCardSize) * devicePixelRatio).toSize());
}

} // namespace kelpa
