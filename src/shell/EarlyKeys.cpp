#include "shell/EarlyKeys.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWindow>

#include <utility>

namespace kelpa {

EarlyKeys::EarlyKeys(QWindow& window, IsKept isKept) : m_window(window), m_isKept(std::move(isKept))
{
    window.installEventFilter(this);
}

EarlyKeys::~EarlyKeys() = default;

bool EarlyKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &m_window || m_isActivating)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && m_window.isVisible() && !m_window.isActive()) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (!m_isKept(key, m_keys.empty()))
            return false;
        m_keys.push_back({.event = std::unique_ptr<QKeyEvent>(key.clone()),
                          .came = std::chrono::steady_clock::now()});
        return true;
    }
    if (event->type() == QEvent::Hide)
        m_keys.clear();
    if (event->type() != QEvent::FocusIn || m_keys.empty())
        return QObject::eventFilter(watched, event);
    // The window gives its item the focus first. Keys that come later wait behind this event.
    m_isActivating = true;
    QCoreApplication::sendEvent(&m_window, event);
    m_isActivating = false;
    deliver();
    return true;
}

void EarlyKeys::deliver()
{
    const auto now = std::chrono::steady_clock::now();
    bool isFirst = true;
    for (const Key& key : std::exchange(m_keys, {})) {
        if (!m_window.isVisible())
            return;
        // Those before it may have waited for too long.
        if (now - key.came > longestWait || !m_isKept(*key.event, isFirst))
            continue;
        isFirst = false;
        QCoreApplication::sendEvent(&m_window, key.event.get());
    }
}

} // namespace kelpa
