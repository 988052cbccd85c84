// The board over a desktop of plain data that tests of QML types act on.
#pragma once

#include "store/BackupBrowser.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "support/ManualScheduler.h"
#include "support/MemoryBackups.h"
#include "support/MemorySettingsStore.h"
#include "support/TransferFakes.h"
#include "views/IconDesktop.h"
#include "views/WorldInput.h"
#include "views/appearance/ViewSettings.h"
#include "views/board/BoardController.h"
#include "views/entry/EntryController.h"
#include "views/windows/AppIconProvider.h"

#include <QUrl>

#include <functional>
#include <memory>

namespace kelpa::test {

/// What the tests call `world`.
class World : public WorldInput
{
    Q_OBJECT
    Q_PROPERTY(kelpa::BoardController* board READ board CONSTANT)
    Q_PROPERTY(kelpa::EntryController* entry READ entry CONSTANT)

public:
    explicit World(QObject* parent);

    BoardController* board() { return &m_controller; }
    EntryController* entry() { return &m_entry; }
    /// Somebody asks for the field for a todo.
    Q_INVOKABLE void openEntry() { m_entry.open(EntryOver::window); }
    std::unique_ptr<AppIconProvider> makeIconProvider();

    /// The texts of the interface are in the store's language from now on.
    void followLanguage(ViewSettings& settings);

    Q_INVOKABLE void setDark(bool isDark);
    Q_INVOKABLE void setHighContrast(bool isHigh);
    /// The desktop has this accent colour, or none where it is transparent.
    Q_INVOKABLE void setAccent(const QColor& accent)
    {
        m_viewSettings->setDesktopAccent(accent.alpha() == 0 ? QColor() : accent);
    }
    Q_INVOKABLE void addWindow(quint32 id, const QString& title);
    /// Opens a window as well, without notifying the board.
    Q_INVOKABLE void openWindow(quint32 id, const QString& title);
    /// The window turns out to be of an application with this name.
    Q_INVOKABLE void nameOwner(quint32 id, const QString& name);
    /// The desktop has no such ability any more, or has it in part.
    Q_INVOKABLE void lack(const QString& ability, bool isPartial = false);
    Q_INVOKABLE void lackNothing();
    /// How often the desktop was asked for what it lacks.
    Q_INVOKABLE int abilityRequests() const { return m_desktop.abilityRequests; }
    /// The window sets an icon.
    Q_INVOKABLE void setIcon(quint32 id) { m_desktop.setIcon(id, Qt::red); }
    /// The window had an icon, and the desktop reports the other one.
    Q_INVOKABLE void replaceIcon(quint32 id);
    /// It turns out which application the windows belong to.
    Q_INVOKABLE void recognizeApplication();
    Q_INVOKABLE void forgetApplication();
    /// The window is on another virtual desktop, or on the present one where it has no name.
    Q_INVOKABLE void moveToDesktop(quint32 id, const QString& name);
    /// From now on the desktop has these virtual desktops, all windows on the first.
    Q_INVOKABLE void offerDesktops(const QStringList& names);
    /// A dialog of the window opens, or closes.
    Q_INVOKABLE void setAwaitingAnswer(quint32 id, bool isAwaiting);
    /// As a window that is minimized.
    Q_INVOKABLE void hideWindow(quint32 id);
    Q_INVOKABLE void removeWindow(quint32 id);
    /// Captures the window whose turn it is; all of them can be captured from now on.
    Q_INVOKABLE void capture();
    /// As `capture`, but a window that could not be captured until now still cannot.
    Q_INVOKABLE void captureInVain();
    /// What was started in the background comes to its end.
    Q_INVOKABLE void runPending() { m_scheduler.advance(std::chrono::milliseconds(0)); }
    Q_INVOKABLE void pass(int milliseconds);
    /// The disk takes its time from now on.
    Q_INVOKABLE void slowDisk() { m_settings.isSlow = true; }
    /// The disk does not reply from now on.
    Q_INVOKABLE void hangDisk();
    /// It refuses what is under way, and whatever follows.
    Q_INVOKABLE void failDisk(const QString& error);
    /// It has everything, and is fast again.
    Q_INVOKABLE void recoverDisk();
    /// From now on nothing can be written to the board's file.
    Q_INVOKABLE void breakDisk(const QString& error);
    /// Nothing is wrong any more, which the board notices by itself.
    Q_INVOKABLE void repairDisk() { m_settings.isFailing = false; }
    /// From now on there are backups: with one goal and its open todo, newest last, and an
    /// unreadable one.
    Q_INVOKABLE void offerBackups(const QStringList& goalTitles);
    Q_INVOKABLE void setBoardKept(bool canKeep) { m_backupFiles.canKeep = canKeep; }
    Q_INVOKABLE void moveFileAside(const QString& name, bool isRestored);
    /// Applies when trouble begins.
    Q_INVOKABLE void setFileManager(bool isThere) { m_desktop.hasFileManager = isThere; }
    Q_INVOKABLE bool isSaved() const { return !m_settings.status().hasUnsavedValues; }
    /// Lets the pause after scrolling pass.
    Q_INVOKABLE void rest() { m_scheduler.advance(std::chrono::milliseconds(300)); }
    Q_INVOKABLE int captureCount() const { return static_cast<int>(m_desktop.captured.size()); }
    Q_INVOKABLE QStringList calls() const { return m_desktop.calls; }
    Q_INVOKABLE QStringList openedUrls() const { return QUrl::toStringList(m_desktop.openedUrls); }
    Q_INVOKABLE void denyPermissions() { setPermissions(false, false); }
    /// What is missing from now on is permissions.
    Q_INVOKABLE void grantPermissions();
    Q_INVOKABLE void setPermissions(bool isAccessibilityGranted, bool isScreenCaptureGranted);
    /// Applies when a permission begins to be missing.
    Q_INVOKABLE void setPermissionSettings(bool areThere)
    {
        m_desktop.hasSettingsForPermissions = areThere;
    }
    Q_INVOKABLE void takeWindowManager();
    /// As before the desktop has answered.
    Q_INVOKABLE void leavePermissionsUnknown();
    Q_INVOKABLE void takeComposite();
    /// Does what an arrow key in a field does first of all.
    Q_INVOKABLE void pressArrowInField() { m_controller.todos()->giveUpEditor(); }
    /// The board is about to end.
    Q_INVOKABLE void finishWriting() { m_controller.todos()->finishWriting(); }
    Q_INVOKABLE void leaveWindows() { m_store.returnToTargetSelection(); }
    /// Whether the double tap can be heard.
    Q_INVOKABLE void offerDoubleTap(bool isOffered) { m_controller.setDoubleTapOffered(isOffered); }
    Q_INVOKABLE void clearSelection() { m_store.clearTargetSelection(); }
    /// Does what one press of an arrow key does while a target is selected.
    Q_INVOKABLE void moveSelection(int key);
    /// The title of the goal that the keyboard has selected; empty for none.
    Q_INVOKABLE QString selectedGoal() const;
    Q_INVOKABLE QStringList goalTitles() const;
    Q_INVOKABLE QString columnOfGoal(const QString& title) const;
    /// The title of the window's goal; empty for none.
    Q_INVOKABLE QString goalOfWindow(quint32 id) const;

    Q_INVOKABLE void addTodo(const QString& title, const QString& goalTitle);
    /// As stored, each title with its status: "Read (ing)". Of the unassigned list without a goal.
    Q_INVOKABLE QStringList todos(const QString& goalTitle) const;
    Q_INVOKABLE QString todoID(const QString& title, const QString& goalTitle) const;
    Q_INVOKABLE void removeTodos();
    /// The second, the fourth and so on of each goal go, all at once.
    Q_INVOKABLE void removeEveryOtherTodo();
    Q_INVOKABLE QString priorityOf(const QString& goalTitle) const;
    /// Everything that the interface can say in its current language.
    Q_INVOKABLE QStringList knownTexts() const;
    /// Answers the file dialog that shows: with the path of a file, or, where that is empty, by
    /// cancelling it.
    Q_INVOKABLE void answerFileDialog(const QString& path);
    /// There is no file dialog after all.
    Q_INVOKABLE void loseFileDialog();
    Q_INVOKABLE bool isFileDialogShown() const { return m_dialogs.isShown(); }
    Q_INVOKABLE void putFile(const QString& path, const QString& content);
    /// Empty where there is none.
    Q_INVOKABLE QString file(const QString& path) const;
    /// Reads and writes files.
    Q_INVOKABLE void finishFileWork();
    Q_INVOKABLE QString clipboard() const { return m_desktop.pasteboardText; }

private:
    void changeWindow(quint32 id, const std::function<void(WindowListEntry& entry)>& edit);
    static SettingsError errorOf(const QString& name);
    /// Null when there is none.
    const Goal* goalTitled(const QString& title) const;
    QList<TodoItem> listOf(const QString& goalTitle) const;

    ViewSettings* m_viewSettings = nullptr;
    IconDesktop m_desktop;
    std::shared_ptr<IconWindows> m_iconWindows = std::make_shared<IconWindows>();
    ManualScheduler m_scheduler;
    MemorySettingsStore m_settings;
    WindowStore m_store{m_desktop.platform(), m_settings, m_scheduler};
    // Before the board follows the store, so that a card that appears finds its icon.
    QMetaObject::Connection m_iconFollowing =
        connect(&m_store, &WindowStore::windowsChanged, this,
                [this] { m_iconWindows->set(m_store.windows()); });
    MemoryFiles m_files;
    KeepingBackups m_keptBackups;
    FakeFileDialogs m_dialogs;
    BoardTransfer m_transfer{m_store, m_keptBackups, m_files, m_scheduler};
    BoardController m_controller{m_store};
    EntryController m_entry{m_store};
    MemoryBackups m_backupFiles;
    BackupBrowser m_backups{m_store, m_backupFiles, m_scheduler};
};

} // namespace kelpa::test
