// A compositor in the test's own process, with the global objects that a test gives it. It does
// nothing unless it is told to serve, so a test decides when events are sent and arrive.
#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <chrono>
#include <memory>

struct wl_display;

namespace kelpa::test {

/// Used on one thread; clients may be served on others.
class FakeCompositor
{
public:
    FakeCompositor();
    /// Listens at `path`, which does not exist.
    explicit FakeCompositor(QByteArray path);
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;
    /// Closes the connections of its clients.
    ~FakeCompositor();

    /// Of its socket.
    const QByteArray& path() const { return m_path; }
    wl_display* display() const { return m_display; }

    /// Handles the requests that have arrived, or arrive within a moment, and sends all events.
    void serve(std::chrono::milliseconds moment = std::chrono::milliseconds(5));

private:
    void listen();

    /// Null when the test has chosen the path.
    const std::unique_ptr<QTemporaryDir> m_folder;
    const QByteArray m_path;
    wl_display* const m_display;
};

} // namespace kelpa::test
