#include "automation/Methods.h"

#include "automation/WireValues.h"

#include <QMetaType>

#include <algorithm>
#include <utility>

namespace kelpa::automation {

namespace {

template <class Kind>
Method methodOf()
{
    Method method{QLatin1String(Kind::name), {}, Kind::reply};
    Kind request;
    std::apply(
        [&method](auto&... field) {
            qsizetype index = 0;
            const auto add = [&](const char* type) {
                method.parameters.append(
                    {QLatin1String(Kind::parameters.at(static_cast<std::size_t>(index++))),
                     QLatin1String(type)});
            };
            // A request without fields has no use for it.
            static_cast<void>(add);
            (add(wireType(field)), ...);
        },
        Kind::fields(request));
    return method;
}

QMetaType::Type metaTypeOf(const QString& type)
{
    if (type == QLatin1String("b"))
        return QMetaType::Bool;
    return type == QLatin1String("u") ? QMetaType::UInt : QMetaType::QString;
}

bool fits(const Method& method, const QVariantList& arguments)
{
    return arguments.size() == method.parameters.size() &&
           std::ranges::equal(arguments, method.parameters,
                              [](const QVariant& value, const Parameter& parameter) {
                                  return value.userType() == metaTypeOf(parameter.type);
                              });
}

using Reading = std::variant<Request, Failure>;

/// The arguments fit the method.
template <class Kind>
Reading read(const QVariantList& arguments)
{
    Kind request;
    std::optional<Failure> failure;
    qsizetype index = 0;
    const auto readField = [&](auto& field) {
        const QVariant& value = arguments.at(index++);
        if (!failure)
            failure = fromWire(value, field);
    };
    static_cast<void>(readField);
    std::apply([&readField](auto&... field) { (readField(field), ...); }, Kind::fields(request));
    if (failure)
        return *std::move(failure);
    return Request(std::move(request));
}

struct Row
{
    Method method;
    Reading (*read)(const QVariantList& arguments) = nullptr;
};

template <class Variant>
struct Rows;

template <class... Kinds>
struct Rows<std::variant<Kinds...>>
{
    static QList<Row> all() { return {Row{methodOf<Kinds>(), &read<Kinds>}...}; }
};

const QList<Row>& rows()
{
    static const QList<Row> all = Rows<Request>::all();
    return all;
}

struct ErrorRow
{
    FailureKind kind;
    const char* name;
};

constexpr ErrorRow errorRows[] = {
    {FailureKind::unknownMethod, "UnknownMethod"},
    {FailureKind::invalidArguments, "InvalidArguments"},
    {FailureKind::unknownGoal, "UnknownGoal"},
    {FailureKind::unknownTodo, "UnknownTodo"},
    {FailureKind::unknownWindow, "UnknownWindow"},
    {FailureKind::unknownDesktop, "UnknownDesktop"},
    {FailureKind::ambiguousName, "AmbiguousName"},
    {FailureKind::emptyTitle, "EmptyTitle"},
    {FailureKind::titleTooLong, "TitleTooLong"},
    {FailureKind::automaticOrder, "AutomaticOrder"},
    {FailureKind::nothingToUndo, "NothingToUndo"},
    {FailureKind::nothingToRedo, "NothingToRedo"},
    {FailureKind::nothingToGoBackTo, "NothingToGoBackTo"},
    {FailureKind::noWindows, "NoWindows"},
    {FailureKind::windowsNotFollowed, "WindowsNotFollowed"},
    {FailureKind::notOffered, "NotOffered"},
    {FailureKind::tooLarge, "TooLarge"},
    {FailureKind::busy, "Busy"},
    {FailureKind::notReady, "NotReady"},
    {FailureKind::notRunning, "NotRunning"},
    {FailureKind::silent, "Silent"},
    {FailureKind::notSaved, "NotSaved"},
    {FailureKind::unexpectedReply, "UnexpectedReply"},
};

QString errorPrefix()
{
    return interfaceName + QStringLiteral(".Error.");
}

QString replyElement(ReplyKind kind)
{
    switch (kind) {
    case ReplyKind::nothing:
        return {};
    case ReplyKind::identifier:
        return QStringLiteral("    <arg name=\"id\" type=\"s\" direction=\"out\"/>\n");
    case ReplyKind::goals:
        return QStringLiteral("    <arg name=\"goals\" type=\"aa{sv}\" direction=\"out\"/>\n");
    case ReplyKind::todos:
        return QStringLiteral("    <arg name=\"todos\" type=\"aa{sv}\" direction=\"out\"/>\n");
    case ReplyKind::windows:
        return QStringLiteral("    <arg name=\"windows\" type=\"aa{sv}\" direction=\"out\"/>\n");
    }
    Q_UNREACHABLE();
}

} // namespace

QString Method::signature() const
{
    QString signature;
    for (const Parameter& parameter : parameters)
        signature += parameter.type;
    return signature;
}

const QList<Method>& methods()
{
    static const QList<Method> all = [] {
        QList<Method> list;
        for (const Row& row : rows())
            list.append(row.method);
        return list;
    }();
    return all;
}

QString methodName(const Request& request)
{
    return std::visit([](const auto& each) { return QString(QLatin1String(each.name)); }, request);
}

ReplyKind replyKind(const Request& request)
{
    return std::visit([](const auto& each) { return each.reply; }, request);
}

std::variant<Request, Failure> requestFrom(const QString& method, const QVariantList& arguments)
{
    const auto row =
        std::ranges::find_if(rows(), [&](const Row& each) { return each.method.name == method; });
    if (row == rows().end())
        return Failure{FailureKind::unknownMethod,
                       QStringLiteral("there is no method %1").arg(method.left(80))};
    if (!fits(row->method, arguments))
        return Failure{FailureKind::invalidArguments,
                       QStringLiteral("%1 takes arguments of the types '%2'")
                           .arg(method, row->method.signature())};
    return row->read(arguments);
}

QVariantList argumentsOf(const Request& request)
{
    return std::visit(
        [](const auto& each) {
            return std::apply([](const auto&... field) { return QVariantList{toWire(field)...}; },
                              each.fields(each));
        },
        request);
}

QString errorName(FailureKind kind)
{
    const auto* const row = std::ranges::find(errorRows, kind, &ErrorRow::kind);
    return errorPrefix() + QLatin1String(row->name);
}

std::optional<FailureKind> failureKindFrom(const QString& name)
{
    for (const ErrorRow& row : errorRows) {
        if (name == errorPrefix() + QLatin1String(row.name))
            return row.kind;
    }
    return std::nullopt;
}

QString introspection()
{
    QString xml = QStringLiteral("<interface name=\"%1\">\n").arg(interfaceName);
    for (const Method& method : methods()) {
        xml += QStringLiteral("  <method name=\"%1\">\n").arg(method.name);
        for (const Parameter& parameter : method.parameters) {
            xml += QStringLiteral("    <arg name=\"%1\" type=\"%2\" direction=\"in\"/>\n")
                       .arg(parameter.name, parameter.type);
        }
        xml += replyElement(method.reply) + QStringLiteral("  </method>\n");
    }
    xml += QStringLiteral("  <signal name=\"%1\">\n    <arg name=\"parts\" type=\"as\"/>\n"
                          "  </signal>\n"
                          "  <property name=\"Version\" type=\"u\" access=\"read\"/>\n"
                          "</interface>\n")
               .arg(changedSignal);
    return xml;
}

} // namespace kelpa::automation
