// Stands for GNOME Shell and its extension on a message bus, each as it is told to behave.
#pragma once

#include "platform/freedesktop/bus/GlibPointers.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace kelpa::test {

struct ShellBehaviour
{
    /// The extension's state as the Shell tells; absent when it does not know the extension.
    std::optional<double> state = 1;
    std::uint32_t version = 1;
    std::uint64_t run = 7;
    /// Replies that do not depend on the call, as text of a value, by method.
    std::map<std::string, std::string> replies{};
    /// Errors by method.
    std::map<std::string, std::string> errors{};
    /// The contents of the file that comes with a picture.
    QByteArray picture{};
    /// Replies to nothing.
    bool isHanging = false;
    /// Enabling makes the extension appear.
    bool isEnabling = true;
};

/// Its replies come from a thread of its own.
class FakeShell
{
public:
    /// With the name of the Shell, and without its extension.
    explicit FakeShell(const QString& address);
    FakeShell(const FakeShell&) = delete;
    FakeShell& operator=(const FakeShell&) = delete;
    /// It leaves the bus.
    ~FakeShell();

    void behave(const ShellBehaviour& behaviour);
    ShellBehaviour behaviour();
    /// The extension takes its name, or gives it back.
    void showExtension();
    void hideExtension();
    /// Sends a signal of the extension to whoever has attached.
    void send(const char* signal);
    /// The unique name of the last one that has attached.
    QString listener();
    /// The calls so far: the method and its arguments, such as "Close (uint64 5,)".
    QStringList calls();

private:
    static GDBusMessage* handle(GDBusConnection* connection, GDBusMessage* message,
                                gboolean isIncoming, gpointer self);
    void answer(GDBusConnection* connection, GDBusMessage* call);
    GObjectPointer<GDBusMessage> replyTo(GDBusMessage* call, const std::string& method);
    void callBus(const char* method, GVariant* arguments);

    std::mutex m_mutex;
    ShellBehaviour m_behaviour;
    QStringList m_calls;
    std::string m_listener;
    GObjectPointer<GDBusConnection> m_connection;
};

/// A signal of the extension from a stranger, to the one whose unique name that is.
void sendFromStranger(const QString& address, const QString& to, const char* signal);

} // namespace kelpa::test
