// Remembers the windows of goals, and recognises them when an application or a login begins anew.
// What is certain it hands to the store; what is not, it offers.
#pragma once

#include "platform/ExclusiveTask.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "store/StoreState.h"
#include "windows/memory/MemoryMatching.h"
#include "windows/memory/NewWindows.h"
#include "windows/memory/WindowMemory.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <functional>
#include <optional>
#include <vector>

namespace kelpa {

/// Main thread; matching is background work.
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
        /// `offers` and `absentWindows` may have changed.
        std::function<void()> changed;
    };

    /// `state` and `scheduler` outlive this. The state says whether windows are remembered.
    WindowRecall(const StoreState& state, Scheduler& scheduler, Handlers handlers);

    /// As it was stored. Until then nothing is recognised or stored.
    void load(const RememberedWindows& windows);
    /// A person switched it off: nothing is stored or recognised any more.
    void stop();
    /// A person switched it on: it begins with the windows that are listed.
    void startAnew();
    /// Switching it was undone or redone: it is as it was before.
    void noteSwitch();

    /// The windows of the state, or their goals, have changed.
    void noteWindows();
    /// A person gave the window a place, or none: it is not recognised any more.
    void settle(WindowID windowID);
    /// A remembered window of the goal that the listed one is, or stands for from now on; absent
    /// without one.
    std::optional<WindowID> counterpart(WindowID windowID, GoalID goalID) const;
    /// `windowID` has been given the goal of the remembered window.
    void replace(WindowID windowID, WindowID remembered);

    /// By listed window without a goal: what it may be, likeliest first, one for each goal.
    QHash<WindowID, QList<RecalledWindow>> offers() const;
    /// By goal: the windows that it had, seen last first.
    QHash<GoalID, QList<RememberedWindow>> absentWindows() const;

    /// What a save is to take along: nothing while what is stored is up to date.
    std::vector<SettingsEntry> entriesToSave();
    /// At the end of the program: stores what has waited until now.
    void finish();

private:
    bool isOn() const { return m_isLoaded && m_state.isRememberingWindows; }
    QList<RecalledWindow> offersOf(WindowID windowID) const;
    void matchLater();
    void match();
    void take(const WindowMatches& matches);
    void storeLater();

    const StoreState& m_state;
    Scheduler& m_scheduler;
    Handlers m_handlers;

    bool m_isLoaded = false;
    WindowMemory m_memory;
    NewWindows m_new;
    /// By listed window: what it may be. Windows stay here after they have ceased to be new.
    QHash<WindowID, QList<WindowID>> m_offers;

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
