// A program that only listens for the double tap, to measure what listening costs.
#include "platform/qt/QtScheduler.h"
#include "platform/x11/keys/X11GlobalKeys.h"
#include "shell/GlobalDoubleTap.h"

#include <QCoreApplication>

#include <memory>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    kelpa::QtScheduler scheduler;
    kelpa::x11::X11GlobalKeys keys(std::make_shared<kelpa::x11::DisplayConnector>(QByteArray()),
                                   scheduler);
    const kelpa::GlobalDoubleTap doubleTap(keys);
    return QCoreApplication::exec();
}
