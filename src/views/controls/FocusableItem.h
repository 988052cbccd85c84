// An item that the Tab key reaches, and that knows whether a key has brought the focus to it.
#pragma once

#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// The toolkit's own controls know it too, but replace the accessible role with one of theirs.
class FocusableItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Whether it has the focus and a key has brought it there: the focus is shown.
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged FINAL)

public:
    explicit FocusableItem(QQuickItem* parent = nullptr);

    bool visualFocus() const { return m_hasVisualFocus; }

Q_SIGNALS:
    void visualFocusChanged();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void setVisualFocus(bool hasVisualFocus);

    bool m_hasVisualFocus = false;
};

} // namespace kelpa
