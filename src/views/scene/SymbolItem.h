// A symbol of the interface as a light item of its own: there are several on every row and card.
#pragma once

#include <QColor>
#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class SymbolPictures;

/// Draws the symbol of that name in one colour, at the centre of the item, and nothing for an empty
/// or unknown name. Main thread.
class SymbolItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged REQUIRED FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// The symbol's width and height in points.
    Q_PROPERTY(int size READ symbolSize WRITE setSymbolSize NOTIFY symbolSizeChanged FINAL)

public:
    explicit SymbolItem(QQuickItem* parent = nullptr);

    const QString& name() const { return m_name; }
    void setName(const QString& name);
    const QColor& color() const { return m_color; }
    void setColor(const QColor& color);
    int symbolSize() const { return m_symbolSize; }
    void setSymbolSize(int size);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void symbolSizeChanged();

protected:
    void componentComplete() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    QRectF place(int pixels, qreal ratio) const;

    QPointer<SymbolPictures> m_pictures;
    QString m_name;
    QColor m_color;
    int m_symbolSize = 0;
};

} // namespace kelpa
