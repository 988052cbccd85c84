// Trouble with the board's file as QML sees it, and whether the board's window may close meanwhile.
// It decides nothing that the store decides.
#pragma once

#include "store/board/SaveProgress.h"
#include "store/board/TroubleNotice.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class TodoController;
class WindowStore;

/// Follows a store. Main thread. What it says stays as it was when the trouble was over.
class TroubleController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(bool isThere READ isThere NOTIFY troubleChanged)
    // Keys of texts.
    Q_PROPERTY(int happened READ happened NOTIFY troubleChanged)
    Q_PROPERTY(int safe READ safe NOTIFY troubleChanged)
    /// -1 where nothing need be done.
    Q_PROPERTY(int advice READ advice NOTIFY troubleChanged)
    /// The new name of a file that was moved aside; empty otherwise.
    Q_PROPERTY(QString movedAsideName READ movedAsideName NOTIFY troubleChanged)
    Q_PROPERTY(bool canRetry READ canRetry NOTIFY troubleChanged)
    Q_PROPERTY(bool canShowFolder READ canShowFolder NOTIFY troubleChanged)
    Q_PROPERTY(bool canDismiss READ canDismiss NOTIFY troubleChanged)
    // What the question before closing says.
    /// Whether changes would be lost if Kelpa ended now.
    Q_PROPERTY(bool hasUnsavedChanges READ hasUnsavedChanges NOTIFY unsavedChanged)
    Q_PROPERTY(int unsavedSummary READ unsavedSummary NOTIFY unsavedChanged)
    Q_PROPERTY(int unsavedReason READ unsavedReason NOTIFY unsavedChanged)
    Q_PROPERTY(int unsavedWarning READ unsavedWarning NOTIFY unsavedChanged)
    Q_PROPERTY(bool canRetryUnsaved READ canRetryUnsaved NOTIFY unsavedChanged)

public:
    /// `store` and `todos` outlive the controller.
    TroubleController(WindowStore& store, TodoController& todos, QObject* parent = nullptr);

    bool isThere() const { return m_isThere; }
    int happened() const { return static_cast<int>(m_shown.happened); }
    int safe() const { return static_cast<int>(m_shown.safe); }
    int advice() const { return m_shown.advice ? static_cast<int>(*m_shown.advice) : -1; }
    QString movedAsideName() const { return m_shown.movedAsideName; }
    bool canRetry() const { return m_shown.canRetry; }
    bool canShowFolder() const { return m_shown.canShowFolder; }
    bool canDismiss() const { return m_shown.canDismiss; }
    bool hasUnsavedChanges() const { return m_isUnsaved; }
    int unsavedSummary() const { return static_cast<int>(m_unsaved.summary); }
    int unsavedReason() const { return static_cast<int>(m_unsaved.reason); }
    int unsavedWarning() const { return static_cast<int>(m_unsaved.warning); }
    bool canRetryUnsaved() const { return m_unsaved.canRetry; }

    Q_INVOKABLE void retry();
    Q_INVOKABLE void showFolder();
    Q_INVOKABLE void dismiss();

    /// Commits what is being typed and saves; true when no change would be lost by closing now.
    /// Otherwise one of the signals below follows: at once, or on a slow disk once it has replied
    /// or the board says that it is slow.
    Q_INVOKABLE bool mayClose();
    /// From now on nothing is asked: the person has decided, or nobody can answer.
    Q_INVOKABLE void closeWithoutAsking() { m_isAsking = false; }

Q_SIGNALS:
    void troubleChanged();
    void unsavedChanged();
    /// Changes would be lost by closing: the person has to be asked first.
    void askingRequested();
    /// Everything is saved by now.
    void closingAllowed();

private:
    void update();
    void updateUnsaved();
    void goOnClosing(SaveProgress progress);

    WindowStore& m_store;
    TodoController& m_todos;
    bool m_isThere = false;
    bool m_isUnsaved = false;
    bool m_isAsking = true;
    /// `mayClose` has returned false, and no signal has followed yet.
    bool m_isClosing = false;
    TroubleNotice m_shown{};
    UnsavedNotice m_unsaved{};
};

} // namespace kelpa
