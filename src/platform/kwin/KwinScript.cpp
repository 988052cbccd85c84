#include "platform/kwin/KwinScript.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>

namespace kelpa::kwin {

namespace {

/// Nothing that ends a string of the script.
bool isPlain(const QByteArray& text)
{
    return std::ranges::all_of(text, [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= '0' && letter <= '9') || letter == '.' || letter == ':' ||
               letter == '-' || letter == '_';
    });
}

QString nameOf(KwinAction action)
{
    switch (action) {
    case KwinAction::activate:
        return QStringLiteral("activate");
    case KwinAction::close:
        return QStringLiteral("close");
    case KwinAction::minimize:
        return QStringLiteral("minimize");
    case KwinAction::restore:
        return QStringLiteral("restore");
    case KwinAction::send:
        return QStringLiteral("send");
    case KwinAction::showDesktop:
        return QStringLiteral("showDesktop");
    }
    return {};
}

} // namespace

QByteArray scriptWith(const ScriptParameters& parameters)
{
    if (!isPlain(parameters.connection) || !isPlain(parameters.token) ||
        !isPlain(parameters.plugin))
        return {};
    QByteArray script(scriptTemplate);
    script.replace("@connection@", parameters.connection);
    script.replace("@token@", parameters.token);
    script.replace("@plugin@", parameters.plugin);
    return script;
}

QByteArray textOf(const KwinOrder& order)
{
    QJsonObject object{{QStringLiteral("action"), nameOf(order.action)}};
    if (order.desktop > 0)
        object.insert(QStringLiteral("desktop"), order.desktop);
    if (order.action == KwinAction::showDesktop)
        return QJsonDocument(object).toJson(QJsonDocument::Compact);
    if (order.window.isEmpty())
        object.insert(QStringLiteral("process"), order.process);
    else
        object.insert(QStringLiteral("window"), QString::fromLatin1(order.window));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace kelpa::kwin
