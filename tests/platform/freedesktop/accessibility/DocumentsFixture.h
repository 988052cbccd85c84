// The documents of windows as a bus of its own tells them, with applications that do what a test
// wants.
#pragma once

#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <QThread>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace kelpa::test {

inline constexpr Rect leftFrame{0, 0, 800, 600};
inline constexpr Rect rightFrame{800, 0, 800, 600};

inline QJsonObject showing(const QJsonArray& documents)
{
    return {{QStringLiteral("documents"), documents}};
}

inline QJsonObject page(const QString& location)
{
    return documentOfPeer(QStringLiteral("DocURL"), location, QStringLiteral("Page"), 10, 90, 700,
                          500);
}

class Documents : public testing::Test
{
protected:
    PrivateBus bus;
    Registry registry{bus};
    int changes = 0;
    QThread* changedOn = nullptr;
    std::unique_ptr<AtspiDocuments> documents;

    /// Intervals short enough for a test to wait for.
    static AtspiDocumentsOptions quick(const QString& address)
    {
        AtspiDocumentsOptions options;
        options.busAddress = address;
        using std::chrono::milliseconds;
        options.reconnectDelay = milliseconds(20);
        options.intervals = {.betweenChanges = milliseconds(1),
                             .refresh = milliseconds(50),
                             .backOff = std::chrono::hours(1)};
        return options;
    }

    void start(const AtspiDocumentsOptions& options)
    {
        documents = std::make_unique<AtspiDocuments>(
            [this] {
                ++changes;
                changedOn = QThread::currentThread();
            },
            options);
    }

    void SetUp() override { start(quick(bus.address())); }

    static DocumentQuery window(const Application& application, const char* title = "Page",
                                const Rect& frame = leftFrame)
    {
        return {application.process(), frame, QString::fromUtf8(title)};
    }

    QString shown(const DocumentQuery& window)
    {
        return documents->document(window).value_or(QStringLiteral("(none)"));
    }

    /// Notes the windows as often as discovery may, until the condition holds.
    bool notingUntil(const std::vector<DocumentQuery>& windows,
                     const std::function<bool()>& condition)
    {
        return QTest::qWaitFor(
            [&] {
                documents->noteWindows(windows);
                return condition();
            },
            10'000);
    }

    bool notingShows(const DocumentQuery& window, const QString& document)
    {
        return notingUntil({window}, [&] { return shown(window) == document; });
    }
};

} // namespace kelpa::test
