// The board over a desktop of plain data that tests of QML types act on.
#pragma once

#include "store/BackupBrowser.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemoryBackups.h"
#include "support/MemorySettingsStore.h"
#include "support/TransferFakes.h"
#include "views/appearance/ViewSettings.h"
#include "views/board/BoardController.h"
#include "views/entry/EntryController.h"
#include "views/windows/AppIconProvider.h"

#include <QAccessible>
#include <QClipboard>
#include <QColor>
#include <QGuiApplication>
#include <QHash>
#include <QMimeData>
#include <QMutex>
#include <QQuickItem>
#include <QUrl>

#include <memory>

namespace kelpa::test {

/// Applications have green icons, and windows may have ones of their own.
class IconDesktop : public FakeDesktop
{
public:
    void setIcon(WindowID windowID, const QColor& color)
    {
        const QMutexLocker lock(&m_mutex);
        m_icons.insert(windowID, color);
    }
    QImage icon(const WindowItem& window, int pixels) override
    {
        const QMutexLocker lock(&m_mutex);
        const bool isKnown = window.bundleIdentifier == QStringLiteral("org.example.Known");
        if (!isKnown && !m_icons.contains(window.id))
            return {};
        QImage image(pixels, pixels, QImage::Format_RGB32);
        image.fill(isKnown ? QColor(Qt::green) : m_icons.value(window.id));
        return image;
    }

private:
    QMutex m_mutex;
    QHash<WindowID, QColor> m_icons;
};

/// What the tests call `world`.
class World : public QObject
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
    Q_INVOKABLE void addWindow(quint32 id, const QString& title);
    /// Opens a window as well, without notifying the board.
    Q_INVOKABLE void openWindow(quint32 id, const QString& title);
    /// The window turns out to be of an application with this name.
    Q_INVOKABLE void nameOwner(quint32 id, const QString& name);
    /// The desktop has no such ability any more, or has it in part.
    Q_INVOKABLE void lack(const QString& ability, bool isPartial = false);
    Q_INVOKABLE void lackNothing();
    /// How often the desktop was asked for what it lacks.
    Q_INVOKABLE int abilityRequests() const;
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
    Q_INVOKABLE void setPermissionSettings(bool areThere);
    Q_INVOKABLE void takeWindowManager();
    /// As before the desktop has answered.
    Q_INVOKABLE void leavePermissionsUnknown();
    Q_INVOKABLE void takeComposite();
    /// Acts as an input method does while a person has not yet chosen what to write.
    Q_INVOKABLE void compose(const QString& text);
    /// Acts as some input methods do when the person has given up: only the cursor is left.
    Q_INVOKABLE void composeNothing();
    /// Does what an arrow key in a field does first of all.
    Q_INVOKABLE void pressArrowInField() { m_controller.todos()->giveUpEditor(); }
    /// The board is about to end.
    Q_INVOKABLE void finishWriting() { m_controller.todos()->finishWriting(); }
    /// Acts as an input method does when the person has chosen.
    Q_INVOKABLE void finishComposing(const QString& text);
    /// Sends what the window system sends repeatedly for a held key.
    Q_INVOKABLE void repeatKey(QQuickItem* item, int key);
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
    /// The pointer comes to a place of the item's window, dragging a text.
    Q_INVOKABLE void dragTo(QQuickItem* item, QPointF place);
    Q_INVOKABLE void dropAt(QQuickItem* item, QPointF place);
    /// What assistive programs are told of the item: "disabled", "selectable", "selected",
    /// "checked".
    Q_INVOKABLE static QStringList states(QObject* item);
    Q_INVOKABLE static void switchAccessibilityOn() { QAccessible::setActive(true); }
    /// No program has anything to paste.
    Q_INVOKABLE void clearClipboard() { QGuiApplication::clipboard()->clear(); }
    /// A program has that text to paste.
    Q_INVOKABLE void offerText(const QString& text) { QGuiApplication::clipboard()->setText(text); }
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
    static SettingsError errorOf(const QString& name);
    std::optional<GoalID> goalTitled(const QString& title) const;
    QList<TodoItem> listOf(const QString& goalTitle) const;

    ViewSettings* m_viewSettings = nullptr;
    QMimeData m_dragged;
    bool m_isDragging = false;
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
