// Runs the tests of QML types, each with a board of its own over a desktop of plain data.
#include "platform/qt/WorkerPool.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "views/KnownTexts.h"
#include "views/ViewTypes.h"
#include "views/appearance/ViewSettings.h"
#include "views/board/BoardController.h"
#include "views/windows/AppIconProvider.h"

#include <QAccessible>
#include <QClipboard>
#include <QColor>
#include <QDragMoveEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QMutex>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSet>
#include <QtQuickTest/quicktest.h>

#include <memory>

namespace {

using namespace kelpa;

/// Applications have green icons, and windows may have ones of their own.
class IconDesktop : public test::FakeDesktop
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

public:
    explicit World(QObject* parent) : QObject(parent)
    {
        m_store.setLanguage(AppLanguage::english);
        m_store.setAutoSortingGoals(false);
        m_store.refresh();
    }

    BoardController* board() { return &m_controller; }
    std::unique_ptr<AppIconProvider> makeIconProvider()
    {
        return std::make_unique<AppIconProvider>(m_desktop, m_iconWindows,
                                                 std::make_shared<WorkerPool>(1));
    }

    /// The texts of the interface are in the store's language from now on.
    void followLanguage(ViewSettings& settings)
    {
        m_viewSettings = &settings;
        const auto follow = [this, &settings] { settings.setLanguage(m_store.language()); };
        connect(&m_store, &WindowStore::languageChanged, &settings, follow);
        follow();
    }

    Q_INVOKABLE void setDark(bool isDark)
    {
        m_viewSettings->setAppearance(isDark ? Appearance::dark : Appearance::light);
    }
    Q_INVOKABLE void addWindow(quint32 id, const QString& title)
    {
        openWindow(id, title);
        m_store.refresh();
    }
    /// Opens a window as well, without notifying the board.
    Q_INVOKABLE void openWindow(quint32 id, const QString& title)
    {
        // A frame of its own distinguishes it from the other windows of its application.
        WindowListEntry& entry = m_desktop.addAccessibleWindow(id, 1000, title);
        entry.bounds->x = 100.0 * (id % 16);
        m_desktop.accessibilityWindows[1000]->back().position->x = entry.bounds->x;
    }
    /// The window turns out to be of an application with this name.
    Q_INVOKABLE void nameOwner(quint32 id, const QString& name)
    {
        for (WindowListEntry& entry : *m_desktop.windowList) {
            if (entry.number == id)
                entry.ownerName = name;
        }
        m_store.refresh();
    }
    /// The desktop has no such ability any more, or has it in part.
    Q_INVOKABLE void lack(const QString& ability, bool isPartial = false)
    {
        const QHash<QString, std::pair<DesktopAbility, AbilityGap>> known{
            {QStringLiteral("windows"), {DesktopAbility::windows, AbilityGap::compositorProtocol}},
            {QStringLiteral("actions"), {DesktopAbility::actions, AbilityGap::compositorProtocol}},
            {QStringLiteral("quitting"),
             {DesktopAbility::quitting, AbilityGap::compositorProtocol}},
            {QStringLiteral("previews"),
             {DesktopAbility::previews, AbilityGap::compositorProtocol}},
            {QStringLiteral("globalKeys"),
             {DesktopAbility::globalKeys, AbilityGap::keysOfXwayland}}};
        const auto [which, gap] = known[ability];
        m_desktop.lack(which, {.gap = isPartial ? AbilityGap::windowsOfXwayland : gap,
                               .isPartial = isPartial});
        m_store.refresh();
    }
    Q_INVOKABLE void lackNothing()
    {
        m_desktop.lackNothing();
        m_store.refresh();
    }
    /// The window sets an icon.
    Q_INVOKABLE void setIcon(quint32 id) { m_desktop.setIcon(id, Qt::red); }
    /// The window had an icon, and the desktop reports the other one.
    Q_INVOKABLE void replaceIcon(quint32 id)
    {
        m_desktop.setIcon(id, Qt::blue);
        for (WindowListEntry& entry : *m_desktop.windowList) {
            if (entry.number == id)
                ++entry.iconRevision;
        }
        m_store.refresh();
    }
    /// It turns out which application the windows belong to.
    Q_INVOKABLE void recognizeApplication()
    {
        m_desktop.applications[1000].bundleIdentifier = QStringLiteral("org.example.Known");
        m_store.refresh();
    }
    Q_INVOKABLE void forgetApplication()
    {
        m_desktop.applications[1000].bundleIdentifier = std::nullopt;
        m_store.refresh();
    }
    /// As a window that is minimized.
    Q_INVOKABLE void hideWindow(quint32 id)
    {
        m_desktop.onScreen.remove(id);
        m_store.refresh();
    }
    Q_INVOKABLE void removeWindow(quint32 id)
    {
        m_desktop.removeWindow(id);
        const double x = 100.0 * (id % 16);
        std::erase_if(*m_desktop.accessibilityWindows[1000],
                      [x](const AccessibilityWindow& each) { return each.position->x == x; });
        m_store.refresh();
    }
    /// Captures the window whose turn it is; all of them can be captured from now on.
    Q_INVOKABLE void capture()
    {
        for (const WindowItem& window : m_store.windows())
            m_desktop.captureSizes.insert(window.id, {640, 480});
        captureInVain();
    }
    /// As `capture`, but a window that could not be captured until now still cannot.
    Q_INVOKABLE void captureInVain()
    {
        m_store.refreshPreviews(m_scheduler.now());
        runPending();
    }
    /// What was started in the background comes to its end.
    Q_INVOKABLE void runPending() { m_scheduler.advance(std::chrono::milliseconds(0)); }
    Q_INVOKABLE void pass(int milliseconds)
    {
        m_scheduler.advance(std::chrono::milliseconds(milliseconds));
    }
    /// The disk takes its time from now on.
    Q_INVOKABLE void slowDisk() { m_settings.isSlow = true; }
    /// The disk does not reply from now on.
    Q_INVOKABLE void hangDisk()
    {
        m_settings.isSlow = true;
        m_settings.isHanging = true;
    }
    /// It refuses what is under way, and whatever follows.
    Q_INVOKABLE void failDisk(const QString& error)
    {
        m_settings.isSlow = false;
        m_settings.isHanging = false;
        m_settings.error = errorOf(error);
        m_settings.isFailing = true;
        m_settings.endSave();
    }
    /// It has everything, and is fast again.
    Q_INVOKABLE void recoverDisk()
    {
        m_settings.isSlow = false;
        m_settings.isHanging = false;
        m_settings.isFailing = false;
        m_settings.endSave();
    }
    /// From now on nothing can be written to the board's file.
    Q_INVOKABLE void breakDisk(const QString& error)
    {
        m_settings.error = errorOf(error);
        m_settings.isFailing = true;
        m_store.retrySaving();
    }
    /// Nothing is wrong any more, which the board notices by itself.
    Q_INVOKABLE void repairDisk() { m_settings.isFailing = false; }
    Q_INVOKABLE void moveFileAside(const QString& name, bool isRestored)
    {
        m_settings.movedAside = {name, isRestored};
        m_store.retrySaving();
    }
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
    Q_INVOKABLE void grantPermissions()
    {
        m_desktop.obstacleOfAccessibility = Obstacle::permission;
        m_desktop.obstacleOfScreenCapture = Obstacle::permission;
        setPermissions(true, true);
    }
    Q_INVOKABLE void setPermissions(bool isAccessibilityGranted, bool isScreenCaptureGranted)
    {
        m_desktop.isAccessibilityGranted = isAccessibilityGranted;
        m_desktop.isScreenCaptureGranted = isScreenCaptureGranted;
        m_store.refresh();
    }
    /// Applies when a permission begins to be missing.
    Q_INVOKABLE void setPermissionSettings(bool areThere)
    {
        m_desktop.hasSettingsForPermissions = areThere;
    }
    Q_INVOKABLE void takeWindowManager()
    {
        m_desktop.obstacleOfAccessibility = Obstacle::windowManager;
        m_desktop.obstacleOfScreenCapture = Obstacle::windowManager;
        denyPermissions();
    }
    /// As before the desktop has answered.
    Q_INVOKABLE void leavePermissionsUnknown()
    {
        m_desktop.obstacleOfAccessibility = std::nullopt;
        m_desktop.obstacleOfScreenCapture = std::nullopt;
        denyPermissions();
    }
    Q_INVOKABLE void takeComposite()
    {
        m_desktop.obstacleOfScreenCapture = Obstacle::composite;
        setPermissions(true, false);
    }
    /// Acts as an input method does while a person has not yet chosen what to write.
    Q_INVOKABLE void compose(const QString& text)
    {
        QInputMethodEvent event(text, {});
        QGuiApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }
    /// Acts as some input methods do when the person has given up: only the cursor is left.
    Q_INVOKABLE void composeNothing()
    {
        QInputMethodEvent event(QString(),
                                {QInputMethodEvent::Attribute(QInputMethodEvent::Cursor, 0, 1)});
        QGuiApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }
    /// Does what an arrow key in a field does first of all.
    Q_INVOKABLE void pressArrowInField() { m_controller.todos()->giveUpEditor(); }
    /// The board is about to end.
    Q_INVOKABLE void finishWriting() { m_controller.todos()->finishWriting(); }
    /// Acts as an input method does when the person has chosen.
    Q_INVOKABLE void finishComposing(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QGuiApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }
    /// Sends what the window system sends repeatedly for a held key.
    Q_INVOKABLE void repeatKey(QQuickItem* item, int key)
    {
        for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent event(type, key, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(item->window(), &event);
        }
    }
    Q_INVOKABLE void leaveWindows() { m_store.returnToTargetSelection(); }
    /// Whether the double tap can be heard.
    Q_INVOKABLE void offerDoubleTap(bool isOffered) { m_controller.setDoubleTapOffered(isOffered); }
    Q_INVOKABLE void clearSelection() { m_store.clearTargetSelection(); }
    /// Does what one press of an arrow key does while a target is selected.
    Q_INVOKABLE void moveSelection(int key)
    {
        using enum NavigationDirection;
        m_store.moveTargetSelection(key == Qt::Key_Left    ? left
                                    : key == Qt::Key_Right ? right
                                    : key == Qt::Key_Up    ? up
                                                           : down);
    }
    /// The title of the goal that the keyboard has selected; empty for none.
    Q_INVOKABLE QString selectedGoal() const
    {
        for (const Goal& goal : m_store.goals())
            if (m_store.boardNavigation().target == TargetSelection::goal(goal.id))
                return goal.title;
        return {};
    }
    Q_INVOKABLE QStringList goalTitles() const
    {
        QStringList titles;
        for (const Goal& goal : m_store.goals())
            titles.append(goal.title);
        return titles;
    }
    Q_INVOKABLE QString columnOfGoal(const QString& title) const
    {
        for (const Goal& goal : m_store.goals())
            if (goal.title == title)
                return goal.id.text();
        return {};
    }
    /// The title of the window's goal; empty for none.
    Q_INVOKABLE QString goalOfWindow(quint32 id) const
    {
        for (const Goal& goal : m_store.goals())
            for (const WindowItem& window : m_store.windows(goal.id))
                if (window.id == id)
                    return goal.title;
        return {};
    }

    Q_INVOKABLE void addTodo(const QString& title, const QString& goalTitle)
    {
        m_store.addTodo(title, goalTitled(goalTitle));
    }
    /// As stored, each title with its status: "Read (ing)". Of the unassigned list without a goal.
    Q_INVOKABLE QStringList todos(const QString& goalTitle) const
    {
        QStringList result;
        for (const TodoItem& todo : listOf(goalTitle))
            result.append(QStringLiteral("%1 (%2)").arg(todo.title, rawValue(todo.status)));
        return result;
    }
    Q_INVOKABLE QString todoID(const QString& title, const QString& goalTitle) const
    {
        for (const TodoItem& todo : listOf(goalTitle))
            if (todo.title == title)
                return todo.id.text();
        return {};
    }
    Q_INVOKABLE void removeTodos()
    {
        for (const TodoItem& todo : QList<TodoItem>(m_store.unassignedTodos()))
            m_store.deleteTodo(todo.id, std::nullopt);
        for (const Goal& goal : QList<Goal>(m_store.goals()))
            for (const TodoItem& todo : goal.todos)
                m_store.deleteTodo(todo.id, goal.id);
    }
    Q_INVOKABLE QString priorityOf(const QString& goalTitle) const
    {
        for (const Goal& goal : m_store.goals())
            if (goal.title == goalTitle)
                return rawValue(goal.priority);
        return {};
    }
    /// Everything that the interface can say in its current language.
    Q_INVOKABLE QStringList knownTexts() const
    {
        return test::knownTexts(CopyTable(m_store.language(), {}));
    }
    /// The pointer comes to a place of the item's window, dragging a text.
    Q_INVOKABLE void dragTo(QQuickItem* item, QPointF place)
    {
        const QPoint position = item->mapToScene(place).toPoint();
        m_dragged.setText(QStringLiteral("7"));
        if (!m_isDragging) {
            QDragEnterEvent enter(position, Qt::MoveAction, &m_dragged, Qt::LeftButton,
                                  Qt::NoModifier);
            QCoreApplication::sendEvent(item->window(), &enter);
        }
        m_isDragging = true;
        QDragMoveEvent move(position, Qt::MoveAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(item->window(), &move);
    }
    Q_INVOKABLE void dropAt(QQuickItem* item, QPointF place)
    {
        m_isDragging = false;
        QDropEvent drop(item->mapToScene(place), Qt::MoveAction, &m_dragged, Qt::LeftButton,
                        Qt::NoModifier);
        QCoreApplication::sendEvent(item->window(), &drop);
    }
    /// What assistive programs are told of the item: "disabled", "selectable", "selected",
    /// "checked".
    Q_INVOKABLE static QStringList states(QObject* item)
    {
        const QAccessible::State state = QAccessible::queryAccessibleInterface(item)->state();
        QStringList names;
        if (state.readOnly)
            names.append(QStringLiteral("read-only"));
        if (state.checkable)
            names.append(QStringLiteral("checkable"));
        if (state.selectable)
            names.append(QStringLiteral("selectable"));
        if (state.selected)
            names.append(QStringLiteral("selected"));
        if (state.checked)
            names.append(QStringLiteral("checked"));
        return names;
    }
    Q_INVOKABLE static void switchAccessibilityOn() { QAccessible::setActive(true); }
    /// No program has anything to paste.
    Q_INVOKABLE void clearClipboard() { QGuiApplication::clipboard()->clear(); }
    Q_INVOKABLE QString clipboard() const { return m_desktop.pasteboardText; }

private:
    static SettingsError errorOf(const QString& name)
    {
        static const QHash<QString, SettingsError> errors{
            {QStringLiteral("full"), SettingsError::full},
            {QStringLiteral("folder"), SettingsError::isFolder},
            {QStringLiteral("newer"), SettingsError::newer},
            {QStringLiteral("read-only"), SettingsError::readOnly}};
        return errors.value(name, SettingsError::failed);
    }
    std::optional<GoalID> goalTitled(const QString& title) const
    {
        return GoalID::fromText(columnOfGoal(title));
    }
    QList<TodoItem> listOf(const QString& goalTitle) const
    {
        for (const Goal& goal : m_store.goals())
            if (goal.title == goalTitle)
                return goal.todos;
        return m_store.unassignedTodos();
    }

    ViewSettings* m_viewSettings = nullptr;
    QMimeData m_dragged;
    bool m_isDragging = false;
    IconDesktop m_desktop;
    std::shared_ptr<IconWindows> m_iconWindows = std::make_shared<IconWindows>();
    test::ManualScheduler m_scheduler;
    test::MemorySettingsStore m_settings;
    WindowStore m_store{m_desktop.platform(), m_settings, m_scheduler};
    // Before the board follows the store, so that a card that appears finds its icon.
    QMetaObject::Connection m_iconFollowing =
        connect(&m_store, &WindowStore::windowsChanged, this,
                [this] { m_iconWindows->set(m_store.windows()); });
    BoardController m_controller{m_store};
};

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    /// Called for each file of tests, with an engine of its own.
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        registerViewTypes();
        engine->addImportPath(QStringLiteral(":/qt/qml"));
        auto* const world = new World(engine);
        engine->rootContext()->setContextProperty(QStringLiteral("world"), world);
        engine->addImageProvider(AppIconProvider::name(), world->makeIconProvider().release());
        world->followLanguage(*engine->singletonInstance<ViewSettings*>(
            qmlTypeId("Kelpa.Appearance", 1, 0, "ViewSettings")));
    }
};

} // namespace

QUICK_TEST_MAIN_WITH_SETUP(kelpa_views, Setup)

#include "QmlTests.moc"
