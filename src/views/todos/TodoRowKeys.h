// The keys of a todo's row: which key does what, as a pure function that the row binds to.
#pragma once

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// One for each QML engine. Main thread.
class TodoRowKeys : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum class Action {
        /// The key is not the row's: others may use it.
        PassOn,
        /// The key is the row's and does nothing: the repetition of a key that is held.
        Ignore,
        Edit,
        OpenMenu,
        Delete,
        MoveUp,
        MoveDown,
    };
    Q_ENUM(Action)

    using QObject::QObject;

    /// `key` is a Qt::Key, `modifiers` are Qt::KeyboardModifiers.
    Q_INVOKABLE static kelpa::TodoRowKeys::Action action(int key, int modifiers, bool isAutoRepeat);
};

} // namespace kelpa
