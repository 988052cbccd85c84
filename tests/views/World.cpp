#include "views/World.h"

#include "platform/qt/WorkerPool.h"
#include "support/BoardBuilders.h"
#include "views/KnownTexts.h"

#include <QHash>

#include <algorithm>

namespace kelpa::test {

World::World(QObject* parent) : WorldInput(parent)
{
    m_store.setLanguage(AppLanguage::english);
    m_store.setAutoSortingGoals(false);
    m_store.refresh();
    const TransferParts parts{m_transfer, m_dialogs, m_files, m_scheduler,
                              QStringLiteral("/home/ada")};
    m_controller.exporting()->setParts(parts);
    m_controller.importing()->setParts(parts);
}

void World::answerFileDialog(const QString& path)
{
    m_dialogs.answer(path.isEmpty() ? FileAnswer::Outcome::cancelled : FileAnswer::Outcome::chosen,
                     path);
}

void World::loseFileDialog()
{
    m_dialogs.answer(FileAnswer::Outcome::unavailable);
}

void World::putFile(const QString& path, const QString& content)
{
    m_files.files.insert(path, content.toUtf8());
}

QString World::file(const QString& path) const
{
    return QString::fromUtf8(m_files.files.value(path));
}

void World::finishFileWork()
{
    m_scheduler.runBackgroundWork();
    m_scheduler.runBackgroundWork();
}

std::unique_ptr<AppIconProvider> World::makeIconProvider()
{
    return std::make_unique<AppIconProvider>(m_desktop, m_iconWindows,
                                             std::make_shared<WorkerPool>(1));
}

void World::followLanguage(ViewSettings& settings)
{
    m_viewSettings = &settings;
    const auto follow = [this, &settings] { settings.setLanguage(m_store.language()); };
    connect(&m_store, &WindowStore::languageChanged, &settings, follow);
    follow();
}

void World::setDark(bool isDark)
{
    m_viewSettings->setAppearance(isDark ? Appearance::dark : Appearance::light);
}

void World::setHighContrast(bool isHigh)
{
    m_viewSettings->setHighContrast(isHigh);
}

void World::lack(const QString& ability, bool isPartial)
{
    const QHash<QString, std::pair<DesktopAbility, AbilityGap>> known{
        {QStringLiteral("windows"), {DesktopAbility::windows, AbilityGap::compositorProtocol}},
        {QStringLiteral("extension"), {DesktopAbility::windows, AbilityGap::shellExtensionOff}},
        {QStringLiteral("actions"), {DesktopAbility::actions, AbilityGap::compositorProtocol}},
        {QStringLiteral("quitting"), {DesktopAbility::quitting, AbilityGap::compositorProtocol}},
        {QStringLiteral("minimizing"),
         {DesktopAbility::minimizing, AbilityGap::compositorProtocol}},
        {QStringLiteral("virtualDesktops"),
         {DesktopAbility::virtualDesktops, AbilityGap::windowsNotSent}},
        {QStringLiteral("previews"), {DesktopAbility::previews, AbilityGap::compositorProtocol}},
        {QStringLiteral("globalKeys"), {DesktopAbility::globalKeys, AbilityGap::keysOfXwayland}}};
    const auto [which, gap] = known[ability];
    m_desktop.givesAbilities = gap == AbilityGap::shellExtensionOff;
    m_desktop.lack(
        which, {.gap = isPartial ? AbilityGap::windowsOfXwayland : gap, .isPartial = isPartial});
    m_store.refresh();
}

void World::lackNothing()
{
    m_desktop.lackNothing();
    m_store.refresh();
}

void World::addWindow(quint32 id, const QString& title)
{
    openWindow(id, title);
    m_store.refresh();
}

void World::openWindow(quint32 id, const QString& title)
{
    // A frame of its own distinguishes it from the other windows of its application.
    WindowListEntry& entry = m_desktop.addAccessibleWindow(id, 1000, title);
    entry.bounds->x = 100.0 * (id % 16);
    m_desktop.accessibilityWindows[1000]->back().position->x = entry.bounds->x;
}

void World::changeWindow(quint32 id, const std::function<void(WindowListEntry& entry)>& edit)
{
    for (WindowListEntry& entry : *m_desktop.windowList) {
        if (entry.number == id)
            edit(entry);
    }
    m_store.refresh();
}

void World::nameOwner(quint32 id, const QString& name)
{
    changeWindow(id, [&](WindowListEntry& entry) { entry.ownerName = name; });
}

void World::replaceIcon(quint32 id)
{
    m_desktop.setIcon(id, Qt::blue);
    changeWindow(id, [&](WindowListEntry& entry) { ++entry.iconRevision; });
}

void World::moveToDesktop(quint32 id, const QString& name)
{
    changeWindow(id, [&](WindowListEntry& entry) {
        entry.virtualDesktop = name.isEmpty() ? std::nullopt : std::optional(name);
    });
}

void World::offerDesktops(const QStringList& names)
{
    m_desktop.virtualDesktops = names;
    for (WindowListEntry& entry : *m_desktop.windowList)
        entry.desktopNumber = 1;
    m_store.refresh();
}

void World::setAwaitingAnswer(quint32 id, bool isAwaiting)
{
    changeWindow(id, [&](WindowListEntry& entry) { entry.isAwaitingAnswer = isAwaiting; });
}

void World::recognizeApplication()
{
    m_desktop.applications[1000].bundleIdentifier = QStringLiteral("org.example.Known");
    m_store.refresh();
}

void World::forgetApplication()
{
    m_desktop.applications[1000].bundleIdentifier = std::nullopt;
    m_store.refresh();
}

void World::hideWindow(quint32 id)
{
    m_desktop.onScreen.remove(id);
    m_store.refresh();
}

void World::removeWindow(quint32 id)
{
    m_desktop.removeWindow(id);
    const double x = 100.0 * (id % 16);
    std::erase_if(*m_desktop.accessibilityWindows[1000],
                  [x](const AccessibilityWindow& each) { return each.position->x == x; });
    m_store.refresh();
}

void World::capture()
{
    for (const WindowItem& window : m_store.windows())
        m_desktop.captureSizes.insert(window.id, {640, 480});
    captureInVain();
}

void World::captureInVain()
{
    m_store.refreshPreviews(m_scheduler.now());
    runPending();
}

void World::pass(int milliseconds)
{
    m_scheduler.advance(std::chrono::milliseconds(milliseconds));
}

void World::offerBackups(const QStringList& goalTitles)
{
    m_backupFiles.backups = {{QStringLiteral("unreadable"), {}, BackupReason::beforeRestore}};
    for (const QString& title : goalTitles)
        m_backupFiles.add(title, {goal(title, {todo(QStringLiteral("Begin"))})});
    m_controller.backups()->setBrowser(m_backups);
}

void World::hangDisk()
{
    m_settings.isSlow = true;
    m_settings.isHanging = true;
}

void World::failDisk(const QString& error)
{
    m_settings.isSlow = false;
    m_settings.isHanging = false;
    m_settings.error = errorOf(error);
    m_settings.isFailing = true;
    m_settings.endSave();
}

void World::recoverDisk()
{
    m_settings.isSlow = false;
    m_settings.isHanging = false;
    m_settings.isFailing = false;
    m_settings.endSave();
}

void World::breakDisk(const QString& error)
{
    m_settings.error = errorOf(error);
    m_settings.isFailing = true;
    m_store.retrySaving();
}

void World::moveFileAside(const QString& name, bool isRestored)
{
    m_settings.movedAside = {name, isRestored};
    m_store.retrySaving();
}

void World::grantPermissions()
{
    m_desktop.obstacleOfAccessibility = Obstacle::permission;
    m_desktop.obstacleOfScreenCapture = Obstacle::permission;
    setPermissions(true, true);
}

void World::setPermissions(bool isAccessibilityGranted, bool isScreenCaptureGranted)
{
    m_desktop.isAccessibilityGranted = isAccessibilityGranted;
    m_desktop.isScreenCaptureGranted = isScreenCaptureGranted;
    m_store.refresh();
}

void World::takeWindowManager()
{
    m_desktop.obstacleOfAccessibility = Obstacle::windowManager;
    m_desktop.obstacleOfScreenCapture = Obstacle::windowManager;
    denyPermissions();
}

void World::leavePermissionsUnknown()
{
    m_desktop.obstacleOfAccessibility = std::nullopt;
    m_desktop.obstacleOfScreenCapture = std::nullopt;
    denyPermissions();
}

void World::takeComposite()
{
    m_desktop.obstacleOfScreenCapture = Obstacle::composite;
    setPermissions(true, false);
}

void World::moveSelection(int key)
{
    using enum NavigationDirection;
    m_store.moveTargetSelection(key == Qt::Key_Left    ? left
                                : key == Qt::Key_Right ? right
                                : key == Qt::Key_Up    ? up
                                                       : down);
}

QString World::selectedGoal() const
{
    for (const Goal& goal : m_store.goals())
        if (m_store.boardNavigation().target == TargetSelection::goal(goal.id))
            return goal.title;
    return {};
}

QStringList World::goalTitles() const
{
    QStringList titles;
    for (const Goal& goal : m_store.goals())
        titles.append(goal.title);
    return titles;
}

QString World::columnOfGoal(const QString& title) const
{
    const Goal* const goal = goalTitled(title);
    return goal == nullptr ? QString() : goal->id.text();
}

QString World::goalOfWindow(quint32 id) const
{
    for (const Goal& goal : m_store.goals())
        for (const WindowItem& window : m_store.windows(goal.id))
            if (window.id == id)
                return goal.title;
    return {};
}

void World::addTodo(const QString& title, const QString& goalTitle)
{
    m_store.addTodo(title, GoalID::fromText(columnOfGoal(goalTitle)));
}

QStringList World::todos(const QString& goalTitle) const
{
    QStringList result;
    for (const TodoItem& todo : listOf(goalTitle))
        result.append(QStringLiteral("%1 (%2)").arg(todo.title, rawValue(todo.status)));
    return result;
}

QString World::todoID(const QString& title, const QString& goalTitle) const
{
    for (const TodoItem& todo : listOf(goalTitle))
        if (todo.title == title)
            return todo.id.text();
    return {};
}

void World::removeTodos()
{
    for (const TodoItem& todo : QList<TodoItem>(m_store.unassignedTodos()))
        m_store.deleteTodo(todo.id, std::nullopt);
    for (const Goal& goal : QList<Goal>(m_store.goals()))
        for (const TodoItem& todo : goal.todos)
            m_store.deleteTodo(todo.id, goal.id);
}

void World::removeEveryOtherTodo()
{
    BoardContents board;
    board.goals = m_store.goals();
    board.unassignedTodos = m_store.unassignedTodos();
    for (Goal& goal : board.goals) {
        QList<TodoItem> rest;
        rest.reserve(goal.todos.size());
        for (qsizetype i = 0; i < goal.todos.size(); i += 2)
            rest.append(goal.todos.at(i));
        goal.todos = rest;
    }
    m_store.restoreBackup(board);
}

QString World::priorityOf(const QString& goalTitle) const
{
    const Goal* const goal = goalTitled(goalTitle);
    return goal == nullptr ? QString() : rawValue(goal->priority);
}

QStringList World::knownTexts() const
{
    return test::knownTexts(CopyTable(m_store.language(), {}));
}

SettingsError World::errorOf(const QString& name)
{
    static const QHash<QString, SettingsError> errors{
        {QStringLiteral("full"), SettingsError::full},
        {QStringLiteral("folder"), SettingsError::isFolder},
        {QStringLiteral("newer"), SettingsError::newer},
        {QStringLiteral("read-only"), SettingsError::readOnly}};
    return errors.value(name, SettingsError::failed);
}

const Goal* World::goalTitled(const QString& title) const
{
    const auto found = std::ranges::find(m_store.goals(), title, &Goal::title);
    return found == m_store.goals().end() ? nullptr : &*found;
}

QList<TodoItem> World::listOf(const QString& goalTitle) const
{
    const Goal* const goal = goalTitled(goalTitle);
    return goal == nullptr ? m_store.unassignedTodos() : goal->todos;
}

} // namespace kelpa::test
