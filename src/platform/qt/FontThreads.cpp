#include "platform/qt/FontThreads.h"

#include <QFontDatabase>

#include <fontconfig/fontconfig.h>

#include <utility>

namespace kelpa {

std::jthread readFontCaches()
{
    return std::jthread([] { FcInit(); });
}

std::jthread readFontList(std::jthread caches)
{
    return std::jthread([caches = std::move(caches)]() mutable {
        caches.join();
        // Whoever asks for fonts first has the list read; the toolkit locks it meanwhile.
        QFontDatabase::families();
    });
}

} // namespace kelpa
