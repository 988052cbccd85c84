#include "platform/freedesktop/portals/ShortcutsPortal.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/SessionBus.h"
#include "platform/freedesktop/portals/ShortcutTypes.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

#include <limits>
#include <utility>

namespace kelpa {

namespace {

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
const QString busInterface = QStringLiteral("org.freedesktop.DBus");
const QString responseSignal = QStringLiteral("Response");
const QString closedSignal = QStringLiteral("Closed");

constexpr uint codeGiven = 0;
constexpr uint codeCancelled = 1;
/// The first version whose dialog can be shown again.
constexpr unsigned configurableVersion = 2;
constexpr qint64 longestPath = 65'536;

QString newToken()
{
    return QStringLiteral("kelpa") + QUuid::createUuid().toString(QUuid::Id128);
}

QDBusMessage callOf(const QString& method)
{
    return QDBusMessage::createMethodCall(portalName, portalPath, shortcutsInterface, method);
}

bool isChosenFor(const QString& board, const QString& choiceFile)
{
    QFile file(choiceFile);
    return file.open(QIODevice::ReadOnly) && QString::fromUtf8(file.read(longestPath)) == board;
}

Done writeChoice(const QString& choiceFile, const QString& board, bool isChosen)
{
    if (!isChosen) {
        // Another board's Kelpa may have it by now.
        if (isChosenFor(board, choiceFile))
            QFile::remove(choiceFile);
        return {};
    }
    QSaveFile file(choiceFile);
    if (!QDir().mkpath(QFileInfo(choiceFile).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(board.toUtf8()) < 0 || !file.commit())
        qCWarning(logBus, "the choice of keys could not be kept");
    return {};
}

/// Portals send it as a text, although it is a path.
QString sessionOf(const QVariantMap& results)
{
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    return handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
               ? handle.value<QDBusObjectPath>().path()
               : handle.toString();
}

} // namespace

/// A connection of its own to the session bus, closed when its last owner drops it.
class ShortcutsPortal::Bus
{
public:
    // By its address: the toolkit's own session bus may be a stand-in.
    Bus()
        : m_connection(
              QDBusConnection::connectToBus(QString::fromLocal8Bit(sessionBusAddress()), m_name))
    {}
    ~Bus() { QDBusConnection::disconnectFromBus(m_name); }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    QDBusConnection& connection() { return m_connection; }

private:
    const QString m_name = QStringLiteral("kelpa-shortcuts-") + newToken();
    QDBusConnection m_connection;
};

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
            return Connected{sessionBusAddress().isEmpty() ? nullptr : std::make_shared<Bus>(),
                             isChosenFor(board, choiceFile)};
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
    // From any sender: naming one would wait for the bus to tell its owner.
    m_bus->connection().connect(QString(), QStringLiteral("/org/freedesktop/DBus"), busInterface,
                                QStringLiteral("NameOwnerChanged"), {portalName}, QString(), this,
                                SLOT(noteOwner(QDBusMessage)));
    m_bus->connection().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                                QStringLiteral("org.freedesktop.DBus.Local"),
                                QStringLiteral("Disconnected"), this, SLOT(noteDisconnected()));
    follow(portalPath, shortcutsInterface, QStringLiteral("Activated"),
           SLOT(noteActivated(QDBusMessage)));
    follow(portalPath, shortcutsInterface, QStringLiteral("ShortcutsChanged"),
           SLOT(noteChanged(QDBusMessage)));
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
    QDBusMessage message = QDBusMessage::createMethodCall(
        portalName, portalPath, QStringLiteral("org.freedesktop.host.portal.Registry"),
        QStringLiteral("Register"));
    message << QStringLiteral("org.kelpa.Kelpa") << QVariantMap();
    call(message, [this](const QDBusPendingCallWatcher&) { readVersion(); });
}

void ShortcutsPortal::readVersion()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        portalName, portalPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    message << shortcutsInterface << QStringLiteral("version");
    call(message, [this](const QDBusPendingCallWatcher& watcher) {
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
    QDBusMessage message = callOf(QStringLiteral("ConfigureShortcuts"));
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
    QDBusMessage message = callOf(QStringLiteral("CreateSession"));
    message << QVariantMap{{QStringLiteral("session_handle_token"), newToken()}};
    request(message, Step::creating);
    // Nobody is asked for it.
    m_limit = m_scheduler.after(m_options.limit, [this] { fail(); });
}

void ShortcutsPortal::bind()
{
    QDBusMessage message = callOf(QStringLiteral("BindShortcuts"));
    // Without a name of the window, which Wayland's toolkits do not tell.
    message << QVariant::fromValue(QDBusObjectPath(m_session))
            << QVariant::fromValue(portalShortcuts(m_describe())) << QString() << QVariantMap();
    request(message, Step::binding);
}

void ShortcutsPortal::request(QDBusMessage message, Step step)
{
    const QString token = newToken();
    QVariantList arguments = message.arguments();
    QVariantMap options = arguments.takeLast().toMap();
    options.insert(QStringLiteral("handle_token"), token);
    message.setArguments(arguments << options);
    m_step = step;
    // Known beforehand, so that no response is missed.
    followRequest(portalPath + QStringLiteral("/request/") +
                  m_bus->connection().baseService().mid(1).replace(u'.', u'_') + u'/' + token);
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
    const bool isOfForm = message.signature() == QStringLiteral("ua{sv}");
    const uint code = isOfForm ? message.arguments().constFirst().toUInt() : codeGiven;
    const auto results =
        isOfForm ? qdbus_cast<QVariantMap>(message.arguments().constLast()) : QVariantMap();
    if (step == Step::binding && code == codeCancelled) {
        giveUp();
        return;
    }
    if (code != codeGiven) {
        fail();
        return;
    }
    if (step == Step::binding) {
        takeKeys(results);
        return;
    }
    // Of a malformed response there are no results.
    m_session = sessionOf(results);
    if (!m_session.startsWith(u'/')) {
        m_session.clear();
        fail();
        return;
    }
    follow(m_session, sessionInterface, closedSignal, SLOT(noteClosed(QDBusMessage)));
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
        m_bus->connection().send(QDBusMessage::createMethodCall(portalName, path, requestInterface,
                                                                QStringLiteral("Close")));
}

void ShortcutsPortal::closeSession()
{
    if (m_session.isEmpty())
        return;
    unfollow(m_session, sessionInterface, closedSignal, SLOT(noteClosed(QDBusMessage)));
    const QString session = std::exchange(m_session, {});
    if (m_bus)
        m_bus->connection().send(QDBusMessage::createMethodCall(
            portalName, session, sessionInterface, QStringLiteral("Close")));
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
    if (!m_session.isEmpty())
        unfollow(m_session, sessionInterface, closedSignal, SLOT(noteClosed(QDBusMessage)));
    m_session.clear();
    m_owner.clear();
    m_version = 0;
}

void ShortcutsPortal::noteOwner(const QDBusMessage& message)
{
    if (message.service() != busInterface || message.signature() != QStringLiteral("sss"))
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
    unfollow(m_session, sessionInterface, closedSignal, SLOT(noteClosed(QDBusMessage)));
    m_session.clear();
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
    m_writing.add([file = m_options.choiceFile, board = m_options.board,
                   isChosen](const std::stop_token&) { return writeChoice(file, board, isChosen); },
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

void ShortcutsPortal::follow(const QString& path, const QString& interface, const QString& name,
                             const char* slot)
{
    m_bus->connection().connect(QString(), path, interface, name, this, slot);
}

void ShortcutsPortal::unfollow(const QString& path, const QString& interface, const QString& name,
                               const char* slot)
{
    if (m_bus)
        m_bus->connection().disconnect(QString(), path, interface, name, this, slot);
}

void ShortcutsPortal::followRequest(const QString& path)
{
    if (!m_requestPath.isEmpty())
        unfollow(m_requestPath, requestInterface, responseSignal, SLOT(noteResponse(QDBusMessage)));
    m_requestPath = path;
    if (!path.isEmpty())
        follow(path, requestInterface, responseSignal, SLOT(noteResponse(QDBusMessage)));
}

} // namespace kelpa
