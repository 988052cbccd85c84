// Reports in how many pixels the cards of a window draw previews.
#pragma once

#include <QQuickItem>

namespace kelpa {

class WindowStore;

/// Draws nothing: it is an item of the window to be notified of the device pixel ratio, which
/// changes when the window goes to another screen or the desktop's scale is set. Main thread.
class PreviewResolution : public QQuickItem
{
public:
    /// `store` outlives it; `parent`, which is in a window, owns it.
    PreviewResolution(WindowStore& store, QQuickItem& parent);

protected:
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    void noteRatio(qreal devicePixelRatio);

    WindowStore& m_store;
};

} // namespace kelpa
