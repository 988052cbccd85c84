// Draws the latest picture of a window.
#pragma once

#include "views/windows/WindowController.h"

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// `image`, stretched to `size` pixels, with round corners of `radius` pixels.
QImage roundedPicture(const QImage& image, QSize size, qreal radius);

/// Stretches the picture to the item. It holds no picture of its own: the texture is as large as
/// the item, is made when `revision` changes, and is released while the item is not visible. In a
/// scene, where lists put the items of rows in view only, it asks for the picture that its window
/// does not have yet. Main thread.
class WindowPreview : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(kelpa::WindowController* windows READ windows WRITE setWindows NOTIFY windowsChanged
                   REQUIRED)
    Q_PROPERTY(double windowID READ windowID WRITE setWindowID NOTIFY windowIDChanged REQUIRED)
    Q_PROPERTY(double revision READ revision WRITE setRevision NOTIFY revisionChanged REQUIRED)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)

public:
    explicit WindowPreview(QQuickItem* parent = nullptr);

    WindowController* windows() const { return m_windows; }
    void setWindows(WindowController* windows);
    /// A double, as QML's numbers are: `int` is too small for a window's number.
    double windowID() const { return m_windowID; }
    void setWindowID(double windowID);
    /// The revision of the window's picture in the row of its list.
    double revision() const { return m_revision; }
    void setRevision(double revision);
    /// The radius of the corners, in points.
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);

Q_SIGNALS:
    void windowsChanged();
    void windowIDChanged();
    void revisionChanged();
    void radiusChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    /// Asks for a picture, which the window has none of while `revision` is 0.
    void requestPicture();

    QPointer<WindowController> m_windows;
    WindowID m_windowID = 0;
    double m_revision = 0;
    qreal m_radius = 0;
};

} // namespace kelpa
