#include "views/gestures/GestureSession.h"

#include "platform/Workers.h"
#include "support/BoardBuilders.h"
#include "views/scene/WaterfallView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace kelpa::test {

using namespace std::chrono_literals;

namespace {

/// Does what is to be done at once.
class PromptWorkers final : public Workers
{
public:
    void start(std::function<void()> task) override { task(); }
};

} // namespace

GestureSession::GestureSession(std::uint64_t seed) : m_seed(seed), m_random(seed)
{
    // The sequence before has left something there.
    QGuiApplication::clipboard()->clear();
    fillBoard();
    m_view = std::make_unique<ViewEngine>(store(), desktop, std::make_shared<PromptWorkers>(),
                                          ViewEngine::Options{.keyNames = KeyNames::withSuper(),
                                                              .appearance = std::nullopt,
                                                              .isReducingMotion = seed % 4 != 3});
    if (!m_view->load()) {
        m_startFaults = QStringLiteral("the interface cannot be loaded");
        return;
    }
    m_window = m_view->window();
    m_controller = m_window->property("board").value<BoardController*>();
    m_backups = std::make_unique<BackupBrowser>(store(), m_backupFiles, scheduler);
    m_view->setBackups(*m_backups);
    m_transfer = std::make_unique<BoardTransfer>(store(), m_keptBackups, m_files, scheduler);
    m_view->setTransfer(*m_transfer, m_dialogs, m_files, scheduler);
    // Closing hides the board, which goes on.
    m_view->setStaying([] { return true; });
    m_view->show();
    m_window->showNormal();
    m_window->resize(1100, 700);
    m_window->requestActivate();
    store().startObserving();
    if (!settle() || !m_window->isActive())
        m_startFaults = QStringLiteral("the board does not show and rest");
}

GestureSession::~GestureSession()
{
    m_view.reset();
    ManualViewTime::deliverEvents();
}

void GestureSession::fillBoard()
{
    store().setLanguage(AppLanguage::english);
    for (WindowID id = 1; id <= 12; ++id)
        desktop.addWindow(id, 100 + static_cast<ProcessID>(id % 4),
                          QStringLiteral("Window %1").arg(id));
    store().refresh();
    for (const QString& title : {QStringLiteral("Taxes"), QStringLiteral("Garden"),
                                 QStringLiteral("A goal with quite a long title for its card")}) {
        const GoalID goal = makeGoal(title);
        for (int i = 0; i < 4; ++i)
            makeTodo(goal, QStringLiteral("%1 %2").arg(title.left(6)).arg(i));
    }
    // A board starts without a selection.
    store().clearTargetSelection();
    m_backupFiles.add(QStringLiteral("yesterday"),
                      {test::goal(QStringLiteral("Old"), {todo(QStringLiteral("Begin"))})});
    m_files.files.insert(QStringLiteral("/list.txt"), "First\nSecond\nx Third\n");
}

QStringList GestureSession::moving() const
{
    QStringList names;
    const QList<QQuickItem*> items = shownItems(m_window->contentItem());
    for (const QQuickItem* const item : items) {
        // A title that scrolls by itself never rests, and is none of these.
        const bool isPart =
            isOfType(*item, "GoalBoard") || qobject_cast<const WaterfallView*>(item) != nullptr;
        if ((isPart && item->property("isMoving").toBool()) ||
            item->property("isResizing").toBool())
            names.append(QString::fromLatin1(item->metaObject()->className()));
    }
    return names;
}

bool GestureSession::settle()
{
    constexpr int mostFrames = 200;
    // What a frame begins, the next one shows.
    constexpr int framesAtRest = 3;
    int frames = 0;
    for (int i = 0; i < mostFrames && frames < framesAtRest; ++i) {
        m_time.pass(40ms);
        ManualViewTime::drawFrame(*m_window);
        frames = moving().isEmpty() ? frames + 1 : 0;
    }
    return frames == framesAtRest;
}

QStringList GestureSession::faultsAtRest()
{
    if (!settle())
        return {QStringLiteral("still moving: %1").arg(moving().join(u' '))};
    return brokenPromisesAtRest(shownBoard());
}

std::string GestureSession::description()
{
    const BoardNavigationState& state = store().boardNavigation();
    const QQuickItem* const holder = m_window->activeFocusItem();
    QStringList parts;
    for (const Goal& each : store().goals())
        parts.append(QStringLiteral("%1:%2").arg(each.title).arg(each.todos.size()));
    parts.append(QString::number(store().unassignedTodos().size()));
    parts.append(QString::number(store().windows().size()));
    parts.append(QString::number(m_controller->selectedTarget()));
    parts.append(QString::number(state.selectedWindowID.value_or(0)));
    parts.append(typeName(holder));
    return parts.join(u' ').toStdString();
}

void GestureSession::thinOut()
{
    while (store().goals().size() > 10)
        store().deleteGoal(store().goals().last().id);
    while (store().unassignedTodos().size() > 20)
        store().deleteTodo(store().unassignedTodos().last().id, std::nullopt);
    for (const Goal& each : QList<Goal>(store().goals())) {
        for (qsizetype i = each.todos.size(); i > 20; --i)
            store().deleteTodo(each.todos[i - 1].id, each.id);
    }
}

/// A person who closed the window opens it again.
void GestureSession::showAgain()
{
    if (m_window->isVisible() && m_window->isActive())
        return;
    m_mayBeWriting = true;
    m_window->showNormal();
    m_window->requestActivate();
    ManualViewTime::deliverEvents();
}

GestureSession::Outcome GestureSession::perform(int number)
{
    if (!m_startFaults.isEmpty())
        return {"start", m_startFaults.toStdString(), {}};
    std::seed_seq numbers{static_cast<std::uint32_t>(m_seed),
                          static_cast<std::uint32_t>(m_seed >> 32),
                          static_cast<std::uint32_t>(number)};
    m_random.seed(numbers);
    thinOut();
    showAgain();
    Outcome outcome;
    outcome.gesture = anyGesture();
    scheduler.advance(0ms);
    m_time.pass(16ms);
    showAgain();
    // Some gestures meet a board on which the one before still has an effect.
    const QStringList faults = chance(4) ? brokenPromises(shownBoard()) : faultsAtRest();
    outcome.faults = (faults + m_complaints.take()).join(u'\n').toStdString();
    outcome.board = description();
    return outcome;
}

GestureSession::Outcome GestureSession::findKeyboardAgain()
{
    constexpr int mostLayers = 12;
    showAgain();
    for (int i = 0; i < mostLayers; ++i) {
        QTest::keyClick(m_window, Qt::Key_Escape);
        settle();
    }
    QTest::keyClick(m_window, Qt::Key_Right);
    QStringList faults = faultsAtRest();
    if (store().boardNavigation().target.isNone())
        faults.append(QStringLiteral("an arrow key selects nothing"));
    return {"leave everything and press an arrow key",
            (faults + m_complaints.take()).join(u'\n').toStdString(), description()};
}

} // namespace kelpa::test
