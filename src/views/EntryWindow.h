// The window with the field for a todo: loaded at its first use, and kept hidden after it.
#pragma once

#include "platform/OwnWindow.h"
#include "views/entry/EntryController.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QQuickWindow;

namespace kelpa {

class EarlyKeys;
class ViewEngine;
class WindowStore;

/// Main thread.
class EntryWindow : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive this object.
    EntryWindow(WindowStore& store, ViewEngine& views, OwnWindow& desktop);
    ~EntryWindow() override;

    /// Shows the field over whatever is in front, and gives it the keyboard. False when its view
    /// could not be loaded.
    bool open(const ActivationContext& context);
    /// Hides it; the window manager gives the keyboard back to the window that had it. What is
    /// typed stays until the next time.
    void close();

    bool isOpen() const { return m_entry.isOpen(); }
    /// Null before the first use.
    QQuickWindow* window() const;
    EntryController& controller() { return m_entry; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// Emitted once, when its view is loaded and has not been shown yet.
    void loaded();
    /// The field is hidden: its todo has been added, or it was left.
    void closed();

private:
    bool load();
    void place();
    void requestKeyboard(const ActivationContext& context);
    void hide();

    ViewEngine& m_views;
    OwnWindow& m_desktop;
    EntryController m_entry;
    /// Destroyed before the controller.
    std::unique_ptr<QObject> m_root;
    /// Of the window, and destroyed before it.
    std::unique_ptr<EarlyKeys> m_earlyKeys;
    /// Runs while another window has the keyboard.
    QTimer m_leaving;
    /// How often it fires until the field closes.
    int m_leavingParts = 0;
};

} // namespace kelpa
