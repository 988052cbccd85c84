#include "app/DisplayLossHandler.h"

#include <QCoreApplication>
#include <QThread>

#include <cstdlib>
#include <utility>

namespace kelpa {

DisplayLossHandler::DisplayLossHandler(QCoreApplication& application, std::function<void()> save)
    : QObject(&application), m_save(std::move(save))
{
    // What is registered last is called first, so before what the libraries take down by then.
    on_exit(&DisplayLossHandler::end, nullptr);
}

void DisplayLossHandler::end(int status, void*)
{
    const QCoreApplication* const application = QCoreApplication::instance();
    const DisplayLossHandler* const sudden =
        application ? application->findChild<DisplayLossHandler*>() : nullptr;
    // After an orderly end.
    if (!sudden)
        return;
    if (QThread::currentThread() == application->thread())
        sudden->m_save();
    std::_Exit(status);
}

} // namespace kelpa
