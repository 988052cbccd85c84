#include "app/DisplayLossHandler.h"

#include <QCoreApplication>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kelpa {

DisplayLossHandler::DisplayLossHandler(QCoreApplication& application, std::function<void()> save)
    : QObject(&application), m_save(std::move(save))
{
    // Handlers run in reverse order of registration, so this one runs before those with which the
    // libraries registered so far clean up.
    on_exit(&DisplayLossHandler::end, nullptr);
}

void DisplayLossHandler::end(int status, void*)
{
    const QCoreApplication* const application = QCoreApplication::instance();
    const DisplayLossHandler* const handler =
        application ? application->findChild<DisplayLossHandler*>() : nullptr;
    // The program ended in an orderly way.
    if (!handler)
        return;
    if (QThread::currentThread() == application->thread())
        handler->m_save();
    else
        std::fprintf(stderr, "kelpa: ended without saving; the last changes may be lost\n");
    std::_Exit(status);
}

} // namespace kelpa
