// A text that explains a control.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Explains the control in which it is placed while the pointer rests there. Every control contains
/// one; the tip itself exists only while it is wanted. A key takes it away, as it would cover what
/// the keyboard leads to beside a pointer that nobody moves. Main thread.
class HoverTip : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Follows a button's `help` or, without one, its `text`, and its `outcome` below that, unless
    /// it is set. An empty text is not shown.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    /// Follows a button, unless it is set.
    Q_PROPERTY(bool isHovered READ isHovered WRITE setHovered NOTIFY isHoveredChanged FINAL)
    /// Whether there is a tip, which shows after a delay.
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

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /// Hides the tip until the pointer comes again: a person who presses the control, or uses the
    /// menu that it opens, needs no explanation. A button's press calls it by itself.
    void dismiss();

Q_SIGNALS:
    void textChanged();
    void isHoveredChanged();
    void itemChanged();

private Q_SLOTS:
    void follow();
    void updateText();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    void hover(bool isHovered);
    void showOrHide();

    QObject* m_tip = nullptr;
    /// Whose keys it follows; null while there is no tip.
    QPointer<QQuickWindow> m_window;
    QString m_text;
    bool m_hasOwnText = false;
    bool m_isFollowing = true;
    bool m_isHovered = false;
    bool m_isDismissed = false;
};

} // namespace kelpa
