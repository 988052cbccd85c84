// Runs an X server with a window manager in a process of its own: writes the display's name once it
// is ready, and ends everything when its standard input ends.
#include "support/desktop/Programs.h"

#include <cstdio>

int main()
{
    const kelpa::test::XServer xServer;
    const kelpa::test::WindowManager manager(xServer.display());
    std::printf("%s\n", xServer.display().constData());
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
