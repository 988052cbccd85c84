// Remembers the windows of goals, and recognises them when an application or a login begins anew.
// What is certain it hands to the store; what is not, it offers.
#pragma once

#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "platform/tasks/ExclusiveTask.h"
#include "store/StoreState.h"
#include "windows/memory/MemoryMatching.h"
#include "windows/memory/NewWindows.h"
#include "windows/memory/WindowMemory.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>

#include <functional>
#include <optional>
#include <vector>

namespace kelpa {

/// Main thread; decoding and matching are background work.
class WindowRecall
{
public:
    /// How long windows are collected before they are given back, so that those of a login or of an
    /// application are one step, and their titles have settled.
    static constexpr Scheduler::Duration burstTime{1000};
    /// How long a change of what is remembered may wait, so that titles that change all the time
    /// are seldom stored. Each save of the board takes it along.
    static constexpr Scheduler::Duration storingDelay{15'000};

    struct Handlers
    {
        /// Receives windows that certainly are remembered ones. None of them has been given a goal.
        std::function<void(const QList<RecalledWindow>& windows)> recalled;
        /// Stores entries without waiting for another save.
        std::function<void(const std::vector<SettingsEntry>& entries)> store;
        /// Keeps a copy of what is stored, which does not decode and is about to be replaced.
        std::function<void()> copyAside;
        /// `offers` and `absentWindows` may have changed.
        std::function<void()> changed;
    };

    /// `state` and `scheduler` outlive this. The state says whether windows are remembered.
    WindowRecall(const StoreState& state, Scheduler& scheduler, Handlers handlers);

    /// Takes what is stored, if anything, with the board of the state. A thousand windows take
    /// longer to decode than a frame, so that happens in the background; until then nothing is
    /// recognised or stored, except that a memory that is switched off is emptied.
    void load(const std::optional<QByteArray>& document);
    /// Waits up to `limit` until that is done.
    void waitFor(Scheduler::Duration limit);
    /// A person switched it off: nothing is stored or recognised any more.
    void stop();
    /// A person switched it on: it begins with the windows that are listed.
    void startAnew();
    /// Switching it was undone or redone: it is as it was before.
    void noteSwitch();

    /// The windows of the state, or their goals, have changed.
    void noteWindows();
    /// A person gave the window a place, or none: it is not recognised any more. What it is offered
    /// stays, for undo: the state says which offers a person has answered.
    void settle(WindowID windowID);
    bool hasOffer(WindowID windowID) const { return m_offers.contains(windowID); }
    /// A remembered window of the goal that the listed one is, or stands for from now on; absent
    /// without one.
    std::optional<WindowID> counterpart(WindowID windowID, GoalID goalID) const;
    /// `windowID` has been given the goal of the remembered window.
    void replace(WindowID windowID, WindowID remembered);

    /// By listed window without a goal: what it may be, likeliest first, one for each goal.
    QHash<WindowID, QList<RecalledWindow>> offers() const;
    /// By goal: the windows that it had, seen last first.
    QHash<GoalID, QList<RememberedWindow>> absentWindows() const;
    /// Those goals of `absent` some of whose windows were there since the start.
    QSet<GoalID> goalsWithClosedWindows(const QHash<GoalID, QList<RememberedWindow>>& absent) const;

    /// What a save is to take along: nothing while what is stored is up to date.
    std::vector<SettingsEntry> entriesToSave();
    /// At the end of the program: stores what has waited until now. Where something of what is
    /// still being decoded is to go, waits for it, but not for ever.
    void finish();

private:
    /// `storedCount` windows are in the file, whether or not `memory` has them all.
    void begin(WindowMemory memory, qsizetype storedCount);
    /// Whether the file has windows that were taken out of their goals since, or all forgotten.
    bool isOutdated() const;
    bool isOn() const { return m_isLoaded && m_state.isRememberingWindows; }
    QList<RecalledWindow> offersOf(WindowID windowID) const;
    /// Whether nothing has changed since of what `noteWindows` looks at.
    bool isNoted() const;
    /// Those of windows that are gone, and of remembered ones that undo cannot bring back.
    void forgetOffers();
    void matchLater();
    void match();
    void take(const WindowMatches& matches);
    void storeLater();

    const StoreState& m_state;
    Scheduler& m_scheduler;
    Handlers m_handlers;

    bool m_isLoaded = false;
    /// Absent while nothing is being decoded.
    TaskHandle m_loading;
    /// What is being decoded has been emptied in the file.
    bool m_isEmptied = false;
    /// To which a person gave a place, or none, before the memory was there.
    QSet<WindowID> m_settledBefore;
    WindowMemory m_memory;
    NewWindows m_new;
    /// By listed window: what it may be. Windows stay here after they have ceased to be new, until
    /// they are gone.
    QHash<WindowID, QList<WindowID>> m_offers;

    struct NotedBoard
    {
        QList<WindowItem> windows;
        Assignments assignments;
        QSet<GoalID> goalIDs;
    };
    /// Absent before the first time, and after a window was settled or all were forgotten.
    std::optional<NotedBoard> m_noted;
    bool m_isWorthStoring = false;
    /// With which the memory was stored last; what it contains depends on them.
    Assignments m_storedAssignments;
    QSet<GoalID> m_storedGoals;
    WindowID m_storedNewest = 0;

    /// Begins matching; absent while nothing has changed since.
    TaskHandle m_burst;
    ExclusiveTask m_matching;
    TaskHandle m_storing;
};

} // namespace kelpa
