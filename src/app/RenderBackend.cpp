#include "app/RenderBackend.h"

#include <QDir>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <array>

namespace kelpa {

void chooseRenderBackend()
{
    static constexpr std::array choices{"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND",
                                        "QSG_RHI_PREFER_SOFTWARE_RENDERER"};
    if (std::any_of(choices.begin(), choices.end(), qEnvironmentVariableIsSet))
        return;
    // Querying the driver would load it; the presence of a device node is enough.
    const QDir devices(QStringLiteral("/dev/dri"));
    const bool hasDevice =
        !devices.entryList({QStringLiteral("renderD*")}, QDir::System | QDir::Files).isEmpty();
    if (!hasDevice)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace kelpa
