// The windows of the board as QML sees them: the store's operations on windows under their numbers,
// and the sheet that chooses several. It decides nothing that the store decides.
#pragma once

#include "model/WindowItem.h"
#include "views/windows/WindowMemoryController.h"
#include "views/windows/WindowPicker.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// Main thread. A column is named by `columnText`, a window by its number. A window that is no
/// longer listed is left alone.
class WindowController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(kelpa::WindowPicker* picker READ picker CONSTANT)
    /// Whether the desktop lists windows, in full or in part.
    Q_PROPERTY(bool areListed READ areListed NOTIFY abilitiesChanged)
    /// Whether the desktop switches to windows and closes them.
    Q_PROPERTY(bool canAct READ canAct NOTIFY abilitiesChanged)
    /// Whether closing asks the window's whole application to quit, and not the window alone.
    Q_PROPERTY(bool canQuit READ canQuit NOTIFY abilitiesChanged)
    Q_PROPERTY(kelpa::WindowMemoryController* memory READ memory CONSTANT)

public:
    /// `store` outlives the controller.
    explicit WindowController(WindowStore& store, QObject* parent = nullptr);

    WindowPicker* picker() { return &m_picker; }
    bool areListed() const;
    bool canAct() const;
    bool canQuit() const;
    WindowMemoryController* memory() { return &m_memory; }

    /// Shows all windows of "Unsorted", or two rows of many.
    Q_INVOKABLE void setUnsortedUnfolded(bool isUnfolded);
    /// Switches to the window.
    Q_INVOKABLE void focusWindow(quint32 windowID);
    /// Selects the window as the arrow keys do.
    Q_INVOKABLE void selectWindow(quint32 windowID);
    /// Asks the window's whole application to quit or, where `canQuit` is false, it to close.
    Q_INVOKABLE void closeWindowProcess(quint32 windowID);
    Q_INVOKABLE void moveWindow(quint32 windowID, const QString& columnID);
    /// Creates a goal with the window in it.
    Q_INVOKABLE void createGoalForWindow(const QString& title, quint32 windowID);
    /// A window's title as an item that elides it takes it, see views/windows/TitleLengths.h.
    Q_INVOKABLE static QString titleLengths(const QString& title);
    /// The text that a drag of the window carries.
    Q_INVOKABLE QString windowDragText(quint32 windowID) const;

    /// A card of the window has come into view.
    void noteWindowInView(WindowID windowID);
    /// The latest picture of a window, shared with the store; null without one.
    QImage preview(WindowID windowID) const;

Q_SIGNALS:
    void abilitiesChanged();

private:
    std::optional<WindowItem> listedWindow(WindowID windowID) const;

    WindowStore& m_store;
    WindowPicker m_picker;
    WindowMemoryController m_memory;
};

} // namespace kelpa
