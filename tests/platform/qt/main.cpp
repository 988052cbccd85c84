#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv)
{
    // Windows and clipboard without a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
