// Implements org.freedesktop.Application, by which others on the session bus find this program and
// activate it.
#pragma once

#include <QByteArray>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <cstdint>
#include <functional>

namespace kelpa {

class BusObject;

/// What a launcher or another start asks of this program.
struct ApplicationRequest
{
    /// The startup id (activation token) of the request; empty without one.
    QByteArray startupID{};
    /// One of the actions that the program has; empty where it is to come forward.
    QString action{};

    friend bool operator==(const ApplicationRequest&, const ApplicationRequest&) = default;
};

enum class NameClaim : std::uint8_t { owned, takenByAnother, noBus };

/// What to do about a name that another program owns.
enum class NameQueue : std::uint8_t {
    leave,
    /// Wait for it: the bus gives it to this program when nobody before it in the queue has it any
    /// more.
    join,
};

/// Lives on the main thread, where requests are handled; the caller receives its reply afterwards.
class ApplicationService : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// `activate` does what is asked; `actions` are those that the program has, by the names that
    /// its desktop entry declares. `busName` is the well-known name to own. `others` are the other
    /// objects that are found by the name; they outlive this.
    ApplicationService(QString busName, QStringList actions,
                       std::function<void(const ApplicationRequest&)> activate,
                       QList<BusObject*> others = {});
    ~ApplicationService() override;

    /// Connects to the bus and takes the name, unless another program owns it. Waits for the bus;
    /// any thread, but one call after the other. The process owns the name until it ends, so that a
    /// start in the meantime waits for that end.
    NameClaim claim(NameQueue queue);

    /// Whether the bus on which the name was claimed is still there.
    bool isConnected() const;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

Q_SIGNALS:
    /// The bus is gone, and the name with it. Any thread may emit it.
    void disconnected();

private:
    const QString m_busName;
    const QStringList m_actions;
    const std::function<void(const ApplicationRequest&)> m_activate;
    const QList<BusObject*> m_others;
    std::atomic<bool> m_isRegistered = false;
};

} // namespace kelpa
