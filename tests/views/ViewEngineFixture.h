// The interface over a store on the fake desktop.
#pragma once

#include "platform/qt/WorkerPool.h"
#include "support/StoreFixture.h"
#include "views/ViewEngine.h"

#include <QByteArray>
#include <QMetaObject>

#include <chrono>
#include <memory>
#include <optional>

namespace kelpa::test {

class ViewEngineFixture : public StoreFixture
{
protected:
    void TearDown() override { EXPECT_TRUE(iconReaders->finish(std::chrono::seconds(10))); }

    /// Whether an object is of a type that is written in QML.
    static bool isOfType(const QObject& object, const QByteArray& type)
    {
        return QByteArray(object.metaObject()->className()).startsWith(type + "_QMLTYPE");
    }

    std::shared_ptr<WorkerPool> iconReaders = std::make_shared<WorkerPool>(1);
    ViewEngine view{
        store(),
        desktop,
        iconReaders,
        {.keyNames = KeyNames::withSuper(), .appearance = std::nullopt, .isReducingMotion = true}};
};

} // namespace kelpa::test
