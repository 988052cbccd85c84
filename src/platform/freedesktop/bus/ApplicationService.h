// This program as others on the session bus find it and bring it forward: the interface
// org.freedesktop.Application.
#pragma once

#include <QByteArray>
#include <QDBusVirtualObject>
#include <QString>

#include <cstdint>
#include <functional>

namespace kelpa {

enum class NameClaim : std::uint8_t { owned, takenByAnother, noBus };

/// Lives on the main thread, where requests are handled; whoever asks is answered once they are.
class ApplicationService : public QDBusVirtualObject
{
public:
    /// `comeForward` gets the startup id of the request, empty without one. `busName` is what
    /// others find the program by.
    ApplicationService(QString busName, std::function<void(const QByteArray&)> comeForward);
    ~ApplicationService() override;

    /// Connects to the bus and takes the name, unless another program has it. Waits for the bus;
    /// any thread, and only once. The name is kept until the process ends, so that a start that
    /// comes meanwhile waits for that end.
    NameClaim claim();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    const QString m_busName;
    const std::function<void(const QByteArray&)> m_comeForward;
};

} // namespace kelpa
