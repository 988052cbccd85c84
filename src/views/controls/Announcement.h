// Has screen readers read out what a person did not ask for.
#pragma once

#include <QAccessible>
#include <QQuickItem>
#include <QString>
#include <QTimer>
#include <QtQmlIntegration/qqmlintegration.h>

#include <chrono>

namespace kelpa {

/// Announces the item in which it is placed, an alert, when it begins to show and whenever it says
/// something else. The toolkit itself announces only some of the items that begin to show, none
/// that is there before the window or before accessibility is switched on, and no change. Main
/// thread.
class Announcement : public QQuickItem, private QAccessible::ActivationObserver
{
    Q_OBJECT
    QML_ELEMENT

    /// All that the alert says; while it is empty, nothing is announced.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)

public:
    explicit Announcement(QQuickItem* parent = nullptr);
    ~Announcement() override;
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;

    QString text() const { return m_text; }
    void setText(const QString& text);

Q_SIGNALS:
    void textChanged();
    /// Screen readers are told of the item now.
    void announced();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void accessibilityActiveChanged(bool isActive) override;
    void announceAfter(std::chrono::milliseconds delay);
    void announce();

    QString m_text;
    /// What is shown has not been announced.
    bool m_isDue = false;
    QTimer m_timer;
    QMetaObject::Connection m_windowFollowing;
};

} // namespace kelpa
