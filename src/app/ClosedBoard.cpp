#include "app/ClosedBoard.h"

#include "app/BackupCommands.h"
#include "app/SavedBoard.h"
#include "automation/Operations.h"
#include "automation/Records.h"
#include "platform/AbilityReport.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "platform/qt/QtScheduler.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/windowless/NoWindows.h"
#include "store/WindowStore.h"

#include <QFileInfo>

#include <functional>
#include <optional>
#include <utility>

namespace kelpa {

namespace {

using namespace automation;

class NoPasteboard final : public Pasteboard
{
public:
    void setText(const QString& /*text*/) override {}
};

class NoWorkspace final : public Workspace
{
public:
    TaskHandle findOpener(const QUrl& /*url*/, std::function<void(bool)> /*found*/) override
    {
        return nullptr;
    }
    void requestOpen(const QUrl& /*url*/) override {}
};

/// What the store needs of a desktop, where there is none.
struct NoDesktop
{
    Platform platform() { return {windows, windows, windows, pasteboard, workspace, abilities}; }

    NoWindows windows;
    NoPasteboard pasteboard;
    NoWorkspace workspace;
    FixedAbilities abilities{DesktopAbilities::without(AbilityGap::choice)};
};

template <class Kind>
bool is(const Request& request)
{
    return std::holds_alternative<Kind>(request);
}

/// Taking a pin off needs no desktop.
bool isPinTo(const Request& request)
{
    const auto* const pin = std::get_if<PinGoal>(&request);
    return pin != nullptr && !pin->desktop.isEmpty();
}

Failure notRunning(const QString& reason)
{
    return {FailureKind::notRunning, reason};
}

Outcome listSaved(const QString& settingsPath, const Request& request)
{
    std::optional<BoardContents> board = savedBoard(settingsPath);
    // There is nothing on a board that does not exist yet.
    if (!board && !QFileInfo::exists(settingsPath))
        board.emplace();
    if (!board)
        return Failure{FailureKind::notSaved,
                       QStringLiteral("the board in %1 cannot be read").arg(settingsPath)};
    if (is<ListGoals>(request))
        return Reply(goalRecords(board->goals, board->pins));
    return Reply(todoRecords(board->goals, board->unassignedTodos));
}

std::optional<Outcome> change(const QString& settingsPath, const Request& request)
{
    SqliteSettingsStore settings(settingsPath);
    if (settings.isAlreadyInUse())
        return std::nullopt;
    if (!settings.isLoaded() || settings.status().error)
        return Failure{FailureKind::notSaved,
                       QStringLiteral("the board in %1 cannot be opened").arg(settingsPath)};
    backUpDaily(settings);
    NoDesktop desktop;
    QtScheduler scheduler;
    WindowStore store(desktop.platform(), settings, scheduler);
    Outcome outcome = perform(store, {}, request);
    store.finishSaving();
    scheduler.shutDown();
    if (std::holds_alternative<Reply>(outcome) && !settings.isSaved())
        return Failure{FailureKind::notSaved,
                       QStringLiteral("the board in %1 could not be saved; it is as it was")
                           .arg(settingsPath)};
    return outcome;
}

} // namespace

std::optional<Outcome> performOnClosedBoard(const QString& settingsPath, const Request& request)
{
    if (is<ListGoals>(request) || is<ListTodos>(request))
        return listSaved(settingsPath, request);
    if (is<Undo>(request) || is<Redo>(request))
        return notRunning(QStringLiteral("Kelpa does not run; it keeps the steps that can be "
                                         "undone only as long as it runs"));
    if (is<ListWindows>(request) || is<AssignWindow>(request) || is<ShowGoal>(request) ||
        isPinTo(request) || is<RaiseWindows>(request) || is<WorkOnGoal>(request) ||
        is<GoBack>(request))
        return notRunning(
            QStringLiteral("Kelpa does not run, which this needs; 'kelpa --show' starts it"));
    return change(settingsPath, request);
}

} // namespace kelpa
