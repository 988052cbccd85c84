#include "views/goals/DesktopLabel.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/DesktopCopy.h"

namespace kelpa {

QString desktopLabel(const WindowStore& store, int number)
{
    const QStringList& desktops = store.virtualDesktops();
    if (!desktops.isEmpty() && number > desktops.size())
        return KelpaCopy::absentDesktop(number, store.language());
    const QString name = singleLine(desktops.value(number - 1));
    return name.isEmpty() ? KelpaCopy::numberedDesktop(number, store.language()) : name;
}

} // namespace kelpa
