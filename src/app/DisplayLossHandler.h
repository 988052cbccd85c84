// Saves the board when the connection to the display is lost and the toolkit exits.
#pragma once

#include <QObject>

#include <functional>

class QCoreApplication;

namespace kelpa {

/// When the display is lost, the toolkit calls exit() from within its event loop. While this object
/// lives, such an exit first saves and then ends the process at once, since running threads refer
/// to objects that an ordinary exit destroys. At most one instance; main thread.
class DisplayLossHandler : public QObject
{
    Q_OBJECT

public:
    /// `save` is called on the main thread.
    DisplayLossHandler(QCoreApplication& application, std::function<void()> save);

private:
    static void end(int status, void*);

    const std::function<void()> m_save;
};

} // namespace kelpa
