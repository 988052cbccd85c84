// Runs gestures on a board without a screen. What would differ from run to run is fixed before the
// toolkit begins.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QHashSeed>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QSG_RENDER_LOOP", "basic");
    QHashSeed::setDeterministicGlobalSeed();
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
