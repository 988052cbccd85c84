#include "app/SearchInterfaces.h"

#include "automation/Methods.h"

#include <QList>
#include <QMetaType>

#include <algorithm>

namespace kelpa {

namespace {

struct SearchMethod
{
    const char* name;
    /// As D-Bus signatures: "as", "s" and "u" alone.
    QList<const char*> arguments;
    /// Empty for none.
    const char* reply;
};

const QList<SearchMethod>& providerMethods()
{
    static const QList<SearchMethod> methods{
        {"GetInitialResultSet", {"as"}, "as"}, {"GetSubsearchResultSet", {"as", "as"}, "as"},
        {"GetResultMetas", {"as"}, "aa{sv}"},  {"ActivateResult", {"s", "as", "u"}, ""},
        {"LaunchSearch", {"as", "u"}, ""},
    };
    return methods;
}

const QList<SearchMethod>& runnerMethods()
{
    static const QList<SearchMethod> methods{
        {"Match", {"s"}, "a(sssida{sv})"}, {"Actions", {}, "a(sss)"}, {"Run", {"s", "s"}, ""},
        {"SetActivationToken", {"s"}, ""}, {"Teardown", {}, ""},
    };
    return methods;
}

int metaTypeOf(QLatin1String signature)
{
    if (signature == QLatin1String("as"))
        return QMetaType::QStringList;
    return signature == QLatin1String("u") ? QMetaType::UInt : QMetaType::QString;
}

QString introspectionOf(const char* interface, const QList<SearchMethod>& methods)
{
    QString xml = QStringLiteral("<interface name=\"%1\">\n").arg(QLatin1String(interface));
    for (const SearchMethod& method : methods) {
        xml += QStringLiteral("  <method name=\"%1\">\n").arg(QLatin1String(method.name));
        for (const char* const argument : method.arguments)
            xml += QStringLiteral("    <arg type=\"%1\" direction=\"in\"/>\n")
                       .arg(QLatin1String(argument));
        if (const QLatin1String reply(method.reply); !reply.isEmpty())
            xml += QStringLiteral("    <arg type=\"%1\" direction=\"out\"/>\n").arg(reply);
        xml += QStringLiteral("  </method>\n");
    }
    return xml + QStringLiteral("</interface>\n");
}

std::optional<BusError> errorOfCall(const QList<SearchMethod>& methods, const QString& name,
                                    const QVariantList& arguments)
{
    const auto method = std::ranges::find_if(
        methods, [&name](const SearchMethod& each) { return name == QLatin1String(each.name); });
    if (method == methods.end())
        return BusError{automation::errorName(automation::FailureKind::unknownMethod),
                        QStringLiteral("there is no method %1").arg(name.left(80))};
    const bool fits = std::ranges::equal(
        arguments, method->arguments, [](const QVariant& value, const char* signature) {
            return value.userType() == metaTypeOf(QLatin1String(signature));
        });
    if (fits)
        return std::nullopt;
    return BusError{automation::errorName(automation::FailureKind::invalidArguments),
                    QStringLiteral("%1 takes other arguments").arg(name)};
}

} // namespace

BusObject::Description searchProviderDescription()
{
    return {.path = QStringLiteral("/org/kelpa/SearchProvider"),
            .interface = QStringLiteral("org.gnome.Shell.SearchProvider2"),
            .introspection = introspectionOf("org.gnome.Shell.SearchProvider2", providerMethods())};
}

BusObject::Description searchRunnerDescription()
{
    return {.path = QStringLiteral("/org/kelpa/Runner"),
            .interface = QStringLiteral("org.kde.krunner1"),
            .introspection = introspectionOf("org.kde.krunner1", runnerMethods())};
}

std::optional<BusError> searchProviderError(const QString& method, const QVariantList& arguments)
{
    return errorOfCall(providerMethods(), method, arguments);
}

std::optional<BusError> searchRunnerError(const QString& method, const QVariantList& arguments)
{
    return errorOfCall(runnerMethods(), method, arguments);
}

} // namespace kelpa
