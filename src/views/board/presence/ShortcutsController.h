// The keys that the desktop keeps for Kelpa, as QML sees them.
#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class DesktopShortcuts;
class WindowStore;

/// Main thread.
class ShortcutsController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// Whether the desktop has a dialog in which its keys are chosen.
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY changed)
    /// Whether it has given some.
    Q_PROPERTY(bool isGiven READ isGiven NOTIFY changed)
    /// The key that brings Kelpa forward, as the desktop writes it; empty for none that is known.
    Q_PROPERTY(QString key READ key NOTIFY changed)
    /// Whether it says which key it has given for a new todo.
    Q_PROPERTY(bool isNewTodoKeyKnown READ isNewTodoKeyKnown NOTIFY changed)

public:
    /// `store` outlives the controller.
    explicit ShortcutsController(WindowStore& store, QObject* parent = nullptr);

    /// `shortcuts` outlives the controller. Without it nothing is offered.
    void setShortcuts(DesktopShortcuts& shortcuts);

    bool isOffered() const;
    bool isGiven() const;
    QString key() const;
    bool isNewTodoKeyKnown() const;
    /// Has the desktop show its dialog.
    Q_INVOKABLE void choose();

Q_SIGNALS:
    void changed();

private:
    WindowStore& m_store;
    DesktopShortcuts* m_shortcuts = nullptr;
};

} // namespace kelpa
