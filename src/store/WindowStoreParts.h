// What works behind the published state of the store. For the store's own sources.
#pragma once

#include "platform/TaskGroup.h"
#include "store/Toast.h"
#include "store/WindowStore.h"
#include "store/board/BoardHistory.h"
#include "store/desktop/ActivationQueue.h"
#include "store/desktop/DiscoveryPasses.h"
#include "store/desktop/LaunchFollower.h"
#include "store/desktop/PreviewCaptures.h"
#include "windows/WindowSearch.h"

#include <memory>
#include <optional>
#include <utility>

namespace kelpa {

struct WindowStore::Parts
{
    Parts(WindowStore& store, const Platform& desktop, SettingsStore& storage, Scheduler& clock);

    /// What keeps the windows fresh.
    struct Observation
    {
        TaskHandle refreshTimer;
        TaskHandle previewTimer;
        std::unique_ptr<Subscription> windowWatch;
    };

    const Platform platform;
    SettingsStore& settings;
    Scheduler& scheduler;

    /// What is stored is on the board.
    bool isBoardLoaded = false;
    BoardHistory history;
    /// The board as it was saved last, whoever changed it.
    BoardVersion savedVersion;
    TaskHandle saveRetry;
    Toast toast;
    int targetGridColumnCount = 1;

    std::optional<Observation> observation;
    DiscoveryPasses looks;
    PreviewCaptures previewCaptures;
    ActivationQueue bringForwardQueue;
    LaunchFollower launches;
    /// Quits and what follows them.
    TaskGroup tasks;

    /// Derived from windows, searchText and previews; absent until it is asked for.
    std::optional<QList<WindowItem>> filteredWindows;
    std::optional<WindowsByGoal> windowsByGoal;
};

template <class Value>
bool WindowStore::publish(Value& member, Value value, Field field)
{
    if (member == value)
        return false;
    member = std::move(value);
    markChanged(field);
    return true;
}

} // namespace kelpa
