// What org.kde.krunner1 sends, as the bus marshals it.
#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

class QDBusArgument;

namespace kelpa {

/// (sssida{sv})
struct RunnerMatch
{
    QString id;
    QString text;
    /// From the icon theme.
    QString iconName;
    /// Plasma's kind of match; 30 is a possible one.
    int type = 30;
    /// From 0 to 1.
    double relevance = 0;
    QVariantMap properties;

    friend bool operator==(const RunnerMatch&, const RunnerMatch&) = default;
};

/// (sss): what can be done with a match beside opening it.
struct RunnerAction
{
    QString id;
    QString text;
    QString iconName;

    friend bool operator==(const RunnerAction&, const RunnerAction&) = default;
};

QDBusArgument& operator<<(QDBusArgument& argument, const RunnerMatch& match);
const QDBusArgument& operator>>(const QDBusArgument& argument, RunnerMatch& match);
QDBusArgument& operator<<(QDBusArgument& argument, const RunnerAction& action);
const QDBusArgument& operator>>(const QDBusArgument& argument, RunnerAction& action);

/// Before lists of them are sent or received. Any thread.
void registerRunnerTypes();

} // namespace kelpa

Q_DECLARE_METATYPE(kelpa::RunnerMatch)
Q_DECLARE_METATYPE(kelpa::RunnerAction)
