// The keys of the interface's texts as the compiler knows them.
#pragma once

#include "text/CopyKey.h"

#include <QList>
#include <QMetaEnum>

namespace kelpa {

/// Every key that the enumeration declares, whatever the tables say.
inline QList<CopyKey> declaredKeys()
{
    const QMetaEnum keys = QMetaEnum::fromType<CopyKey>();
    QList<CopyKey> result;
    for (int i = 0; i < keys.keyCount(); ++i)
        result.append(static_cast<CopyKey>(keys.value(i)));
    return result;
}

} // namespace kelpa
