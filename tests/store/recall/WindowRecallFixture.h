// A store whose two goals have a window each, for tests of what is remembered of them.
#pragma once

#include "model/WindowMemoryJson.h"
#include "store/WindowRecall.h"
#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {

class WindowRecalls : public StoreFixture
{
protected:
    /// Makes the goals and puts the two windows into them.
    void work()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        taxes = makeGoal(QStringLiteral("Taxes"));
        garden = makeGoal(QStringLiteral("Garden"));
        open(1, report);
        open(2, letter);
        store().assign(1, taxes);
        store().assign(2, garden);
    }

    void open(WindowID id, const QString& title)
    {
        desktop.addAccessibleWindow(id, editor, title);
        store().refresh();
    }

    void close(WindowID id)
    {
        desktop.removeWindow(id);
        store().refresh();
    }

    void rename(WindowID id, const QString& title)
    {
        for (WindowListEntry& entry : *desktop.windowList) {
            if (entry.number == id)
                entry.name = title;
        }
        store().refresh();
    }

    /// Ends Kelpa and the login, and begins new ones.
    void logInAgain()
    {
        store().finishSaving();
        desktop.removeWindow(1);
        desktop.removeWindow(2);
        restartedStore();
        store().refresh();
    }

    /// Begins a new run of Kelpa that has its windows before the memory is decoded, which
    /// `runBackgroundWork` does.
    void restartWithoutMemory()
    {
        scheduler.holdBackgroundWork(true);
        restartedStore();
        scheduler.holdBackgroundWork(false);
        store().refresh();
    }

    void waitForBurst() { scheduler.advance(WindowRecall::burstTime); }

    std::optional<RememberedWindows> stored() const
    {
        return decodeRememberedWindows(settings.document(windowMemoryKey));
    }

    QStringList storedTitles() const
    {
        QStringList titles;
        for (const RememberedWindow& each : stored().value_or(RememberedWindows()).windows)
            titles.append(each.traits.title);
        return titles;
    }

    const QString report = QStringLiteral("Report");
    const QString letter = QStringLiteral("Letter");
    static constexpr ProcessID editor = 100;

    GoalID taxes;
    GoalID garden;
};

} // namespace kelpa::test
