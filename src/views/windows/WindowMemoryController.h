// What is remembered of windows as QML sees it: the goals that a window without one may have been
// in. It decides nothing that the store decides.
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. A column is named by `columnText`, a window by its number.
class WindowMemoryController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// Whether the windows of goals are remembered.
    Q_PROPERTY(bool isRemembering READ isRemembering NOTIFY isRememberingChanged)

public:
    /// `store` outlives the controller.
    explicit WindowMemoryController(WindowStore& store, QObject* parent = nullptr);

    bool isRemembering() const;
    Q_INVOKABLE void toggleRemembering();

    /// The goals that the window may have been in, likeliest first: `columnID` and `title` of each.
    Q_INVOKABLE QVariantList formerGoals(quint32 windowID) const;
    /// Puts the window back into the goal that it may have been in. False where a person has to
    /// choose among several.
    Q_INVOKABLE bool putBack(quint32 windowID);
    /// The same for the window that the arrow keys have selected, if any.
    Q_INVOKABLE bool putSelectionBack();
    /// Puts the window back into that one of them.
    Q_INVOKABLE void putBackInto(quint32 windowID, const QString& columnID);
    /// The window is another one than those that its goals have had.
    Q_INVOKABLE void decline(quint32 windowID);

Q_SIGNALS:
    void isRememberingChanged();

private:
    WindowStore& m_store;
};

} // namespace kelpa
