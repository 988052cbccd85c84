// A store on the fake desktop, with the manual scheduler and settings in memory.
#pragma once

#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "support/SignalLog.h"

#include <gtest/gtest.h>

#include <memory>

namespace kelpa::test {

class StoreFixture : public testing::Test
{
protected:
    /// The store, created at the first call from what `settings` holds by then.
    WindowStore& store()
    {
        if (!m_store) {
            m_store = std::make_unique<WindowStore>(desktop.platform(), settings, scheduler);
            // As the program does before it shows the board.
            m_store->awaitWindows({});
            settings.writeCount = 0;
            settings.changedEntryCount = 0;
            signalLog = std::make_unique<SignalLog>(*m_store);
        }
        return *m_store;
    }

    /// Replaces the store by a new one on the same settings.
    WindowStore& restartedStore()
    {
        signalLog.reset();
        m_store.reset();
        return store();
    }

    /// Creates a goal and returns its id.
    GoalID makeGoal(const QString& title = QStringLiteral("Goal"))
    {
        const QList<Goal> before = store().goals();
        store().createGoal(title);
        for (const Goal& goal : store().goals()) {
            const auto isSame = [&goal](const Goal& other) { return other.id == goal.id; };
            if (std::ranges::none_of(before, isSame))
                return goal.id;
        }
        ADD_FAILURE() << "no goal was made";
        return {};
    }

    /// Creates a todo and returns its id.
    TodoID makeTodo(std::optional<GoalID> in, const QString& title = QStringLiteral("Todo"))
    {
        store().addTodo(title, in);
        const QList<TodoItem> list = todos(in);
        if (list.isEmpty()) {
            ADD_FAILURE() << "no todo was made";
            return {};
        }
        return list.last().id;
    }

    const Goal& goal(GoalID id) { return *goalWith(id, store().goals()); }

    QList<TodoItem> todos(std::optional<GoalID> in)
    {
        return in ? goal(*in).todos : store().unassignedTodos();
    }

    QStringList goalTitles()
    {
        QStringList titles;
        for (const Goal& each : store().goals())
            titles.append(each.title);
        return titles;
    }

    /// The listed window with this number; a failure and a window without values when there is
    /// none.
    WindowItem listed(WindowID id)
    {
        const WindowItem* const window = windowWith(id, store().windows());
        if (window == nullptr) {
            ADD_FAILURE() << "window " << id << " is not listed";
            return {};
        }
        return *window;
    }

    std::optional<GoalID> goalOf(WindowID id) { return listed(id).goalID; }

    /// The signals since the last call, and the number of writes since then.
    QMap<QString, int> takeSignals() { return signalLog->take(); }
    int takeWriteCount() { return std::exchange(settings.writeCount, 0); }

    FakeDesktop desktop;
    ManualScheduler scheduler;
    MemorySettingsStore settings;
    std::unique_ptr<SignalLog> signalLog;

private:
    std::unique_ptr<WindowStore> m_store;
};

} // namespace kelpa::test
