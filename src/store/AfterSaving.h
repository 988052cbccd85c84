// Something that waits until the disk has the board.
#pragma once

#include <QObject>

#include <functional>

namespace kelpa {

class WindowStore;

/// Main thread, which waits a frame at most.
class AfterSaving : public QObject
{
    Q_OBJECT

public:
    /// Receives false where the disk has refused changes.
    using Then = std::function<void(bool isSaved)>;

    /// `store` outlives this.
    explicit AfterSaving(WindowStore& store);

    bool isWaiting() const { return m_then != nullptr; }
    /// Saves what is not saved yet and calls `then` once the disk has replied, which may be within
    /// this call. On a disk that hangs, never. Replaces what waited before.
    void start(Then then);
    void cancel() { m_then = {}; }

private:
    void check();

    WindowStore& m_store;
    Then m_then;
};

} // namespace kelpa
