// Creates on first use what an item shows that every control contains and that is seldom needed.
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QVariantMap>

namespace kelpa {

/// An item of the type of this module in `file`, which belongs to `owner`; null when it cannot be
/// made, which is reported on the console. Main thread.
QObject* createDeferred(QQuickItem& owner, const QString& file, const QVariantMap& properties);

/// Calls the slot, by its name and parentheses, whenever the property changes; false when there is
/// no such property, or one without a notify signal. Main thread.
bool watchProperty(QObject& object, const char* property, QObject& watcher, const char* slot);

} // namespace kelpa
