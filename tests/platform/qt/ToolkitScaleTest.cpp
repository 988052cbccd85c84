#include "platform/qt/ToolkitScale.h"

#include <gtest/gtest.h>

#include <QString>

using namespace kelpa;

// Runs once as it is, and once for each of the larger scales that CMakeLists.txt sets.
TEST(ToolkitScale, Is_what_the_toolkit_draws_with)
{
    const QString factor = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1"));
    EXPECT_EQ(ToolkitScale({}).scale()->pixelsPerPoint(), factor.toDouble());
}
