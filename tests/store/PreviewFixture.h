// A store whose windows can be captured.
#pragma once

#include "support/StoreFixture.h"

namespace kelpa::test {

class PreviewFixture : public StoreFixture
{
protected:
    void addWindows(int count)
    {
        for (int i = count; i >= 1; --i) {
            const auto id = static_cast<WindowID>(i);
            desktop.addWindow(id, 100, QString::number(i));
            desktop.captureSizes.insert(id, {640, 480});
        }
        store().refresh();
    }

    void tick()
    {
        store().refreshPreviews(scheduler.now());
        scheduler.advance(Scheduler::Duration(0));
    }
};

} // namespace kelpa::test
