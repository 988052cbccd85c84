// The requests as methods of org.kelpa.Kelpa1: what each is called, which arguments it takes, and
// what its reply looks like on the bus.
#pragma once

#include "automation/Replies.h"
#include "automation/Requests.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <variant>

namespace kelpa::automation {

inline const QString interfaceName = QStringLiteral("org.kelpa.Kelpa1");
inline const QString objectPath = QStringLiteral("/org/kelpa/Kelpa1");
/// Grows when the interface gains something; what there is stays as it is.
inline constexpr unsigned interfaceVersion = 3;
/// Emitted with the parts of the board that changed: "goals", "todos", "windows".
inline const QString changedSignal = QStringLiteral("Changed");

/// How many bytes of text a reply may have, approximately.
inline constexpr qsizetype largestReply = qsizetype(16) * 1024 * 1024;

struct Parameter
{
    QString name;
    /// A D-Bus signature: "s", "b" or "u".
    QString type;
};

struct Method
{
    QString name;
    QList<Parameter> parameters;
    ReplyKind reply = ReplyKind::nothing;

    QString signature() const;
};

/// All of them, in the order of `Request`.
const QList<Method>& methods();

QString methodName(const Request& request);
ReplyKind replyKind(const Request& request);

/// The request that a call makes; its arguments may be of any type and number.
std::variant<Request, Failure> requestFrom(const QString& method, const QVariantList& arguments);
QVariantList argumentsOf(const Request& request);

/// The reply's arguments; lists are QList<QVariantMap>, aa{sv} on the bus.
QVariantList toWire(const Reply& reply);
/// The reply that these are; absent where they are not of that kind.
std::optional<Reply> replyFrom(ReplyKind kind, const QVariantList& arguments);

/// Whether the reply has more text than `largestReply`.
bool isTooLarge(const Reply& reply);

/// "org.kelpa.Kelpa1.Error.UnknownGoal".
QString errorName(FailureKind kind);
/// Absent for any other name.
std::optional<FailureKind> failureKindFrom(const QString& errorName);

/// The interface's element of the introspection data.
QString introspection();

} // namespace kelpa::automation
