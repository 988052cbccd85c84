// What an input method composes in a field, and the end of it.
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// One for each QML engine, which makes it. Main thread.
class TextComposition : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Throws away what is being composed in `field`, which keeps everything else. Does nothing
    /// where nothing is.
    Q_INVOKABLE void cancel(QQuickItem* field) const;
};

} // namespace kelpa
