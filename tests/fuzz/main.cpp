#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv)
{
    // Drawings may have letters, for which the toolkit needs a screen, if only one in memory.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
