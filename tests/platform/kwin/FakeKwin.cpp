#include "platform/kwin/FakeKwin.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QRegularExpression>

#include <unistd.h>

#include <csignal>
#include <utility>

namespace kelpa::test {

/// The keys of a shortcut, which are pressed one after the other; those that are missing are 0.
struct ShortcutKeys
{
    QList<int> keys;
};

QDBusArgument& operator<<(QDBusArgument& argument, const ShortcutKeys& shortcut)
{
    argument.beginStructure();
    argument << shortcut.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ShortcutKeys& shortcut)
{
    argument.beginStructure();
    argument >> shortcut.keys;
    argument.endStructure();
    return argument;
}

namespace {

QString parameterIn(const QString& script, const QString& name)
{
    const QRegularExpression form(QStringLiteral("const %1 = \"([^\"]*)\"").arg(name));
    return form.match(script).captured(1);
}

QDBusMessage callOfScript(const QString& kelpa, const QString& method)
{
    return QDBusMessage::createMethodCall(kelpa, QStringLiteral("/org/kelpa/KwinScript"),
                                          QStringLiteral("org.kelpa.KwinScript"), method);
}

} // namespace

FakeKwin::FakeKwin(const QString& busAddress)
    : m_name(QStringLiteral("kwin %1").arg(quintptr(this))),
      m_connection(QDBusConnection::connectToBus(busAddress, m_name))
{
    // As KWin does, for readers that are gone.
    std::signal(SIGPIPE, SIG_IGN);
    m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
}

FakeKwin::~FakeKwin()
{
    if (m_heldPipe >= 0)
        ::close(m_heldPipe);
    QDBusConnection::disconnectFromBus(m_name);
}

void FakeKwin::appear()
{
    appearWithoutShortcuts();
    takeShortcuts();
}

void FakeKwin::appearWithoutShortcuts()
{
    m_connection.registerService(QStringLiteral("org.kde.KWin"));
}

void FakeKwin::takeShortcuts()
{
    m_connection.registerService(QStringLiteral("org.kde.kglobalaccel"));
}

void FakeKwin::startShell()
{
    m_isShellActive = true;
    m_connection.registerService(QStringLiteral("org.kde.plasmashell"));
}

void FakeKwin::endShell()
{
    m_isShellActive = false;
    m_connection.unregisterService(QStringLiteral("org.kde.plasmashell"));
}

QString FakeKwin::introspect(const QString&) const
{
    return {};
}

bool FakeKwin::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (isSilent) {
        message.setDelayedReply(true);
        return true;
    }
    if (message.member() == QStringLiteral("CaptureArea"))
        return answerFrame(message, connection);
    if (message.member() == QStringLiteral("CaptureWindow")) {
        ++pictures;
        const QString window = message.arguments().value(0).toString();
        if (window == silentWindow) {
            message.setDelayedReply(true);
            return true;
        }
        const bool isShown = window != hiddenWindow;
        if (isShown && !holdsPictures)
            return answerPicture(message, connection);
        message.setDelayedReply(true);
        m_heldPicture = message;
        return true;
    }
    const std::optional<QVariantList> answer = answerOf(message);
    if (!answer)
        return false;
    connection.send(message.createReply(*answer));
    return true;
}

std::optional<QVariantList> FakeKwin::answerOf(const QDBusMessage& message)
{
    const QString method = message.member();
    const QString name = message.arguments().value(0).toString();
    if (method == QStringLiteral("isScriptLoaded"))
        return QVariantList{loaded.contains(name)};
    if (method == QStringLiteral("unloadScript")) {
        unloaded.append(name);
        return QVariantList{loaded.removeAll(name) > 0};
    }
    if (method == QStringLiteral("loadScript"))
        return QVariantList{load(name, message.arguments().value(1).toString())};
    if (method == QStringLiteral("start")) {
        run();
        return QVariantList{};
    }
    if (method == QStringLiteral("run") && isOfScript(message.path())) {
        if (!mixesNumbers)
            run();
        return QVariantList{};
    }
    if (method == QStringLiteral("supportInformation")) {
        return QVariantList{
            QStringLiteral("Version\n=======\nKWin version: %1\nQt Version: 6.8.2\n")
                .arg(isOld ? QStringLiteral("5.27.5") : QStringLiteral("6.3.6"))};
    }
    return answerOfShortcuts(message);
}

std::optional<QVariantList> FakeKwin::answerOfShortcuts(const QDBusMessage& message)
{
    const QString shell = QStringLiteral("plasmashell");
    if (message.member() == QStringLiteral("isActive") &&
        message.path() == QStringLiteral("/component/") + shell)
        return QVariantList{m_isShellActive};
    if (message.member() != QStringLiteral("shortcutKeys") ||
        message.path() != QStringLiteral("/kglobalaccel"))
        return std::nullopt;
    ++keyRequests;
    qDBusRegisterMetaType<ShortcutKeys>();
    qDBusRegisterMetaType<QList<ShortcutKeys>>();
    QList<ShortcutKeys> found;
    // As KGlobalAccel does, which has no use for less than four.
    const QStringList action = message.arguments().value(0).toStringList();
    if (action.size() == 4 && action.at(0) == shell &&
        action.at(1) == QStringLiteral("activate application launcher")) {
        for (const int key : launcherKeys)
            found.append({{key, 0, 0, 0}});
    }
    return QVariantList{QVariant::fromValue(found)};
}

bool FakeKwin::isOfScript(const QString& path) const
{
    return path == (isOld ? QStringLiteral("/7") : QStringLiteral("/Scripting/Script7"));
}

int FakeKwin::load(const QString& file, const QString& plugin)
{
    if (refusesScripts || loaded.contains(plugin))
        return -1;
    QFile script(file);
    if (!script.open(QIODevice::ReadOnly))
        return -1;
    const QString text = QString::fromUtf8(script.readAll());
    m_kelpa = parameterIn(text, QStringLiteral("kelpa"));
    m_token = parameterIn(text, QStringLiteral("token"));
    loaded.append(plugin);
    everLoaded.append(plugin);
    return 7;
}

void FakeKwin::run()
{
    if (firstReport)
        report(*firstReport);
}

void FakeKwin::report(const QByteArray& text, const QString& token)
{
    QDBusMessage call = callOfScript(m_kelpa, QStringLiteral("Report"));
    call << (token.isEmpty() ? m_token : token) << QString::fromUtf8(text) << QStringLiteral("[]")
         << QString::fromUtf8(screens);
    auto* const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<> reply = *watcher;
        reportError = reply.isError() ? reply.error().name() : QString();
        ++reportReplies;
        watcher->deleteLater();
    });
}

void FakeKwin::askForOrders()
{
    QDBusMessage call = callOfScript(m_kelpa, QStringLiteral("Orders"));
    call << m_token;
    auto* const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QString> reply = *watcher;
        orders.append(reply.isError() ? reply.error().name() : reply.value());
        watcher->deleteLater();
    });
}

void FakeKwin::bringForward(const QString& token)
{
    QDBusMessage call = callOfScript(m_kelpa, QStringLiteral("BringForward"));
    call << (token.isEmpty() ? m_token : token);
    m_connection.send(call);
}

void FakeKwin::useShortcut(const QString& component, const QString& action)
{
    for (const auto* const name : {"globalShortcutPressed", "globalShortcutReleased"}) {
        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/component/") + component,
            QStringLiteral("org.kde.kglobalaccel.Component"), QString::fromLatin1(name));
        signal << component << action << qlonglong{0};
        m_connection.send(signal);
    }
}

bool FakeKwin::answerFrame(const QDBusMessage& message, const QDBusConnection& connection)
{
    ++frames;
    pixel = {message.arguments().value(0).toInt(), message.arguments().value(1).toInt()};
    area = {message.arguments().value(2).toInt(), message.arguments().value(3).toInt()};
    if (!areaError.isEmpty()) {
        connection.send(message.createErrorReply(areaError, QStringLiteral("no picture")));
        return true;
    }
    if (holdsPictures) {
        message.setDelayedReply(true);
        m_heldPixels.append(message);
        return true;
    }
    if (m_heldPicture)
        answerPicture(*std::exchange(m_heldPicture, {}), connection);
    if (holdsPixels)
        message.setDelayedReply(true);
    else
        answerPixel(message, connection);
    return true;
}

void FakeKwin::draw()
{
    holdsPictures = false;
    const QList<QDBusMessage> held = std::exchange(m_heldPixels, {});
    for (const QDBusMessage& message : held)
        answerPixel(message, m_connection);
}

void FakeKwin::answerPixel(const QDBusMessage& message, const QDBusConnection& connection) const
{
    const auto pipe = message.arguments().value(5).value<QDBusUnixFileDescriptor>();
    connection.send(message.createReply(QVariantList{picture}));
    // Nobody may read it any more.
    const auto written = ::write(pipe.fileDescriptor(), pictureBytes.constData(),
                                 static_cast<std::size_t>(pictureBytes.size()));
    Q_UNUSED(written);
}

bool FakeKwin::answerPicture(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (!pictureError.isEmpty()) {
        connection.send(message.createErrorReply(pictureError, QStringLiteral("no picture")));
        return true;
    }
    const auto pipe = message.arguments().value(2).value<QDBusUnixFileDescriptor>();
    connection.send(message.createReply(QVariantList{picture}));
    if (holdsPipe)
        m_heldPipe = ::dup(pipe.fileDescriptor());
    // Less than a pipe holds.
    return ::write(pipe.fileDescriptor(), pictureBytes.constData(),
                   static_cast<std::size_t>(pictureBytes.size())) >= 0;
}

QString errorForStranger(const QString& busAddress, const QString& kelpa, const QString& token)
{
    const QString name = QStringLiteral("stranger");
    QDBusConnection connection = QDBusConnection::connectToBus(busAddress, name);
    QDBusMessage call = callOfScript(kelpa, QStringLiteral("Report"));
    call << token << QStringLiteral("[]");
    QString error = connection.call(call).errorName();
    QDBusConnection::disconnectFromBus(name);
    return error;
}

} // namespace kelpa::test
