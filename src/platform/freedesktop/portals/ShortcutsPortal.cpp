#include "platform/freedesktop/portals/ShortcutsPortal.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/SessionBus.h"
#include "platform/freedesktop/portals/ShortcutTypes.h"
#include "platform/freedesktop/portals/ShortcutsBus.h"
#include "platform/freedesktop/portals/ShortcutsChoice.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <limits>
#include <utility>

namespace kelpa {

namespace {

/// The first version whose dialog can be shown again.
constexpr unsigned configurableVersion = 2;

} // namespace

ShortcutsPortal::ShortcutsPortal(Scheduler& scheduler, Options options)
    : m_scheduler(scheduler), m_options(std::move(options)), m_writing(scheduler)
{
    registerShortcutTypes();
}

ShortcutsPortal::~ShortcutsPortal() = default;

void ShortcutsPortal::start(GlobalShortcutHandlers handlers, std::function<Descriptions()> describe)
{
    m_handlers = std::move(handlers);
    m_describe = std::move(describe);
    // Connecting blocks, so it happens off the main thread.
    m_connecting = m_scheduler.inBackground(
        [board = m_options.board, choiceFile = m_options.choiceFile](const std::stop_token&) {
            return Connected{sessionBusAddress().isEmpty() ? nullptr
                                                           : std::make_shared<ShortcutsBus>(),
                             areKeysChosenFor(board, choiceFile)};
        },
        [this](const Connected& connected) { listen(connected); });
}

void ShortcutsPortal::stop()
{
    m_handlers = {};
    m_connecting.reset();
    closeRequest();
    closeSession();
    forgetPortal();
    m_bus.reset();
    m_state = {};
}

void ShortcutsPortal::listen(const Connected& connected)
{
    m_connecting.reset();
    if (!connected.bus || !connected.bus->connection().isConnected())
        return;
    m_bus = connected.bus;
    m_isChosen = connected.isChosen;
    m_bus->followBus(this, SLOT(noteOwner(QDBusMessage)), SLOT(noteDisconnected()));
    m_bus->followKeys(this, SLOT(noteActivated(QDBusMessage)), SLOT(noteChanged(QDBusMessage)));
    ask();
}

void ShortcutsPortal::ask()
{
    m_isAsking = true;
    if (m_options.identity == PortalIdentity::sandbox) {
        readVersion();
        return;
    }
    // Before any other call. Portals before version 1.20 have no such method.
    call(portalRegistration(), [this](const QDBusPendingCallWatcher&) { readVersion(); });
}

void ShortcutsPortal::readVersion()
{
    call(shortcutsVersionQuestion(), [this](const QDBusPendingCallWatcher& watcher) {
        m_isAsking = false;
        const QDBusPendingReply<QDBusVariant> reply = watcher;
        const QVariant version = reply.isValid() ? reply.value().variant() : QVariant();
        if (version.metaType() != QMetaType::fromType<uint>())
            return;
        m_owner = reply.reply().service();
        m_version = version.toUInt();
        qCDebug(logBus, "the portal of shortcuts has version %u", m_version);
        setState({.standing = ShortcutStanding::offered});
        if (m_isChosen)
            createSession(Asker::start);
    });
}

void ShortcutsPortal::choose()
{
    if (m_state.standing == ShortcutStanding::given && m_version >= configurableVersion) {
        configure();
        return;
    }
    closeRequest();
    closeSession();
    if (m_state.standing == ShortcutStanding::absent) {
        if (m_handlers.failed)
            m_handlers.failed();
        return;
    }
    createSession(Asker::person);
}

void ShortcutsPortal::configure()
{
    QDBusMessage message = shortcutsCall(QStringLiteral("ConfigureShortcuts"));
    message << QVariant::fromValue(QDBusObjectPath(m_session)) << QString() << QVariantMap();
    // Portals may answer only once the dialog is done with, so the call has no limit.
    call(
        message,
        [this](const QDBusPendingCallWatcher& reply) {
            if (reply.isError() && reply.error().type() != QDBusError::NoReply && m_handlers.failed)
                m_handlers.failed();
        },
        std::chrono::milliseconds(std::numeric_limits<int>::max()));
}

void ShortcutsPortal::createSession(Asker asker)
{
    m_asker = asker;
    QDBusMessage message = shortcutsCall(QStringLiteral("CreateSession"));
    message << QVariantMap{{QStringLiteral("session_handle_token"), newPortalToken()}};
    request(message, Step::creating);
    // Nobody is asked for it.
    m_limit = m_scheduler.after(m_options.limit, [this] { fail(); });
}

void ShortcutsPortal::bind()
{
    QDBusMessage message = shortcutsCall(QStringLiteral("BindShortcuts"));
    // Without a name of the window, which Wayland's toolkits do not tell.
    message << QVariant::fromValue(QDBusObjectPath(m_session))
            << QVariant::fromValue(portalShortcuts(m_describe())) << QString() << QVariantMap();
    request(message, Step::binding);
}

void ShortcutsPortal::request(QDBusMessage message, Step step)
{
    const QString token = newPortalToken();
    QVariantList arguments = message.arguments();
    QVariantMap options = arguments.takeLast().toMap();
    options.insert(QStringLiteral("handle_token"), token);
    message.setArguments(arguments << options);
    m_step = step;
    // Known beforehand, so that no response is missed.
    followRequest(m_bus->requestPath(token));
    call(message, [this, path = m_requestPath](const QDBusPendingCallWatcher& watcher) {
        if (m_requestPath != path)
            return;
        const QDBusPendingReply<QDBusObjectPath> reply = watcher;
        if (!reply.isValid())
            fail();
        else if (reply.value().path() != path)
            followRequest(reply.value().path());
    });
}

void ShortcutsPortal::noteResponse(const QDBusMessage& message)
{
    if (message.path() != m_requestPath || message.service() != m_owner || m_requestPath.isEmpty())
        return;
    followRequest({});
    m_limit.reset();
    const Step step = std::exchange(m_step, Step::none);
    const PortalResponse response = portalResponse(message);
    if (step == Step::binding && response.outcome == PortalOutcome::cancelled) {
        giveUp();
        return;
    }
    if (response.outcome != PortalOutcome::given) {
        fail();
        return;
    }
    if (step == Step::binding) {
        takeKeys(response.results);
        return;
    }
    const QString sessionPath = sessionOf(response.results);
    if (!sessionPath.startsWith(u'/')) {
        fail();
        return;
    }
    followSession(sessionPath);
    bind();
}

void ShortcutsPortal::takeKeys(const QVariantMap& results)
{
    const auto keys = listedShortcuts(results.value(QStringLiteral("shortcuts")));
    if (!keys) {
        fail();
        return;
    }
    if (keys->empty()) {
        closeSession();
        setChosen(false);
        // Who has wanted keys and gets none hears of it.
        if (m_asker == Asker::person && m_handlers.failed)
            m_handlers.failed();
        return;
    }
    setChosen(true);
    setState({.standing = ShortcutStanding::given, .keys = *keys});
}

/// The portal does not do what it should.
void ShortcutsPortal::fail()
{
    m_limit.reset();
    closeRequest();
    closeSession();
    qCDebug(logBus, "the portal has given no shortcuts");
    if (m_asker == Asker::person && m_handlers.failed)
        m_handlers.failed();
}

/// The person has cancelled the dialog.
void ShortcutsPortal::giveUp()
{
    closeSession();
    // A second look at keys that were chosen changes nothing: they come back as at a start.
    if (m_asker == Asker::person && m_isChosen)
        createSession(Asker::start);
    else
        // The person wants no keys, and is not to be asked at each start.
        setChosen(false);
}

void ShortcutsPortal::closeRequest()
{
    m_limit.reset();
    m_step = Step::none;
    if (m_requestPath.isEmpty())
        return;
    const QString path = m_requestPath;
    followRequest({});
    if (m_bus)
        m_bus->close(path, portalRequestInterface());
}

void ShortcutsPortal::closeSession()
{
    if (m_session.isEmpty())
        return;
    const QString session = m_session;
    followSession({});
    if (m_bus)
        m_bus->close(session, portalSessionInterface());
    if (m_state.standing == ShortcutStanding::given)
        setState({.standing = ShortcutStanding::offered});
}

void ShortcutsPortal::forgetPortal()
{
    ++m_generation;
    m_isAsking = false;
    m_limit.reset();
    m_step = Step::none;
    followRequest({});
    followSession({});
    m_owner.clear();
    m_version = 0;
}

void ShortcutsPortal::noteOwner(const QDBusMessage& message)
{
    if (!isOwnerChange(message))
        return;
    const QString owner = message.arguments().constLast().toString();
    if (!owner.isEmpty() && (m_isAsking || owner == m_owner))
        return;
    const bool isAwaited = m_asker == Asker::person && m_step != Step::none;
    forgetPortal();
    setState({});
    if (isAwaited && m_handlers.failed)
        m_handlers.failed();
    if (!owner.isEmpty())
        ask();
}

void ShortcutsPortal::noteDisconnected()
{
    forgetPortal();
    setState({});
}

void ShortcutsPortal::noteActivated(const QDBusMessage& message)
{
    // The portal tells each session's owner only, but any program may send such a signal, and the
    // portal may have sent this one before it closed the session.
    const QVariantList values = message.arguments();
    if (message.service() != m_owner || message.signature() != QStringLiteral("osta{sv}") ||
        m_state.standing != ShortcutStanding::given ||
        values.at(0).value<QDBusObjectPath>().path() != m_session)
        return;
    const auto shortcut = shortcutNamed(values.at(1).toString());
    if (!shortcut || !m_handlers.activated)
        return;
    const auto options = qdbus_cast<QVariantMap>(values.at(3));
    m_handlers.activated(*shortcut,
                         options.value(QStringLiteral("activation_token")).toString().toUtf8());
}

void ShortcutsPortal::noteChanged(const QDBusMessage& message)
{
    const QVariantList values = message.arguments();
    if (message.service() != m_owner || message.signature() != QStringLiteral("oa(sa{sv})") ||
        m_state.standing != ShortcutStanding::given ||
        values.at(0).value<QDBusObjectPath>().path() != m_session)
        return;
    if (const auto keys = listedShortcuts(values.at(1)))
        setState({.standing = ShortcutStanding::given, .keys = *keys});
}

void ShortcutsPortal::noteClosed(const QDBusMessage& message)
{
    if (message.service() != m_owner || message.path() != m_session)
        return;
    followSession({});
    const bool wasAwaited = m_step != Step::none;
    closeRequest();
    setState({.standing = ShortcutStanding::offered});
    if (wasAwaited && m_asker == Asker::person && m_handlers.failed)
        m_handlers.failed();
}

void ShortcutsPortal::setState(const GlobalShortcutState& state)
{
    GlobalShortcutState known = state;
    // Without a name there is nothing to tell.
    std::erase_if(known.keys, [](const auto& each) { return each.second.isEmpty(); });
    if (std::exchange(m_state, known) != known && m_handlers.stateChanged)
        m_handlers.stateChanged();
}

void ShortcutsPortal::setChosen(bool isChosen)
{
    m_isChosen = isChosen;
    m_writing.add(
        [file = m_options.choiceFile, board = m_options.board, isChosen](const std::stop_token&) {
            storeKeysChoice(board, file, isChosen);
            return Done();
        },
        [](Done) {});
}

void ShortcutsPortal::call(const QDBusMessage& message,
                           std::function<void(const QDBusPendingCallWatcher& reply)> answered,
                           std::optional<std::chrono::milliseconds> limit)
{
    auto* const watcher = new QDBusPendingCallWatcher(
        m_bus->connection().asyncCall(message,
                                      static_cast<int>(limit.value_or(m_options.limit).count())),
        this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, generation = m_generation, answered = std::move(answered)] {
                watcher->deleteLater();
                if (generation == m_generation)
                    answered(*watcher);
            });
}

void ShortcutsPortal::followRequest(const QString& path)
{
    followInstead(m_requestPath, path, portalRequestInterface(), QStringLiteral("Response"),
                  SLOT(noteResponse(QDBusMessage)));
}

void ShortcutsPortal::followSession(const QString& path)
{
    followInstead(m_session, path, portalSessionInterface(), QStringLiteral("Closed"),
                  SLOT(noteClosed(QDBusMessage)));
}

void ShortcutsPortal::followInstead(QString& followed, const QString& path,
                                    const QString& interface, const QString& name, const char* slot)
{
    if (!followed.isEmpty() && m_bus)
        m_bus->unfollow(followed, interface, name, this, slot);
    followed = path;
    if (!path.isEmpty())
        m_bus->follow(path, interface, name, this, slot);
}

} // namespace kelpa
