// A store whose windows are listed by number.
#pragma once

#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

namespace kelpa::test {

class WindowFixture : public StoreFixture
{
protected:
    QList<WindowID> listedIDs() { return idsOf(store().windows()); }

    void forgetWhatHappened()
    {
        takeSignals();
        takeWriteCount();
    }

    const QMap<QString, int> onlyWindows{{QStringLiteral("windows"), 1}};
};

} // namespace kelpa::test
