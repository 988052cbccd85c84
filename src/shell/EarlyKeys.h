// Keys that come to a window before the toolkit knows that it has the keyboard.
#pragma once

#include <QKeyEvent>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class QWindow;

namespace kelpa {

/// A compositor of Wayland sends keys as soon as it has given a window the keyboard, and the
/// toolkit makes the window active only after another round trip. No item has the focus until then,
/// so the keys would be lost: these are delivered once the window is active. For windows that
/// people type into as soon as they have called them. Shortcuts of the toolkit are none of these
/// keys. Main thread.
class EarlyKeys : public QObject
{
    Q_OBJECT

public:
    /// Keys that wait for longer are dropped: nobody expects what they did any more.
    static constexpr std::chrono::milliseconds longestWait{1000};

    /// Whether a key is delivered; `isFirst` unless another one is delivered before it.
    using IsKept = std::function<bool(const QKeyEvent& key, bool isFirst)>;

    /// Delivers nothing more to a window that one of the keys has hidden. `window` outlives this
    /// object.
    EarlyKeys(QWindow& window, IsKept isKept);
    ~EarlyKeys() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Key
    {
        std::unique_ptr<QKeyEvent> event;
        std::chrono::steady_clock::time_point came;
    };

    void deliver();

    QWindow& m_window;
    const IsKept m_isKept;
    std::vector<Key> m_keys;
    bool m_isActivating = false;
};

} // namespace kelpa
