// Items that stand on every control and are seldom needed: what they show is made only then.
#pragma once

#include <QColor>
#include <QQuickItem>
#include <QVariantMap>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// An item of the module's type in `file`, below the module's folder, that belongs to `owner`;
/// null where there is none, which is told on the console.
QObject* makeLate(QQuickItem& owner, const QString& file, const QVariantMap& properties);

/// Shows that the control in which it is placed has the keyboard. Lengths in points. Main thread.
class FocusRing : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Follows the control, unless it is set: that it has the focus and, where the control tells
    /// (`visualFocus`), that a key has brought it there.
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged FINAL)
    /// How far outside the control it lies.
    Q_PROPERTY(double margin MEMBER m_margin NOTIFY shapeChanged FINAL)
    /// Of its corners; below 0 for those around a usual control.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY shapeChanged FINAL)
    /// Transparent for the usual one.
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY shapeChanged FINAL)

public:
    explicit FocusRing(QQuickItem* parent = nullptr);

    bool isShown() const { return m_isShown; }
    void setShown(bool isShown);

Q_SIGNALS:
    void isShownChanged();
    void shapeChanged();

private Q_SLOTS:
    void follow();

protected:
    void componentComplete() override;

private:
    void show(bool isShown);

    QQuickItem* m_frame = nullptr;
    double m_margin = 2;
    double m_radius = -1;
    QColor m_color = Qt::transparent;
    bool m_isShown = false;
    bool m_isFollowing = true;
};

/// Explains the control in which it is placed while the pointer rests there.
class HoverTip : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Follows a button's `help` or, without one, its `text`, unless it is set. An empty one is not
    /// shown.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    /// Follows a button, unless it is set.
    Q_PROPERTY(bool isHovered READ isHovered WRITE setHovered NOTIFY isHoveredChanged FINAL)
    /// Whether there is a tip, which is seen after a while.
    Q_PROPERTY(bool active READ isActive NOTIFY itemChanged FINAL)
    /// Null while there is none.
    Q_PROPERTY(QObject* item READ item NOTIFY itemChanged FINAL)

public:
    explicit HoverTip(QQuickItem* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
    bool isHovered() const { return m_isHovered; }
    void setHovered(bool isHovered);
    bool isActive() const { return m_tip != nullptr; }
    QObject* item() const { return m_tip; }

public Q_SLOTS:
    /// Who presses a control needs no explanation, nor one over the menu that it opens: until the
    /// pointer comes again. A button's press does it by itself.
    void dismiss();

Q_SIGNALS:
    void textChanged();
    void isHoveredChanged();
    void itemChanged();

private Q_SLOTS:
    void follow();
    void tell();

protected:
    void componentComplete() override;

private:
    void hover(bool isHovered);
    void showOrHide();

    QObject* m_tip = nullptr;
    QString m_text;
    bool m_hasOwnText = false;
    bool m_isFollowing = true;
    bool m_isHovered = false;
    bool m_isDismissed = false;
};

} // namespace kelpa
