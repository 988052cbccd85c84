#include "app/AutomationService.h"

#include "automation/Methods.h"
#include "store/WindowStore.h"

#include <utility>

namespace kelpa {

namespace {

using namespace automation;

BusError errorOf(const Failure& failure)
{
    return {errorName(failure.kind), failure.message};
}

const QString goalsPart = QStringLiteral("goals");
const QString todosPart = QStringLiteral("todos");
const QString windowsPart = QStringLiteral("windows");

} // namespace

AutomationService::AutomationService(BusObject& object, WindowStore& store, Scheduler& scheduler,
                                     Surroundings surroundings)
    : m_object(object), m_store(store), m_scheduler(scheduler),
      m_surroundings(std::move(surroundings)), m_lists(scheduler), m_pins(store.pins())
{
    connect(&store, &WindowStore::goalsChanged, this, [this] {
        // A goal's todos are a part of it.
        noteChanged(goalsPart);
        noteChanged(todosPart);
    });
    connect(&store, &WindowStore::pinsChanged, this, [this] {
        // Also emitted for the virtual desktops that there are, which are no part of the board.
        if (std::exchange(m_pins, m_store.pins()) != m_store.pins())
            noteChanged(goalsPart);
    });
    connect(&store, &WindowStore::unassignedTodosChanged, this, [this] { noteChanged(todosPart); });
    connect(&store, &WindowStore::windowsChanged, this, [this] { noteChanged(windowsPart); });
    m_object.setHandler(
        [this](const QString& method, const QVariantList& arguments,
               const BusObject::Respond& respond) { handle(method, arguments, respond); });
}

AutomationService::~AutomationService()
{
    m_object.setHandler({});
}

void AutomationService::handle(const QString& method, const QVariantList& arguments,
                               const BusObject::Respond& respond)
{
    Q_EMIT called();
    const auto request = requestFrom(method, arguments);
    if (const auto* const failure = std::get_if<Failure>(&request)) {
        respond(errorOf(*failure));
        return;
    }
    const Outcome outcome = perform(m_store, m_surroundings, std::get<Request>(request));
    if (const auto* const failure = std::get_if<Failure>(&outcome))
        respond(errorOf(*failure));
    else
        send(std::get<Reply>(outcome), respond);
}

void AutomationService::send(const Reply& reply, const BusObject::Respond& respond)
{
    if (std::holds_alternative<Nothing>(reply) || std::holds_alternative<Added>(reply)) {
        respond(toWire(reply));
        return;
    }
    if (isTooLarge(reply)) {
        respond(
            errorOf({FailureKind::tooLarge, QStringLiteral("the list has more than %1 MiB of text")
                                                .arg(largestReply / 1024 / 1024)}));
        return;
    }
    if (m_listsUnderWay >= mostListsUnderWay) {
        respond(errorOf({FailureKind::busy, QStringLiteral("too many lists are under way")}));
        return;
    }
    ++m_listsUnderWay;
    m_lists.add(
        [reply, respond](const std::stop_token&) {
            respond(toWire(reply));
            return Done{};
        },
        [this](Done) { --m_listsUnderWay; });
}

void AutomationService::noteChanged(const QString& part)
{
    if (!m_changed.contains(part))
        m_changed.append(part);
    if (m_announcement)
        return;
    m_announcement = m_scheduler.after(announcementInterval, [this] {
        const TaskHandle done = std::move(m_announcement);
        m_object.emitSignal(changedSignal, {std::exchange(m_changed, {})});
    });
}

} // namespace kelpa
