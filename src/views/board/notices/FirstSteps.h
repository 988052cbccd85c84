// What a person has still to try on an empty first board: to create a goal, to drag a window to it,
// and to come back to Kelpa by its key.
#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. A step that was done stays done, whatever is undone later.
class FirstSteps : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// True from the start of an empty board until each step that is offered was done, or the
    /// person wants no more of it.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(bool hasGoal READ hasGoal NOTIFY changed)
    /// Whether the goal has gone again that a window is still to be dragged to.
    Q_PROPERTY(bool needsGoalAgain READ needsGoalAgain NOTIFY changed)
    Q_PROPERTY(bool hasAssignment READ hasAssignment NOTIFY changed)
    Q_PROPERTY(bool hasReturned READ hasReturned NOTIFY changed)
    /// Whether the desktop lists windows that can be dragged: otherwise that is no step.
    Q_PROPERTY(bool isWindowOffered READ isWindowOffered NOTIFY changed)
    /// Whether a key brings Kelpa forward: otherwise that is no step.
    Q_PROPERTY(bool isReturnOffered READ isReturnOffered NOTIFY changed)

public:
    /// `store` outlives the object.
    explicit FirstSteps(WindowStore& store);

    bool isOpen() const { return m_isOpen; }
    bool hasGoal() const { return m_hasGoal; }
    bool needsGoalAgain() const;
    bool hasAssignment() const { return m_hasAssignment; }
    bool hasReturned() const { return m_hasReturned; }
    bool isWindowOffered() const { return m_isWindowOffered; }
    bool isReturnOffered() const { return m_isReturnOffered; }
    void setReturnOffered(bool isOffered);
    /// Reports that the key was pressed, in whatever program.
    void noteReturn();
    Q_INVOKABLE void createGoal(const QString& title);
    /// The person knows, or does not want to.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void changed();
    /// What is typed now is the first goal, if there is none.
    void goalRequested();

private:
    void update();

    WindowStore& m_store;
    bool m_isOpen = false;
    bool m_hasGoal = false;
    bool m_isGoalThere = false;
    bool m_hasAssignment = false;
    bool m_hasReturned = false;
    bool m_isWindowOffered = true;
    bool m_isReturnOffered = false;
};

} // namespace kelpa
