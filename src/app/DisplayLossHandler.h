// The end of the program in the middle of its work, when the display is gone.
#pragma once

#include <QObject>

#include <functional>

class QCoreApplication;

namespace kelpa {

/// While it lives, an exit that the toolkit decides on in its event loop, which it does where the
/// display is lost, saves first and then ends the process at once: threads are at work that refer
/// to what an ordinary exit takes down. One at a time; main thread.
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
